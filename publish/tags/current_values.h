#pragma once
// What the current-readings tags compute beyond a glance at the live record:
// the derived comfort and air quantities, the word tables (compass, trends,
// Beaufort, sea state, UV, sunshine) in the owner's word language, the rain
// rate per hour, the sun's clear-sky share, and the recent minutes read back
// from the monthly log for the hour's and three hours' changes.

#include <optional>
#include <string>
#include <string_view>
#include <span>

#include "core/clock.h"
#include "publish/tags/log_minutes.h"
#include "publish/tags/tag_options.h"

namespace nimbrel {

struct TagContext;

namespace current {

// ---- Derived quantities (°C, %, m/s, hPa, W/m2 in) ----

// Humidex and the wet bulb: publish/tags/comfort_formulas.h.
// Steadman's apparent temperature (1994) in the shade: T + 0.33 e - 0.70 ws - 4.00.
double apparentTemperature(double celsius, int humidity, double windMs);
// The same with the sun: T + 0.348 e - 0.70 ws + 0.70 Q / (ws + 10) - 4.25,
// Q estimated from the global radiation (see the .cpp).
double apparentSolarTemperature(double celsius, int humidity, double windMs, double solarWm2);
// Cloud base above the station in metres: 125 m per degree of dew-point
// depression (Espy's rule).
double cloudBaseMetres(double celsius, double dewPointC);
// Moist air density in kg/m3 from station pressure (ideal gas, dry and
// vapour parts).
double airDensity(double celsius, int humidity, double stationHPa);
// Grams of water vapour per cubic metre of air.
double absoluteHumidity(double celsius, int humidity);
// Density altitude in feet (NWS: 145442.16 (1 - (rho / 1.225)^0.234969)).
double densityAltitudeFeet(double densityKgM3);
// Minutes to sunburn: 0.8 / (UV x 3/7) x 60 for UV above 0 and below 25.
std::optional<double> burnTimeMinutes(double uv);
// Chandler burning index (Chandler et al. 1983).
double chandlerIndex(double celsius, int humidity);
// Thom's discomfort index (1959) in °C: T - 0.55 (1 - RH/100)(T - 14.5).
double thomDiscomfort(double celsius, int humidity);
// Modified discomfort index (Moran et al. 2001): 0.30 T + 0.75 Tw.
double modifiedDiscomfort(double celsius, int humidity);
// Heat load index for cattle (Gaughan et al. 2008) with the black-globe
// temperature estimated from air temperature and solar radiation.
double heatLoadIndex(double celsius, int humidity, double windMs, double solarWm2);
// What the outdoor air feels like: the wind chill below 10 °C, the heat
// index from 27 °C, the temperature between.
double feelsLike(double celsius, double windChillC, double heatIndexC);

// ---- Words ----

enum class Trend { rapidRise, rise, steady, fall, rapidFall, slowFall, slowRise };

std::string_view compassShort(int sector, WordLanguage language);
std::string_view compassDutch(int sector);
std::string_view compassLong(int sector, WordLanguage language);
std::string_view compassLongDutch(int sector);
std::string_view pressureTrendWord(Trend trend, WordLanguage language);
std::string_view temperatureTrendWord(Trend trend);
// The console's barotrend (-60, -20, 0, 20, 60); nothing for other values.
std::optional<Trend> consoleTrend(int barotrend);
// A change against the (rise, fall) thresholds of plain, slow and fast.
Trend classifyChange(double change, double slowRise, double rise, double fastRise, double slowFall, double fall,
                     double fastFall);
std::string_view beaufortWords(int force);
std::string_view seaConditions(int force);
std::string_view uvWords(double uv);
std::string_view sunshineWords(double percent);
std::string_view warmthWord(double feelsLikeC);

// ---- The sun ----

// The sun's elevation in degrees at `instant` seen from the position.
double sunElevation(SystemTime instant, double latitude, double longitude);
// Clear-sky global radiation on level ground (Kasten and Czeplak 1980),
// W/m2; 0 or less with the sun low or down.
double clearSkyRadiation(double elevationDegrees);

// ---- The recent minutes of the monthly log ----

struct RecentLog {
  long long nowMinute = 0;
  MinuteHistory history;  // yesterday from midnight to now, every line kept

  // The newest line at least `age` minutes old but no older than `age` + 10.
  const LoggedMinute* atAge(int age) const;
  // Lines newer than `age` minutes.
  std::span<const LoggedMinute> within(int age) const;
  double rainBetween(long long fromMinute, long long toMinute) const;  // [from, to)
};

const RecentLog& recentLog(const TagContext& context);
// The name of this month's monthly log ("62026lg.txt").
std::string monthLogName(const TagContext& context);

// ---- Live values the rows share ----

bool vantageStation(const TagContext& context);
double rainRateMmPerHour(const TagContext& context);
// The average wind as the owner shows it: the 10-minute average when chosen.
double averageWindKnots(const TagContext& context);
double stationPressureHPa(const TagContext& context);
// Percentage of the clear-sky radiation; nothing without a position or at night.
std::optional<double> sunshinePercent(const TagContext& context, double minimumElevation);

}  // namespace current
}  // namespace nimbrel
