#pragma once
// The live observation record: the one set of current readings that every
// part shares. Drivers write raw readings into it in the internal units,
// the cycle validates them and derives the computed quantities, and the
// writers only read (the monthly-log writer also stores its heat index).
//
// Internal units, whatever the owner's display units:
//   temperatures  degrees Celsius        humidities   percent (uint16)
//   wind speeds   knots                  direction    degrees 0-359 (uint16)
//   pressure      hPa                    rain         millimetres
// Numbered channels (extratemp1 ... extratemp9 and the like) are arrays
// indexed from 1, so that `extratemp[3]` is the channel called extratemp3;
// element 0 is unused.

#include <array>
#include <cstdint>
#include <string>

#include "core/sample_ring.h"

namespace nimbrel {

// Factors the log and data-file writers use to convert to US units.
namespace writer_units {
inline constexpr double kFahrenheitPerCelsius = 1.8;
inline constexpr double kFahrenheitOffset = 32.0;
inline constexpr double kMphPerKnot = 1.15;
inline constexpr double kInchesHgPerHPa = 0.02953;
inline constexpr double kInchesPerMm = 0.03937;

inline double toFahrenheit(double celsius) { return celsius * kFahrenheitPerCelsius + kFahrenheitOffset; }
inline double toMph(double knots) { return knots * kMphPerKnot; }
inline double toInchesHg(double hPa) { return hPa * kInchesHgPerHPa; }
inline double toInches(double mm) { return mm * kInchesPerMm; }
}  // namespace writer_units

// Date and time of a reading, in local time.
struct ReadingTime {
  std::uint16_t day = 0;
  std::uint16_t month = 0;
  std::uint16_t year = 0;
  std::uint16_t hour = 0;
  std::uint16_t minute = 0;
  std::uint16_t second = 0;
};

// 65526 is the 16-bit form of -10: "no alternative icon set".
inline constexpr std::uint16_t kForecastIconNotSet = 65526;

inline constexpr int kExtraChannels = 9;
inline constexpr int kVantageSoilChannels = 4;
inline constexpr int kVantageLeafChannels = 4;

struct LiveRecord {
  // Temperatures, degrees Celsius.
  double outtemp = 0;
  double intemp = 0;
  double dewpoint = 0;
  double heatindex = 0;
  double heatindexalt = 0;  // station-supplied heat index
  double windchill = 0;
  double soiltemp = 0;
  std::array<double, kExtraChannels + 1> extratemp{};

  // Relative humidities, percent.
  std::uint16_t outhum = 0;
  std::uint16_t inhum = 0;
  std::array<std::uint16_t, kExtraChannels + 1> extrahum{};

  // Wind, knots and degrees.
  double windspeed = 0;
  double windgust = 0;
  std::uint16_t winddir = 0;
  // The one-second samples the spike filter accepted, for the minute log.
  SampleRing<60> windsamples;
  SampleRing<60> gustsamples;

  // Pressure, hPa.
  double barometer = 0;     // sea level
  double barometeralt = 0;  // used by the monthly log when `barometer` is below 500

  // Rain, millimetres.
  double dailyrain = 0;
  double monthlyrain = 0;
  double yearlyrain = 0;
  double raincounter = 0;      // the station's running total at this minute
  double raincounterprev = 0;  // ... and at the previous minute
  double rainrate = 0;         // per minute or per hour, as the rain-rate setting says
  double maxrainrate = 0;

  // Sun, sky and ground.
  double solar = 0;    // W/m2
  double uv = 0;       // index
  double dailyet = 0;  // mm
  double snowheight = 0;
  std::int32_t lightningcount = 0;

  std::uint16_t forecasticon = 0;
  std::uint16_t forecasticonalt = kForecastIconNotSet;

  // Secondary quantities that the Vantage console reports.
  std::array<double, kVantageSoilChannels + 1> soiltemps{};            // soiltemps[1] mirrors soiltemp
  std::array<std::uint16_t, kVantageSoilChannels + 1> soilmoisture{};  // centibar
  std::array<std::uint16_t, kVantageLeafChannels + 1> leafwetness{};   // 0-15
  std::int16_t barotrend = 0;                                          // -60, -20, 0, 20, 60
  double stormrain = 0;                                                // mm
  std::uint16_t stormstartyear = 0;
  std::uint16_t transmitterbattery = 0;
  double consolebattery = 0;  // volts
  std::uint16_t forecastrule = 0;

  std::string stationname;
  ReadingTime readingtime;
};

}  // namespace nimbrel
