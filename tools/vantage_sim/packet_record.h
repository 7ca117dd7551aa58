#pragma once
// One sent LOOP packet as a line of JSON, for the simulator's record file:
// {"sequence":1,"time":"2026-07-04 13:05:08.000","corrupted":false,
//  "rain_total_clicks":0,"reading":{"barometer":30012,...}}
// Absent sensors are null. Numbers are written with {fmt}, so the text is
// the same in every locale.

#include <string>

#include "tools/vantage_sim/console.h"

namespace nimbrel::sim {

std::string packetRecordLine(const SentPacket& packet);

}  // namespace nimbrel::sim
