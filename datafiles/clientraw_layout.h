#pragma once
// Where each value sits in "clientraw.txt": one line of fields, each followed
// by one blank, numbered from 0. Web pages, the custom screen and the mesonet
// views take fields by these numbers, so a field never moves: new fields go
// at the end, before the trailer. docs/clientraw.md describes every field for
// owners who write their own pages.

#include <cstddef>
#include <string_view>

namespace nimbrel::clientraw {

inline constexpr std::string_view kMagic = "12345";
inline constexpr std::string_view kFileName = "clientraw.txt";
inline constexpr std::string_view kTempFileName = "clientrawtemp.txt";
inline constexpr std::string_view kCustomFileName = "customclientraw.txt";
// A missing value in any field.
inline constexpr std::string_view kNoValue = "---";
// The trailer field: this opening, the version, the build and this closing.
inline constexpr std::string_view kTrailerOpening = "!!C";
inline constexpr std::string_view kTrailerClosing = "!!";

// Unscoped inside its own namespace, so that `clientraw::hour` is a plain
// index into the fields.
enum Field : std::size_t {
  magic,
  averageWind,
  gust,
  direction,
  outdoorTemp,
  outdoorHumidity,
  pressure,
  rainToday,
  rainMonth,
  rainYear,
  rainRate,
  highRainRateToday,
  indoorTemp,
  indoorHumidity,
  soilTemp,
  forecastIcon,
  extraTemp1,
  extraTemp2,
  extraTemp3,
  extraTemp4,
  extraHumidity1,
  extraHumidity2,
  extraHumidity3,
  extraHumidity4,
  dewPoint,
  heatIndex,
  windChill,
  temperatureTrend,
  humidityTrend,
  hour,
  minute,
  second,
  stationName,
  readingTime,
  pressureTrend,
  day,
  month,
  year,
  tenMinuteAverageWind,
  solar,
  uvIndex,
  evapotranspirationToday,
  snowDepth,
  lightningCount,
  consolePressureTendency,
  soilTemp2,
  soilTemp3,
  soilTemp4,
  soilMoisture1,
  soilMoisture2,
  soilMoisture3,
  soilMoisture4,
  leafWetness1,
  leafWetness2,
  leafWetness3,
  leafWetness4,
  extraTemp5,
  extraTemp6,
  extraTemp7,
  extraTemp8,
  extraTemp9,
  extraHumidity5,
  extraHumidity6,
  extraHumidity7,
  extraHumidity8,
  extraHumidity9,
  stormRain,
  consoleBatteryVolts,
  transmitterBattery,
  consoleForecastRule,
  lastHourMaxWind,
  lastHourMaxWindDirection,
  lastHourMaxWindTime,
  highRainRateTime,
  rainLastMinute,
  highTemp,
  highTempTime,
  lowTemp,
  lowTempTime,
  highPressure,
  highPressureTime,
  lowPressure,
  lowPressureTime,
  highWindChill,
  highWindChillTime,
  lowWindChill,
  lowWindChillTime,
  highHumidity,
  highHumidityTime,
  lowHumidity,
  lowHumidityTime,
  highDewPoint,
  highDewPointTime,
  lowDewPoint,
  lowDewPointTime,
  highHeatIndex,
  highHeatIndexTime,
  lowHeatIndex,
  lowHeatIndexTime,
  highGust,
  highGustTime,
  highAverageWind,
  highAverageWindTime,
  highIndoorTemp,
  highIndoorTempTime,
  lowIndoorTemp,
  lowIndoorTempTime,
  highIndoorHumidity,
  highIndoorHumidityTime,
  lowIndoorHumidity,
  lowIndoorHumidityTime,
  highSoilTemp,
  highSoilTempTime,
  lowSoilTemp,
  lowSoilTempTime,
  highSolar,
  highSolarTime,
  highUv,
  highUvTime,
  trailer,
  kFieldCount
};

// The positions that other programs' readers rely on.
static_assert(forecastIcon == 15);
static_assert(hour == 29 && minute == 30 && second == 31);
static_assert(day == 35 && month == 36);

// The fields from here on are also kept as a text of their own for the parts
// of the program that read them without opening the file.
inline constexpr std::size_t kSharedTextFrom = hour;

}  // namespace nimbrel::clientraw
