#pragma once
// The Vantage console's secondary channels as tags read them: extra
// temperatures and humidities, soil temperatures and moistures, leaf
// wetness.
//
// The live record starts every channel at 0, and the Vantage driver skips a
// field that carries the console's "no sensor" mark, so a channel with no
// sensor keeps reading 0 — the record cannot tell it from a real 0. A
// channel is therefore shown only when
//   - the chosen station is a Vantage and its "Vantage pro extra sensors"
//     switch is on (without it the driver never fills these channels),
//   - the station has sent a reading since the start,
//   - the channel is one the console has (extra temperatures and humidities
//     1-7, soil 1-4, leaf 1-4), and
//   - the value is not the console's mark or beyond what the sensor can
//     report: a temperature at the mark's 73.9 °C (a byte channel reads at
//     most 73.3 °C), a humidity of 0 (the start value; a sensor reports at
//     least 1 %) or above 100, a soil moisture above 200 cb, a leaf wetness
//     above 15 (the mark 255 is above both).
// Anything else is "---".

#include "publish/tags/tag_context.h"
#include "publish/tags/tag_def.h"

namespace nimbrel::sensorchannels {

// Extra temperature and humidity channels the Vantage console has.
inline constexpr int kVantageExtraChannels = 7;

// A Vantage is the chosen station and it has sent a reading: the console's
// own quantities (storm rain, batteries, ET) are its values.
bool vantageReporting(const TagContext& context);

// Whether the secondary channels can be trusted at all (the first three
// conditions above).
bool vantageChannelsTrusted(const TagContext& context);

// °C, or nothing.
TagValue extraTemperature(const TagContext& context, int channel);
TagValue soilTemperature(const TagContext& context, int channel);
// Percent, or nothing.
TagValue extraHumidity(const TagContext& context, int channel);
// Centibar, or nothing.
TagValue soilMoisture(const TagContext& context, int channel);
// 0 (dry) to 15 (wet), or nothing.
TagValue leafWetness(const TagContext& context, int channel);

}  // namespace nimbrel::sensorchannels
