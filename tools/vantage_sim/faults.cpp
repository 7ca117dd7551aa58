#include "tools/vantage_sim/faults.h"

namespace nimbrel::sim {

bool inRecurringSpan(SystemTime start, SystemTime t, std::chrono::seconds every, std::chrono::seconds length) {
  if (every.count() <= 0 || length.count() <= 0 || t < start) return false;
  const auto elapsed = t - start;
  if (elapsed < every) return false;
  return elapsed % every < length;
}

FaultDice::FaultDice(std::uint64_t seed) : engine_(seed ^ 0xFA017D1CEULL) {}

bool FaultDice::roll(double rate) {
  // Always draws, so that switching one fault on does not reshuffle the others.
  const double draw = static_cast<double>(engine_() >> 11) * 0x1.0p-53;
  return draw < rate;
}

std::size_t FaultDice::pick(std::size_t low, std::size_t high) {
  return low + static_cast<std::size_t>(engine_() % (high - low + 1));
}

std::uint8_t FaultDice::byte() { return static_cast<std::uint8_t>(engine_() >> 56); }

void FaultDice::corrupt(std::span<std::uint8_t> packet, std::size_t first, std::size_t last) {
  const std::size_t offset = pick(first, last);
  const auto flip = static_cast<std::uint8_t>(pick(1, 255));
  packet[offset] ^= flip;  // a CRC-16 catches every error within one byte
}

std::vector<std::uint8_t> FaultDice::garbage() {
  const std::size_t length = pick(1, 32);
  std::vector<std::uint8_t> bytes;
  bytes.reserve(length);
  while (bytes.size() < length) {
    const std::uint8_t next = byte();
    const std::size_t n = bytes.size();
    const bool startsWithO = n == 0 && next == 'O';
    const bool endsLoo = n >= 2 && bytes[n - 2] == 'L' && bytes[n - 1] == 'O' && next == 'O';
    if (!startsWithO && !endsLoo) bytes.push_back(next);
  }
  return bytes;
}

}  // namespace nimbrel::sim
