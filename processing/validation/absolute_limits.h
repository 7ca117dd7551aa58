#pragma once
// Absolute plausibility limits of newly decoded readings, section "New
// readings limits". A reading outside its limits is a fault of the station
// or of the radio link, never weather, so the field keeps the value it had
// before the reading and the wild value never enters the live record.
//
// The limits are inclusive: a value equal to a limit is taken. They bound
// what the owner calls possible, and the bound itself is possible.

#include <cstdint>

#include "core/live_record.h"
#include "core/settings_store.h"

namespace nimbrel {

// Defaults are the widest values an owner would type: the record extremes of
// inhabited places with a margin (-60 to 60 degrees C outside), a heated or
// frost-protected room indoors (-20 to 50), humidity over its full scale, no
// sea-level pressure below 900 hPa (only the eye of the deepest typhoons goes
// lower, while a faulty sensor reads far lower, often 0) nor above 1100 hPa
// (the highest ever measured, under a Siberian winter high, is about 1084), no
// wind above 150 knots at a home station, and no 50 mm of rain between two
// readings.
struct AbsoluteLimits {
  std::int16_t maxRainSpike = 50;    // "max rain spike", mm: largest rise of the rain counter per reading
  std::int16_t maxHum = 100;         // "max hum", percent
  std::int16_t minHum = 0;           // "min hum"
  std::int16_t maxTemp = 60;         // "max temp", degrees C, outdoor
  std::int16_t minTemp = -60;        // "min temp"
  std::int16_t maxIndoorTemp = 50;   // "max indoor temp"
  std::int16_t minIndoorTemp = -20;  // "min indoor temp"
  std::int16_t minBaro = 900;        // "min baro", hPa
  std::int16_t maxBaro = 1100;       // "max baro", hPa
  std::int16_t maxSpeed = 150;       // "max speed", knots, mean wind and gust

  friend bool operator==(const AbsoluteLimits&, const AbsoluteLimits&) = default;
};

// Reads the limits. An empty, non-numeric (decimals included) or out-of-range
// (outside -32768 to 32767) value keeps that limit's default, and the last two
// are reported in the error log; negative values are taken as written. A pair whose minimum lies above its maximum would
// refuse every reading, so both ends of that pair keep their defaults.
AbsoluteLimits readAbsoluteLimits(const SettingsStore& settings);

// Puts back the `previous` value of each field of `incoming` that lies outside
// its limits: `outtemp`, `intemp`, `outhum` (outdoor only; the indoor humidity
// has no limits), `barometer`, `windspeed` and `windgust` (the wind against
// its upper limit only), and `winddir`, which must lie from 0 to 360 degrees.
// A value that is not a number is outside every limit.
// "max rain spike" is not applied here but by the rain totals, which turn
// the rain counter into increments and know its baseline. The caller keeps a
// copy of the record from before the decoder ran; on the first reading that
// copy holds the record's starting values, so the limits hold for the first
// reading too.
void applyAbsoluteLimits(LiveRecord& incoming, const LiveRecord& previous, const AbsoluteLimits& limits);

}  // namespace nimbrel
