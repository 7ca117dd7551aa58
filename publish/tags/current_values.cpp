#include "publish/tags/current_values.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <numbers>

#include "core/live_record.h"
#include "core/weather_utils.h"
#include "datafiles/clientraw_settings.h"
#include "publish/tags/comfort_formulas.h"
#include "publish/tags/tag_context.h"
#include "stations/station_types.h"

namespace nimbrel::current {
namespace {

constexpr double kKelvin = 273.15;
constexpr double kDegree = std::numbers::pi / 180.0;

// Vapour pressure in hPa with the Magnus variant the cycle's dew point uses.
double vapourPressure(double celsius, int humidity) {
  return TWeatherUtils::ActualVaporPressure(humidity, 0, celsius);
}

template <std::size_t N>
std::string_view pick(const std::array<std::string_view, N>& words, int index) {
  if (index < 0 || index >= static_cast<int>(N)) return "---";
  return words[static_cast<std::size_t>(index)];
}

// Sector 16 is north again.
int sector16(int sector) { return sector == 16 ? 0 : sector; }

using Compass = std::array<std::string_view, 16>;

constexpr Compass kCompassEnglish{"N", "NNE", "NE", "ENE", "E", "ESE", "SE", "SSE",
                                  "S", "SSW", "SW", "WSW", "W", "WNW", "NW", "NNW"};
constexpr Compass kCompassGerman{"N", "NNO", "NO", "ONO", "O", "OSO", "SO", "SSO",
                                 "S", "SSW", "SW", "WSW", "W", "WNW", "NW", "NNW"};
// French, Italian and Spanish all write west as O.
constexpr Compass kCompassRomance{"N", "NNE", "NE", "ENE", "E", "ESE", "SE", "SSE",
                                  "S", "SSO", "SO", "OSO", "O", "ONO", "NO", "NNO"};
constexpr Compass kCompassDanish{"N", "NNØ", "NØ", "ØNØ", "Ø", "ØSØ", "SØ", "SSØ",
                                 "S", "SSV", "SV", "VSV", "V", "VNV", "NV", "NNV"};
constexpr Compass kCompassDutch{"N", "NNO", "NO", "ONO", "O", "OZO", "ZO", "ZZO",
                                "Z", "ZZW", "ZW", "WZW", "W", "WNW", "NW", "NNW"};

constexpr Compass kLongEnglish{"Northerly", "North north easterly", "North easterly", "East north easterly",
                               "Easterly", "East south easterly", "South easterly", "South south easterly",
                               "Southerly", "South south westerly", "South westerly", "West south westerly",
                               "Westerly", "West north westerly", "North westerly", "North north westerly"};
constexpr Compass kLongGerman{"Nord", "Nordnordost", "Nordost", "Ostnordost", "Ost", "Ostsuedost",
                              "Suedost", "Suedsuedost", "Sued", "Suedsuedwest", "Suedwest", "Westsuedwest",
                              "West", "Westnordwest", "Nordwest", "Nordnordwest"};
constexpr Compass kLongFrench{"Nord", "Nord-nord-est", "Nord-est", "Est-nord-est", "Est", "Est-sud-est",
                              "Sud-est", "Sud-sud-est", "Sud", "Sud-sud-ouest", "Sud-ouest", "Ouest-sud-ouest",
                              "Ouest", "Ouest-nord-ouest", "Nord-ouest", "Nord-nord-ouest"};
constexpr Compass kLongItalian{"Nord", "Nord-nord-est", "Nord-est", "Est-nord-est", "Est", "Est-sud-est",
                               "Sud-est", "Sud-sud-est", "Sud", "Sud-sud-ovest", "Sud-ovest", "Ovest-sud-ovest",
                               "Ovest", "Ovest-nord-ovest", "Nord-ovest", "Nord-nord-ovest"};
constexpr Compass kLongSpanish{"Norte", "Nornoreste", "Noreste", "Estenoreste", "Este", "Estesureste",
                               "Sureste", "Sursureste", "Sur", "Sursuroeste", "Suroeste", "Oestesuroeste",
                               "Oeste", "Oestenoroeste", "Noroeste", "Nornoroeste"};
constexpr Compass kLongDanish{"Nord", "Nordnordøst", "Nordøst", "Østnordøst", "Øst", "Østsydøst",
                              "Sydøst", "Sydsydøst", "Syd", "Sydsydvest", "Sydvest", "Vestsydvest",
                              "Vest", "Vestnordvest", "Nordvest", "Nordnordvest"};
constexpr Compass kLongDutch{"Noord", "Noordnoordoost", "Noordoost", "Oostnoordoost", "Oost", "Oostzuidoost",
                             "Zuidoost", "Zuidzuidoost", "Zuid", "Zuidzuidwest", "Zuidwest", "Westzuidwest",
                             "West", "Westnoordwest", "Noordwest", "Noordnoordwest"};

// In the order of `Trend`; languages without a "slowly" word repeat the plain one.
using TrendWords = std::array<std::string_view, 7>;
constexpr TrendWords kPressureEnglish{"Rising rapidly", "Rising", "Steady", "Falling",
                                      "Falling rapidly", "Falling slowly", "Rising slowly"};
constexpr TrendWords kPressureGerman{"stark steigend", "steigend", "gleichbleibend", "fallend",
                                     "stark fallend", "leicht fallend", "leicht steigend"};
constexpr TrendWords kPressureItalian{"In rapido aumento", "In aumento", "Stazionaria", "In diminuzione",
                                      "In rapida diminuzione", "In diminuzione", "In aumento"};
constexpr TrendWords kPressureSpanish{"ELEVANDOSE RAPIDAMENTE", "ELEVANDOSE", "ESTACIONARIO", "BAJANDO",
                                      "BAJANDO RAPIDAMENTE", "BAJANDO", "ELEVANDOSE"};
constexpr TrendWords kPressureFrench{"MONTE RAPIDEMENT", "MONTE", "CONSTANT", "DESCEND",
                                     "DESCEND RAPIDEMENT", "DESCEND", "MONTE"};
constexpr TrendWords kPressureDanish{"hurtigt stigende", "stigende", "steady", "faldende",
                                     "hurtigt faldende", "faldende", "stigende"};
constexpr TrendWords kTemperatureEnglish{"Warming rapidly", "Warming", "Steady", "Cooling",
                                         "Cooling rapidly", "Cooling slowly", "Warming slowly"};

constexpr std::array<std::string_view, 13> kBeaufort{
    "Calm",        "Light air",   "Light breeze", "Gentle breeze", "Moderate breeze", "Fresh breeze", "Strong breeze",
    "Near gale",   "Gale",        "Strong gale",  "Storm",         "Violent storm",   "Hurricane"};

constexpr std::array<std::string_view, 13> kSea{"Sea like a mirror",
                                                "Ripples without crests",
                                                "Small wavelets, crests do not break",
                                                "Large wavelets, scattered white horses",
                                                "Small waves, frequent white horses",
                                                "Moderate longer waves, many white horses",
                                                "Large waves, white foam crests, some spray",
                                                "Sea heaps up, foam blown in streaks",
                                                "Moderately high waves, crests break into spindrift",
                                                "High waves, dense foam, spray cuts visibility",
                                                "Very high waves, the sea looks white",
                                                "Exceptionally high waves, sea covered with foam",
                                                "Air filled with foam and spray, sea completely white"};

// A band table: the first row whose limit the value lies below.
struct Band {
  double below;
  std::string_view word;
};

template <std::size_t N>
std::string_view band(const std::array<Band, N>& bands, double value, std::string_view above) {
  for (const Band& b : bands)
    if (value < b.below) return b.word;
  return above;
}

}  // namespace

double apparentTemperature(double celsius, int humidity, double windMs) {
  return celsius + 0.33 * vapourPressure(celsius, humidity) - 0.70 * windMs - 4.00;
}

// Q, the radiation a person absorbs per square metre of body surface, is
// taken as the global radiation times an absorptivity of 0.7 and a mean
// projected-area factor of 0.25 for a standing figure.
double apparentSolarTemperature(double celsius, int humidity, double windMs, double solarWm2) {
  const double absorbed = std::max(solarWm2, 0.0) * 0.7 * 0.25;
  return celsius + 0.348 * vapourPressure(celsius, humidity) - 0.70 * windMs + 0.70 * absorbed / (windMs + 10.0) -
         4.25;
}

double cloudBaseMetres(double celsius, double dewPointC) { return std::max(0.0, 125.0 * (celsius - dewPointC)); }

double airDensity(double celsius, int humidity, double stationHPa) {
  const double vapourPa = vapourPressure(celsius, humidity) * 100.0;
  const double dryPa = stationHPa * 100.0 - vapourPa;
  const double kelvin = celsius + kKelvin;
  return dryPa / (287.058 * kelvin) + vapourPa / (461.495 * kelvin);
}

double absoluteHumidity(double celsius, int humidity) {
  return vapourPressure(celsius, humidity) * 100.0 / (461.495 * (celsius + kKelvin)) * 1000.0;
}

double densityAltitudeFeet(double densityKgM3) {
  return 145442.16 * (1.0 - std::pow(densityKgM3 / 1.225, 0.234969));
}

std::optional<double> burnTimeMinutes(double uv) {
  if (!(uv > 0 && uv < 25)) return std::nullopt;
  return 0.8 / (uv * 3.0 / 7.0) * 60.0;
}

double chandlerIndex(double celsius, int humidity) {
  const double rh = humidity;
  return ((110.0 - 1.373 * rh) - 0.54 * (10.20 - celsius)) * (124.0 * std::pow(10.0, -0.0142 * rh)) / 60.0;
}

double thomDiscomfort(double celsius, int humidity) {
  return celsius - 0.55 * (1.0 - 0.01 * humidity) * (celsius - 14.5);
}

double modifiedDiscomfort(double celsius, int humidity) { return 0.30 * celsius + 0.75 * wetBulb(celsius, humidity); }

// Black-globe temperature estimate (Hahn and Gaughan): 1.33 T - 2.65 sqrt(T)
// + 3.21 log10(SR + 1) + 3.5; the index has one form above a globe
// temperature of 25 °C and another below.
double heatLoadIndex(double celsius, int humidity, double windMs, double solarWm2) {
  const double globe = 1.33 * celsius - 2.65 * std::sqrt(std::max(celsius, 0.0)) +
                       3.21 * std::log10(std::max(solarWm2, 0.0) + 1.0) + 3.5;
  if (globe > 25.0) return 8.62 + 0.38 * humidity + 1.55 * globe - 0.5 * windMs + std::exp(2.4 - windMs);
  return 10.66 + 0.28 * humidity + 1.3 * globe - windMs;
}

double feelsLike(double celsius, double windChillC, double heatIndexC) {
  if (celsius < 10.0) return windChillC;
  if (celsius >= 27.0) return heatIndexC;
  return celsius;
}

std::string_view compassShort(int sector, WordLanguage language) {
  const int s = sector16(sector);
  switch (language) {
    case WordLanguage::german: return pick(kCompassGerman, s);
    case WordLanguage::french:
    case WordLanguage::italian:
    case WordLanguage::spanish: return pick(kCompassRomance, s);
    case WordLanguage::danish: return pick(kCompassDanish, s);
    case WordLanguage::english: break;
  }
  return pick(kCompassEnglish, s);
}

std::string_view compassDutch(int sector) { return pick(kCompassDutch, sector16(sector)); }

std::string_view compassLong(int sector, WordLanguage language) {
  const int s = sector16(sector);
  switch (language) {
    case WordLanguage::german: return pick(kLongGerman, s);
    case WordLanguage::french: return pick(kLongFrench, s);
    case WordLanguage::italian: return pick(kLongItalian, s);
    case WordLanguage::spanish: return pick(kLongSpanish, s);
    case WordLanguage::danish: return pick(kLongDanish, s);
    case WordLanguage::english: break;
  }
  return pick(kLongEnglish, s);
}

std::string_view compassLongDutch(int sector) { return pick(kLongDutch, sector16(sector)); }

std::string_view pressureTrendWord(Trend trend, WordLanguage language) {
  const int t = static_cast<int>(trend);
  switch (language) {
    case WordLanguage::german: return pick(kPressureGerman, t);
    case WordLanguage::italian: return pick(kPressureItalian, t);
    case WordLanguage::spanish: return pick(kPressureSpanish, t);
    case WordLanguage::french: return pick(kPressureFrench, t);
    case WordLanguage::danish: return pick(kPressureDanish, t);
    case WordLanguage::english: break;
  }
  return pick(kPressureEnglish, t);
}

std::string_view temperatureTrendWord(Trend trend) { return pick(kTemperatureEnglish, static_cast<int>(trend)); }

std::optional<Trend> consoleTrend(int barotrend) {
  switch (barotrend) {
    case -60: return Trend::rapidFall;
    case -20: return Trend::slowFall;
    case 0: return Trend::steady;
    case 20: return Trend::slowRise;
    case 60: return Trend::rapidRise;
    default: return std::nullopt;
  }
}

Trend classifyChange(double change, double slowRise, double rise, double fastRise, double slowFall, double fall,
                     double fastFall) {
  if (change > 0) {
    if (change > fastRise) return Trend::rapidRise;
    if (change >= rise) return Trend::rise;
    if (change >= slowRise) return Trend::slowRise;
  } else if (change < 0) {
    if (-change > fastFall) return Trend::rapidFall;
    if (-change >= fall) return Trend::fall;
    if (-change >= slowFall) return Trend::slowFall;
  }
  return Trend::steady;
}

std::string_view beaufortWords(int force) { return pick(kBeaufort, force); }
std::string_view seaConditions(int force) { return pick(kSea, force); }

// The WHO bands of the UV index.
std::string_view uvWords(double uv) {
  if (uv <= 0) return "None";
  static constexpr std::array<Band, 4> kBands{{{2.5, "Low"}, {5.5, "Moderate"}, {7.5, "High"}, {10.5, "Very high"}}};
  return band(kBands, uv, "Extreme");
}

std::string_view sunshineWords(double percent) {
  static constexpr std::array<Band, 4> kBands{
      {{20, "Cloudy"}, {40, "Mostly cloudy"}, {60, "Partly cloudy"}, {80, "Mostly sunny"}}};
  return band(kBands, percent, "Sunny");
}

std::string_view warmthWord(double feelsLikeC) {
  static constexpr std::array<Band, 6> kBands{
      {{0, "Freezing"}, {10, "Cold"}, {16, "Cool"}, {22, "Mild"}, {27, "Warm"}, {32, "Hot"}}};
  return band(kBands, feelsLikeC, "Very hot");
}

// Low-precision solar coordinates of the Astronomical Almanac (good to about
// 0.01 degree between 1950 and 2050), then the hour angle at the longitude.
double sunElevation(SystemTime instant, double latitude, double longitude) {
  const double seconds = std::chrono::duration<double>(instant.time_since_epoch()).count();
  const double n = seconds / 86400.0 + 2440587.5 - 2451545.0;  // days from J2000.0
  const double meanLongitude = 280.460 + 0.9856474 * n;
  const double anomaly = (357.528 + 0.9856003 * n) * kDegree;
  const double eclipticLongitude =
      (meanLongitude + 1.915 * std::sin(anomaly) + 0.020 * std::sin(2 * anomaly)) * kDegree;
  const double obliquity = (23.439 - 0.0000004 * n) * kDegree;
  const double rightAscension =
      std::atan2(std::cos(obliquity) * std::sin(eclipticLongitude), std::cos(eclipticLongitude));
  const double declination = std::asin(std::sin(obliquity) * std::sin(eclipticLongitude));
  const double siderealDegrees = 280.46061837 + 360.98564736629 * n + longitude;
  const double hourAngle = siderealDegrees * kDegree - rightAscension;
  const double lat = latitude * kDegree;
  const double sinElevation =
      std::sin(lat) * std::sin(declination) + std::cos(lat) * std::cos(declination) * std::cos(hourAngle);
  return std::asin(std::clamp(sinElevation, -1.0, 1.0)) / kDegree;
}

double clearSkyRadiation(double elevationDegrees) { return 910.0 * std::sin(elevationDegrees * kDegree) - 30.0; }

const LoggedMinute* RecentLog::atAge(int age) const {
  const LoggedMinute* line = history.latestUpTo(nowMinute - age);
  return line != nullptr && line->minute >= nowMinute - age - 10 ? line : nullptr;
}

std::span<const LoggedMinute> RecentLog::within(int age) const {
  return history.between(nowMinute - age + 1, nowMinute + 1);
}

double RecentLog::rainBetween(long long fromMinute, long long toMinute) const {
  return rainOf(history.between(fromMinute, toMinute));
}

const RecentLog& recentLog(const TagContext& context) {
  if (context.caches.currentLog) return *context.caches.currentLog;
  RecentLog recent;
  recent.nowMinute = civilMinute(context.now);
  const long long yesterdayMidnight = (recent.nowMinute / kMinutesPerDay - 1) * kMinutesPerDay;
  const bool nineAm = context.units.resets.dayReset == DayResetTime::nineAm;
  const auto months = logMonthsCovering(yesterdayMidnight, recent.nowMinute + 1, nineAm);
  recent.history = MinuteHistory::gather(logMinutes(context), months, MinuteHistory::Repeats::all,
                                         yesterdayMidnight, recent.nowMinute);
  return context.caches.currentLog.emplace(std::move(recent));
}

std::string monthLogName(const TagContext& context) {
  const bool nineAm = context.units.resets.dayReset == DayResetTime::nineAm;
  return monthStem(logMonthOf(civilMinute(context.now), nineAm)) + "lg.txt";
}

bool vantageStation(const TagContext& context) {
  return stationTypeFromName(context.units.station.name) == stationtype::vantagePro;
}

// The clientraw setting "rain rate per hour" says whether the record's rate
// is per hour; left empty, it follows the station (the Vantage's is).
double rainRateMmPerHour(const TagContext& context) {
  const bool perHour = readClientrawOptions(context.settings, vantageStation(context)).rainRatePerHour;
  return perHour ? context.live.rainrate : context.live.rainrate * 60.0;
}

double averageWindKnots(const TagContext& context) {
  if (!context.units.wind.useTenMinuteAverage) return context.live.windspeed;
  return context.runningProgram ? context.stats.tenMinuteAverage() : std::numeric_limits<double>::quiet_NaN();
}

double stationPressureHPa(const TagContext& context) {
  const LiveRecord& r = context.live;
  return TWeatherUtils::SeaLevelToStationPressure(r.outhum, 1, r.outtemp, r.outtemp,
                                                  context.options.position.altitudeMetres, r.barometer);
}

std::optional<double> sunshinePercent(const TagContext& context, double minimumElevation) {
  const StationPosition& p = context.options.position;
  if (!p.latitude || !p.longitude || !context.readingsSeen) return std::nullopt;
  const double elevation = sunElevation(context.instant, *p.latitude, *p.longitude);
  const double clear = clearSkyRadiation(elevation);
  if (elevation < minimumElevation || clear <= 0) return std::nullopt;
  return context.live.solar / clear * 100.0;
}

}  // namespace nimbrel::current
