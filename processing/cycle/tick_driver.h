#pragma once
// Drives the one-second tick from the program clock: at speed 1 the tick
// follows the wall clock, at speed N it comes N times as often. A wake-up
// that finds the clock several seconds on (a busy machine, a slow disk at a
// very high speed) ticks each missed second in turn, with the station's
// data delivered in between, so that no minute's pass is lost: up to two minutes, or half a second of real time at high
// speeds. A longer gap (a machine that slept) is skipped, not replayed.

#include <asio.hpp>

#include <functional>

#include "core/clock.h"

namespace nimbrel {

class TickDriver {
 public:
  static constexpr int kMostSecondsPerWake = 120;
  static constexpr double kMostRealSecondsPerWake = 0.5;

  TickDriver(asio::io_context& io, const ScaledClock& clock, std::function<void(const LocalTime&)> onTick);
  void start();
  void stop();
  std::uint64_t ticks() const { return ticks_; }
  // The program second of the latest tick.
  SystemTime lastTicked() const { return lastSecond_; }

 private:
  void scheduleNext();
  std::chrono::seconds catchUpLimit() const;
  void onTimer();

  asio::steady_timer timer_;
  const ScaledClock& clock_;
  std::function<void(const LocalTime&)> onTick_;
  std::chrono::sys_seconds lastSecond_{};
  std::uint64_t ticks_ = 0;
  bool stopped_ = false;
};

}  // namespace nimbrel
