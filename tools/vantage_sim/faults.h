#pragma once
// The faults the simulated console can be told to make, and the seeded dice
// that decide when: a bad CRC (a data byte spoilt after the CRC was
// computed), a packet split over two writes, a burst of garbage between
// packets, and spans of silence at fixed program-time intervals.

#include <chrono>
#include <cstdint>
#include <random>
#include <span>
#include <vector>

#include "core/clock.h"

namespace nimbrel::sim {

struct FaultSettings {
  double badCrcRate = 0;   // probability per LOOP packet
  double splitRate = 0;    // probability per LOOP packet
  double garbageRate = 0;  // probability per LOOP packet
  // Every `silenceEvery` of program time after the start, the console says
  // nothing and hears nothing for `silenceFor`. Zero turns it off.
  std::chrono::seconds silenceEvery{0};
  std::chrono::seconds silenceFor{0};
};

// Whether `t` falls in one of the spans [start + k*every, start + k*every + length)
// for k >= 1. A zero `every` or `length` means never.
bool inRecurringSpan(SystemTime start, SystemTime t, std::chrono::seconds every, std::chrono::seconds length);

// Whether `t` falls in one of the silent spans counted from `start`.
inline bool isSilentAt(const FaultSettings& faults, SystemTime start, SystemTime t) {
  return inRecurringSpan(start, t, faults.silenceEvery, faults.silenceFor);
}

class FaultDice {
 public:
  explicit FaultDice(std::uint64_t seed);

  // True with probability `rate`.
  bool roll(double rate);
  // A whole number in [low, high].
  std::size_t pick(std::size_t low, std::size_t high);
  // Spoils one byte in [first, last] of `packet` so that its CRC fails.
  void corrupt(std::span<std::uint8_t> packet, std::size_t first, std::size_t last);
  // 1 to 32 random bytes that never spell "LOO" (so never "LOOP"), not even
  // across the end of what came before: they never start with 'O'.
  std::vector<std::uint8_t> garbage();

 private:
  std::uint8_t byte();

  std::mt19937_64 engine_;
};

}  // namespace nimbrel::sim
