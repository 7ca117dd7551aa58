#pragma once
// Fills the main cycle's slots that the statistics own: the per-reading
// work, the rain rate, the data watchdog, the spike filter, the last-hour
// and 10-minute wind. `now` is the program's time of the present tick.

#include <cstdint>

#include "core/clock.h"

namespace nimbrel {

class MainCycle;
class StationStatistics;
struct CycleState;
struct ReceiveState;

void attachStatistics(MainCycle& cycle, StationStatistics& statistics, CycleState& state, ReceiveState& receive,
                      std::uint16_t stationType, const LocalTime& now);

}  // namespace nimbrel
