#pragma once
// What drives the one-second tick: the program clock's seconds as they pass
// at a real speed (TickDriver), or as fast as the machine computes them in a
// simulated run (SimulatedTicks). Either way every program second is ticked
// once and in order, with the event loop's other work run in between.

#include <functional>

#include "core/clock.h"

namespace nimbrel {

class TickSource {
 public:
  using OnTick = std::function<void(const LocalTime&)>;

  virtual ~TickSource() = default;
  // Ticks from the clock's present second on and runs the event loop until
  // stop(); returns after the stop.
  virtual void run(OnTick onTick) = 0;
  // Ends run(); may be called from a tick or from any handler of the loop.
  virtual void stop() = 0;
  // The program second of the latest tick.
  virtual SystemTime lastTicked() const = 0;
  // Simulated time: no real second to keep up with, so work that would
  // otherwise go to another thread runs in the tick, at the program moment
  // it falls due, whatever the machine's scheduling.
  virtual bool simulated() const { return false; }
};

}  // namespace nimbrel
