#pragma once
// One set of current values as a Vantage console holds them, in the console's
// own units: exactly what goes into a LOOP packet. An empty optional is a
// sensor the station does not have; the packet carries its "no sensor" mark.

#include <array>
#include <cstdint>
#include <optional>

namespace nimbrel::sim {

struct CalendarDate {
  int year = 2000;
  int month = 1;  // 1-12
  int day = 1;    // 1-31

  friend bool operator==(const CalendarDate&, const CalendarDate&) = default;
};

struct ConsoleReading {
  std::int8_t barometerTrend = 0;              // -60, -20, 0, 20, 60 (thousandths of inHg in 3 h)
  std::uint16_t nextArchiveRecord = 0;         // archive page pointer
  std::uint16_t barometer = 0;                 // thousandths of inHg
  std::int16_t insideTemperature = 0;          // tenths of deg F
  std::uint8_t insideHumidity = 0;             // %
  std::optional<std::int16_t> outsideTemperature;  // tenths of deg F
  std::uint8_t windSpeed = 0;                  // mph, the latest reading
  std::uint8_t windAverage10 = 0;              // mph, 10-minute average
  std::uint16_t windDirection = 0;             // degrees 1-360; 0 = no reading
  std::array<std::optional<std::uint8_t>, 7> extraTemperatures{};  // deg F + 90
  std::array<std::optional<std::uint8_t>, 4> soilTemperatures{};   // deg F + 90
  std::array<std::optional<std::uint8_t>, 4> leafTemperatures{};   // deg F + 90
  std::optional<std::uint8_t> outsideHumidity;                     // %
  std::array<std::optional<std::uint8_t>, 7> extraHumidities{};    // %
  std::uint16_t rainRate = 0;                  // bucket clicks per hour
  std::optional<std::uint8_t> uvIndex;         // tenths of a UV index step
  std::optional<std::uint16_t> solarRadiation; // W/m2
  std::uint16_t stormRain = 0;                 // clicks since the storm began
  std::optional<CalendarDate> stormStart;      // none between storms
  std::uint16_t dayRain = 0;                   // clicks
  std::uint16_t monthRain = 0;                 // clicks
  std::uint16_t yearRain = 0;                  // clicks
  std::uint16_t dayEt = 0;                     // thousandths of an inch
  std::uint16_t monthEt = 0;                   // hundredths of an inch
  std::uint16_t yearEt = 0;                    // hundredths of an inch
  std::array<std::optional<std::uint8_t>, 4> soilMoistures{};  // centibar
  std::array<std::optional<std::uint8_t>, 4> leafWetnesses{};  // 0 (dry) - 15 (wet)
  std::uint8_t transmitterBatteryStatus = 0;   // one bit per transmitter, set = low
  std::uint16_t consoleBattery = 0;            // volts = raw x 300 / 512 / 100
  std::uint8_t forecastIcons = 0;              // bit 0 rain, 1 cloud, 2 partly cloudy, 3 sun, 4 snow
  std::uint8_t forecastRule = 0;               // 0-196
  std::uint16_t sunrise = 0;                   // hour x 100 + minute
  std::uint16_t sunset = 0;                    // hour x 100 + minute

  friend bool operator==(const ConsoleReading&, const ConsoleReading&) = default;
};

// Forecast icon bits.
inline constexpr std::uint8_t kIconRain = 0x01;
inline constexpr std::uint8_t kIconCloud = 0x02;
inline constexpr std::uint8_t kIconPartlyCloudy = 0x04;
inline constexpr std::uint8_t kIconSun = 0x08;

// The console's daily (and longer) extremes that the HILOWS answer carries.
struct ConsoleHighsLows {
  std::uint16_t dayLowBarometer = 0;   // thousandths of inHg
  std::uint16_t dayHighBarometer = 0;
  std::uint16_t monthLowBarometer = 0;
  std::uint16_t monthHighBarometer = 0;
  std::uint16_t yearLowBarometer = 0;
  std::uint16_t yearHighBarometer = 0;
  std::uint16_t dayLowBarometerTime = 0;   // hour x 100 + minute
  std::uint16_t dayHighBarometerTime = 0;
  std::uint8_t dayHighWindSpeed = 0;   // mph
  std::uint16_t dayHighWindTime = 0;   // hour x 100 + minute
  std::uint8_t monthHighWindSpeed = 0;
  std::uint8_t yearHighWindSpeed = 0;

  friend bool operator==(const ConsoleHighsLows&, const ConsoleHighsLows&) = default;
};

}  // namespace nimbrel::sim
