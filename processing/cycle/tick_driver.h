#pragma once
// Drives the one-second tick from a scaled real-time program clock: at speed
// 1 the tick follows the wall clock, at speed N it comes N times as often. A
// wake-up that finds the clock several seconds on (a busy machine, a slow
// disk at a high speed) ticks each missed second in turn, with the station's
// data delivered in between, so that no minute's pass is lost: up to two
// minutes, or half a second of real time at high speeds. A longer gap (a
// machine that slept) is skipped, not replayed. Runs that must never skip a
// second whatever the machine does use simulated time (SimulatedTicks).

#include <asio.hpp>

#include <functional>

#include "core/clock.h"
#include "processing/cycle/tick_source.h"

namespace nimbrel {

class TickDriver final : public TickSource {
 public:
  static constexpr int kMostSecondsPerWake = 120;
  static constexpr double kMostRealSecondsPerWake = 0.5;

  TickDriver(asio::io_context& io, const ScaledClock& clock);
  void run(OnTick onTick) override;
  void stop() override;
  SystemTime lastTicked() const override { return lastSecond_; }

  // For callers that run the loop themselves: start ticking, stop with stop().
  void start(OnTick onTick);

 private:
  void scheduleNext();
  std::chrono::seconds catchUpLimit() const;
  void onTimer();

  asio::io_context& io_;
  asio::steady_timer timer_;
  const ScaledClock& clock_;
  OnTick onTick_;
  std::chrono::sys_seconds lastSecond_{};
  bool stopped_ = false;
};

}  // namespace nimbrel
