#pragma once
// Something in a simulated run that acts at moments of program time of its
// own choosing (a simulated console's next packet, the end of a cut cable):
// the simulated run asks each source when it is next due, moves the program
// clock straight there and lets it act.

#include <optional>

#include "core/clock.h"

namespace nimbrel {

class TimedEvents {
 public:
  virtual ~TimedEvents() = default;
  // The next moment this source has something to do, if any.
  virtual std::optional<SystemTime> nextDue() const = 0;
  // Does everything that is due by `now`.
  virtual void runDue(SystemTime now) = 0;
};

}  // namespace nimbrel
