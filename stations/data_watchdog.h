#pragma once
// The data watchdog, run once per tick: decides when the readings of the
// station are complete enough for the cycle to take them (the process-data
// flag), counts ticks without data, and treats a station whose data stopped
// for more than 150 ticks as complete so the cycle goes on. It then also
// marks the station silent (`stationSilent`) until the next reading, so that
// the old readings are not logged as new ones.
//
// Station types 1 (WM918), 3 (WMR918) and 8 (WMR968) send their sensors in
// separate groups; a set is complete when the group flags say so.

#include <cstdint>

#include "stations/receive_state.h"

namespace nimbrel {

struct WatchdogInputs {
  std::uint16_t stationType = 0;
  // Types 3 and 8: two yes/no settings of the port form; a "no" marks the
  // groups they stand for as present (fourth group; first and second).
  bool wmrFirstCheck = true;
  bool wmrSecondCheck = true;
  bool oneWireReadFinished = false;  // type 26
};

inline constexpr std::uint16_t kNoDataTickLimit = 150;

void Timer2Timer(ReceiveState& state, const WatchdogInputs& inputs);

}  // namespace nimbrel
