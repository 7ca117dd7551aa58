#pragma once
// Decoding of the Vantage console's LOOP packet and HILOWS block into the
// live record (station type 31). The bytes arrive through the framing of
// vantage_framing.h; when the decoder runs, buffer position k holds packet
// byte k + 3 (the byte after "LOO").

#include <cstdint>
#include <optional>

#include "core/live_record.h"
#include "stations/receive_state.h"
#include "stations/vantage_options.h"

namespace nimbrel {

class TextLog;

// Decodes the LOOP packet in the frame buffer (serial path). Returns false
// when the CRC fails: then nothing of the packet is used.
bool vantagein(ReceiveState& state, LiveRecord& record, const VantageOptions& options,
               TextLog* rawLog = nullptr);
// The same decoder on the TCP path.
bool vantageintcpip(ReceiveState& state, LiveRecord& record, const VantageOptions& options,
                    TextLog* rawLog = nullptr);

// The console's daily maximum gust from a HILOWS block in the frame buffer
// (buffer[0] is the acknowledge byte), in whole knots, when it may replace
// `currentMaxGust` (knots); `hour` is the present hour of day.
std::optional<double> consoleDailyMaxGust(const ReceiveState& state, const VantageOptions& options,
                                          double currentMaxGust, int hour, TextLog* rawLog = nullptr);

}  // namespace nimbrel
