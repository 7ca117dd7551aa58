#pragma once
// Simulated time: the program clock does not follow the wall clock at all.
// Whenever nothing is ready to run, the clock jumps straight to the next due
// event: the next one-second tick, or the next moment a timed source (the
// simulated console) has something to do. A run is then as fast as the
// machine computes it and, given the same sources, the same whatever else
// the machine is doing: every second is ticked, in order, and a source's
// event due at the same moment as a tick comes first.
//
// The event loop's own work (signals, results posted back by other threads)
// is run between events, at least every few milliseconds of real time.

#include <asio.hpp>

#include <vector>

#include "core/clock.h"
#include "core/timed_events.h"
#include "processing/cycle/tick_source.h"

namespace nimbrel {

class SimulatedTicks final : public TickSource {
 public:
  SimulatedTicks(asio::io_context& io, ManualClock& clock);
  // Sources are asked in the order added; they must outlive the run.
  void addSource(TimedEvents& source) { sources_.push_back(&source); }

  void run(OnTick onTick) override;
  void stop() override { stopped_ = true; }
  SystemTime lastTicked() const override { return lastSecond_; }
  bool simulated() const override { return true; }

 private:
  // The source due first, at or before `limit`; null when none is.
  TimedEvents* firstDueBy(SystemTime limit, SystemTime& due) const;
  void runLoopWork();

  asio::io_context& io_;
  ManualClock& clock_;
  std::vector<TimedEvents*> sources_;
  std::chrono::sys_seconds lastSecond_{};
  std::chrono::steady_clock::time_point lastLoopWork_{};
  bool stopped_ = false;
};

}  // namespace nimbrel
