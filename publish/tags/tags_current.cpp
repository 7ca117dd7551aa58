// Current readings, derived values, unit variants and words.
//
// Forms ending in a comma ("temp,", "baro,") are the same value written with
// a decimal comma, for pages in languages that write decimals so.

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numbers>

#include <fmt/format.h>

#include "core/weather_utils.h"
#include "processing/statistics/compass_words.h"
#include "publish/tags/comfort_formulas.h"
#include "publish/tags/current_values.h"
#include "publish/tags/tag_format.h"
#include "publish/tags/tag_rows.h"
#include "publish/tags/tag_tables.h"
#include "publish/tags/unit_conversion.h"

namespace nimbrel {

using namespace tagrows;

namespace {

using Reading = std::function<double(const TagContext&)>;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// A live value: "---" before the first reading.
TagSource live(Reading f) {
  return [f = std::move(f)](const TagContext& c) { return reading(c, f(c)); };
}

// A word of the live readings.
TagSource word(std::function<std::string_view(const TagContext&)> f) {
  return [f = std::move(f)](const TagContext& c) -> TagValue {
    if (!c.readingsSeen) return noData();
    return f(c);
  };
}

// The decimal-comma form of a number row.
TagDef comma(std::string name, Unit unit, int decimals, Reading f, std::string gives) {
  return withDecimalComma(number(std::move(name), unit, 1, decimals, live(std::move(f)), gives + ", with a decimal comma"));
}

// ---- Readings in internal units ----
double tempC(const TagContext& c) { return c.live.outtemp; }
double dewC(const TagContext& c) { return c.live.dewpoint; }
double humidity(const TagContext& c) { return c.live.outhum; }
double heatC(const TagContext& c) { return c.live.heatindex; }
double chillC(const TagContext& c) { return c.live.windchill; }
double averageKnots(const TagContext& c) { return current::averageWindKnots(c); }
double presentKnots(const TagContext& c) { return c.live.windspeed; }
double tenMinuteKnots(const TagContext& c) { return c.runningProgram ? c.stats.tenMinuteAverage() : kNaN; }
double gustKnots(const TagContext& c) { return c.live.windgust; }
double baroHPa(const TagContext& c) { return c.live.barometer; }
double dayRain(const TagContext& c) { return c.live.dailyrain; }
double monthRain(const TagContext& c) { return c.live.monthlyrain; }
double yearRain(const TagContext& c) { return c.live.yearlyrain; }
double indoorC(const TagContext& c) { return c.live.intemp; }
double indoorDewC(const TagContext& c) {
  return c.live.inhum > 0 ? TWeatherUtils::DewPoint(c.live.inhum, 0, c.live.intemp) : kNaN;
}
double windMs(const TagContext& c) { return c.live.windspeed * kMetresPerSecondPerKnot; }
double feelsC(const TagContext& c) { return current::feelsLike(c.live.outtemp, c.live.windchill, c.live.heatindex); }
double humidexC(const TagContext& c) { return humidex(c.live.outtemp, c.live.dewpoint); }
double apparentC(const TagContext& c) { return current::apparentTemperature(c.live.outtemp, c.live.outhum, windMs(c)); }
double apparentSolarC(const TagContext& c) {
  return current::apparentSolarTemperature(c.live.outtemp, c.live.outhum, windMs(c), c.live.solar);
}
double wetBulbC(const TagContext& c) { return wetBulb(c.live.outtemp, c.live.outhum); }
double cloudMetres(const TagContext& c) { return current::cloudBaseMetres(c.live.outtemp, c.live.dewpoint); }
double densityKgM3(const TagContext& c) {
  return current::airDensity(c.live.outtemp, c.live.outhum, current::stationPressureHPa(c));
}
double heatLoad(const TagContext& c, double knots) {
  return current::heatLoadIndex(c.live.outtemp, c.live.outhum, knots * kMetresPerSecondPerKnot, c.live.solar);
}
double oneMinuteGust(const TagContext& c) {
  return c.stats.series().seeded() ? c.live.gustsamples.max() : kNaN;
}
int force(double knots) { return beaufortForce(knots); }

// ---- The monthly log's recent minutes ----

TagSource logged(std::function<std::optional<double>(const current::RecentLog&, const TagContext&)> f) {
  return [f = std::move(f)](const TagContext& c) -> TagValue { return f(current::recentLog(c), c); };
}

std::optional<double> lastHourRain(const current::RecentLog& log, const TagContext&) {
  if (log.within(60).empty()) return std::nullopt;
  return log.rainBetween(log.nowMinute - 59, log.nowMinute + 1);
}

std::optional<double> twoMinuteWind(const current::RecentLog& log, const TagContext&) {
  const auto lines = log.within(2);
  if (lines.empty()) return std::nullopt;
  double sum = 0;
  for (const LoggedMinute& m : lines) sum += m.wind();
  return sum / static_cast<double>(lines.size());
}

// The mean of the last ten logged directions, each weighted by its wind so
// that calm minutes (whose vane points anywhere) count for little.
std::optional<double> tenMinuteDirection(const current::RecentLog& log, const TagContext&) {
  const auto lines = log.within(10);
  if (lines.empty()) return std::nullopt;
  double x = 0;
  double y = 0;
  double weights = 0;
  for (const LoggedMinute& m : lines) weights += m.wind();
  for (const LoggedMinute& m : lines) {
    const double weight = weights > 0 ? m.wind() : 1.0;
    x += weight * std::sin(m.direction() * std::numbers::pi / 180.0);
    y += weight * std::cos(m.direction() * std::numbers::pi / 180.0);
  }
  if (x == 0 && y == 0) return std::nullopt;
  const double degrees = std::atan2(x, y) * 180.0 / std::numbers::pi;
  return std::fmod(std::round(degrees) + 360.0, 360.0);
}

std::optional<double> pressureChange(const TagContext& c, int minutes) {
  if (!c.readingsSeen) return std::nullopt;
  const LoggedMinute* then = current::recentLog(c).atAge(minutes);
  if (then == nullptr) return std::nullopt;
  return c.live.barometer - then->barometer();
}

// The three hours' change against the thresholds of the pressure-trend form
// (hPa): "threshold" of each pair for a rise, "threshold2" for a fall.
TagValue threeHourPressureWord(const TagContext& c) {
  const std::optional<double> change = pressureChange(c, 180);
  if (!change) return noData();
  const PressureTrendSettings& t = c.units.pressureTrend;
  const current::Trend trend = current::classifyChange(*change, t.slowThreshold, t.threshold, t.fastThreshold,
                                                       t.slowThreshold2, t.threshold2, t.fastThreshold2);
  return current::pressureTrendWord(trend, c.options.language);
}

// The console's own trend when the station is a Vantage and the owner has
// not chosen the three-hour rule.
TagValue pressureTrendName(const TagContext& c) {
  if (c.readingsSeen && current::vantageStation(c) && !c.units.pressureTrend.useThreeHourRule) {
    if (const auto trend = current::consoleTrend(c.live.barotrend))
      return current::pressureTrendWord(*trend, c.options.language);
  }
  return threeHourPressureWord(c);
}

// Steady within 0.3 °C an hour; rapidly beyond 2 °C.
TagValue temperatureTrendWord(const TagContext& c) {
  if (!c.readingsSeen) return noData();
  const LoggedMinute* then = current::recentLog(c).atAge(60);
  if (then == nullptr) return noData();
  return current::temperatureTrendWord(
      current::classifyChange(c.live.outtemp - then->temperature(), 0.3, 1.0, 2.0, 0.3, 1.0, 2.0));
}

// Rain since midnight: today's total when the rain day starts at midnight,
// otherwise the minutes the log holds since then.
TagValue rainSinceMidnight(const TagContext& c) {
  if (!c.readingsSeen) return noData();
  if (c.units.resets.rainResetHour == 0 && c.units.resets.dayReset == DayResetTime::midnight) return c.live.dailyrain;
  const current::RecentLog& log = current::recentLog(c);
  const long long midnight = log.nowMinute / kMinutesPerDay * kMinutesPerDay;
  if (log.within(static_cast<int>(log.nowMinute - midnight + 1)).empty()) return noData();
  return log.rainBetween(midnight, log.nowMinute + 1);
}

TagValue rainYesterdayToMidnight(const TagContext& c) {
  const current::RecentLog& log = current::recentLog(c);
  const long long midnight = log.nowMinute / kMinutesPerDay * kMinutesPerDay;
  if (log.history.between(midnight - kMinutesPerDay, midnight).empty()) return noData();
  return log.rainBetween(midnight - kMinutesPerDay, midnight);
}

// ---- Sun and UV ----

std::optional<double> sunshine(const TagContext& c) {
  const std::optional<double> percent = current::sunshinePercent(c, 0.0);
  if (!percent) return std::nullopt;
  return std::min(*percent, 100.0);
}

// Near the horizon the clear-sky estimate is too rough for a word.
TagValue sunshineDescription(const TagContext& c) {
  const std::optional<double> percent = current::sunshinePercent(c, 10.0);
  if (!percent) return noData();
  return current::sunshineWords(*percent);
}

TagValue sunshineDescriptionAlways(const TagContext& c) {
  const StationPosition& p = c.options.position;
  if (!c.readingsSeen || !p.latitude || !p.longitude) return noData();
  if (current::sunElevation(c.instant, *p.latitude, *p.longitude) < 0) return "Night";
  const std::optional<double> percent = current::sunshinePercent(c, 0.0);
  return current::sunshineWords(percent.value_or(0.0));
}

// ---- Units ----

std::string symbolWord(const TagContext& c, Unit family) {
  const TagWriting writing{c.units.units, true, c.options.htmlDegreeSign, false};
  std::string symbol = unitSymbol(shownUnit(family, c.units.units), writing);
  symbol.erase(0, symbol.find_first_not_of(' '));
  return symbol;
}

TagValue distanceWord(const TagContext& c) {
  switch (c.units.units.webWindShown()) {
    case WindUnit::mph: return "miles";
    case WindUnit::knots: return "nm";
    default: return "km";
  }
}

}  // namespace

std::vector<TagDef> currentTags() {
  using current::compassLong;
  using current::compassShort;
  const auto sector = [](const TagContext& c) { return compassSector(c.live.winddir); };
  return {
      number("10minavspeedinkmh", Unit::kmh, 1, 1, live(tenMinuteKnots), "10-minute average wind in km/h"),
      number("10minavspeedinm/s", Unit::metresPerSecond, 1, 1, live(tenMinuteKnots), "10-minute average wind in m/s"),
      number("10minavspeedinmetric", Unit::kmh, 1, 1, live(tenMinuteKnots), "10-minute average wind in km/h"),
      number("10minuteavspeedbft", Unit::beaufort, 1, 0, live(tenMinuteKnots), "10-minute average wind, Beaufort force"),
      number("1mingustwind", Unit::speed, 1, 1, live(oneMinuteGust), "highest gust of the last minute"),
      number("1mingustwindnodp", Unit::speed, 1, 0, live(oneMinuteGust), "highest gust of the last minute, whole"),
      number("2minavspeedmph", Unit::mph, 1, 1, logged(twoMinuteWind), "average wind of the last two logged minutes in mph"),
      number("abshum", Unit::none, 1, 1, live([](const TagContext& c) { return current::absoluteHumidity(c.live.outtemp, c.live.outhum); }), "absolute humidity, grams of water per cubic metre"),
      number("airdensity", Unit::none, 1, 3, live(densityKgM3), "density of the outdoor air at the station, kg per cubic metre"),
      number("apparentsolartemp", Unit::temperature, 1, 1, live(apparentSolarC), "apparent temperature in the sun (Steadman, with solar radiation)"),
      missing("apparentsolartemp24hourago", "apparent temperature in the sun 24 hours ago; the log keeps no solar radiation to work it out from"),
      number("apparentsolartempc", Unit::celsius, 1, 1, live(apparentSolarC), "apparent temperature in the sun in °C"),
      number("apparentsolartempf", Unit::fahrenheit, 1, 1, live(apparentSolarC), "apparent temperature in the sun in °F"),
      number("apparentsolartempnodp", Unit::temperature, 1, 0, live(apparentSolarC), "apparent temperature in the sun, whole degrees"),
      number("apparenttemp", Unit::temperature, 1, 1, live(apparentC), "apparent temperature in the shade (Steadman)"),
      number("apparenttempc", Unit::celsius, 1, 1, live(apparentC), "apparent temperature in the shade in °C"),
      number("apparenttempf", Unit::fahrenheit, 1, 1, live(apparentC), "apparent temperature in the shade in °F"),
      bare("avdir10minute", Unit::none, 1, 0, logged(tenMinuteDirection), "wind direction averaged over the last ten logged minutes, degrees"),
      number("avgspd", Unit::speed, 1, 1, live(averageKnots), "average wind speed (the 10-minute average when chosen)"),
      comma("avgspd,", Unit::speed, 1, averageKnots, "average wind speed"),
      number("avnodp", Unit::speed, 1, 0, live(averageKnots), "average wind speed, whole"),
      number("avnodpmph", Unit::mph, 1, 0, live(averageKnots), "average wind speed in whole mph"),
      number("avspeedinkmh", Unit::kmh, 1, 1, live(averageKnots), "average wind speed in km/h"),
      number("avspeedinm/s", Unit::metresPerSecond, 1, 1, live(averageKnots), "average wind speed in m/s"),
      number("avspeedinmetric", Unit::kmh, 1, 1, live(averageKnots), "average wind speed in km/h"),
      number("avspeedinmsalways", Unit::metresPerSecond, 1, 1, live(averageKnots), "average wind speed in m/s"),
      number("avtenminutewind", Unit::speed, 1, 1, live(tenMinuteKnots), "10-minute average wind"),
      number("baro", Unit::pressure, 1, 1, live(baroHPa), "sea-level pressure"),
      number("baroininches2dp", Unit::inHg, 1, 1, live(baroHPa), "sea-level pressure in inches of mercury, 2 decimals"),
      number("baroinkpa", Unit::kPa, 1, 1, live(baroHPa), "sea-level pressure in kPa"),
      number("baroinmbnodp", Unit::mb, 1, 0, live(baroHPa), "sea-level pressure in whole mb"),
      number("baroinmetric", Unit::hPa, 1, 1, live(baroHPa), "sea-level pressure in hPa"),
      number("baroinusa", Unit::inHg, 1, 2, live(baroHPa), "sea-level pressure in inches of mercury, 3 decimals"),
      number("baroinusa2dp", Unit::inHg, 1, 1, live(baroHPa), "sea-level pressure in inches of mercury, 2 decimals"),
      bare("beaufortnum", Unit::beaufort, 1, 0, live(averageKnots), "Beaufort force of the average wind"),
      text("bftspeedtext", word([](const TagContext& c) { return current::beaufortWords(force(averageKnots(c))); }), "Beaufort words of the average wind (\"Gentle breeze\")"),
      text("bftspeedtext10", word([](const TagContext& c) { return current::beaufortWords(force(tenMinuteKnots(c))); }), "Beaufort words of the 10-minute average wind"),
      text("bftspeedtextcurr", word([](const TagContext& c) { return current::beaufortWords(force(presentKnots(c))); }), "Beaufort words of the present wind reading"),
      bare("burntime", Unit::none, 1, 0, [](const TagContext& c) -> TagValue { return c.readingsSeen ? TagValue(current::burnTimeMinutes(c.live.uv)) : noData(); }, "minutes to sunburn at the present UV index"),
      number("chandler", Unit::none, 1, 1, live([](const TagContext& c) { return current::chandlerIndex(c.live.outtemp, c.live.outhum); }), "Chandler burning index"),
      number("cloudheightfeet", Unit::none, 1, 0, live([](const TagContext& c) { return cloudMetres(c) / 0.3048; }), "estimated cloud base above the station in feet"),
      number("cloudheightmeters", Unit::none, 1, 0, live(cloudMetres), "estimated cloud base above the station in metres"),
      text("curdir10minutelabel", [](const TagContext& c) -> TagValue { const auto d = tenMinuteDirection(current::recentLog(c), c); if (!d) return noData(); return compassShort(compassSector(*d), c.options.language); }, "compass point of the 10-minute average direction"),
      number("currbftspeed", Unit::beaufort, 1, 0, live(presentKnots), "Beaufort force of the present wind reading"),
      number("currentavtenminutewindms", Unit::metresPerSecond, 1, 1, live(tenMinuteKnots), "10-minute average wind in m/s"),
      text("currentmonthtodatefilename", [](const TagContext& c) -> TagValue { return current::monthLogName(c); }, "file name of this month's log (\"62026lg.txt\")"),
      number("currentpressureinmb", Unit::mb, 1, 1, live(baroHPa), "sea-level pressure in mb"),
      comma("currentpressureinmb,", Unit::mb, 1, baroHPa, "sea-level pressure in mb"),
      bare("currentrainrate", Unit::rain, 1, 2, live([](const TagContext& c) { return current::rainRateMmPerHour(c) / 60.0; }), "rain rate per minute in the owner's rain unit"),
      number("currentrainratehr", Unit::rainRate, 1, 1, live(current::rainRateMmPerHour), "rain rate per hour"),
      number("currentrainratemm", Unit::mmPerHour, 1, 1, live(current::rainRateMmPerHour), "rain rate in mm per hour"),
      text("Currentsolardescription", sunshineDescription, "sunshine in words from the share of clear-sky radiation; \"---\" with the sun below 10 degrees or no station position"),
      text("Currentsolardescriptionalways", sunshineDescriptionAlways, "sunshine in words at any sun height, \"Night\" with the sun down"),
      bare("currentsolarpctplain", Unit::none, 1, 0, [](const TagContext& c) -> TagValue { return sunshine(c); }, "solar radiation as a percentage of clear sky, bare number"),
      text("currentsolarpercent", [](const TagContext& c) -> TagValue { const auto p = sunshine(c); if (!p) return noData(); return fmt::format("{:.0f}%", *p); }, "solar radiation as a percentage of clear sky, with %"),
      number("dayrn", Unit::rain, 1, 1, live(dayRain), "today's rain"),
      comma("dayrn,", Unit::rain, 1, dayRain, "today's rain"),
      number("dayrnmidnight", Unit::rain, 1, 1, rainSinceMidnight, "rain since midnight"),
      number("dayrnmidnightyest", Unit::rain, 1, 1, rainYesterdayToMidnight, "yesterday's rain from midnight to midnight, as the log holds it"),
      number("dayrnmm", Unit::mm, 1, 1, live(dayRain), "today's rain in mm"),
      number("dayrnusa", Unit::inches, 1, 1, live(dayRain), "today's rain in inches"),
      number("densityalt", Unit::none, 1, 0, live([](const TagContext& c) { return current::densityAltitudeFeet(densityKgM3(c)); }), "density altitude in feet"),
      number("dew", Unit::temperature, 1, 1, live(dewC), "dew point"),
      comma("dew,", Unit::temperature, 1, dewC, "dew point"),
      number("dewdep", Unit::temperatureChange, 1, 1, live([](const TagContext& c) { return c.live.outtemp - c.live.dewpoint; }), "dew-point depression: temperature minus dew point"),
      number("dewinmetric", Unit::celsius, 1, 1, live(dewC), "dew point in °C"),
      number("dewinusa", Unit::fahrenheit, 1, 1, live(dewC), "dew point in °F"),
      number("dewnodp", Unit::temperature, 1, 0, live(dewC), "dew point, whole degrees"),
      bare("dirdeg", Unit::none, 1, 0, live([](const TagContext& c) { return double(c.live.winddir); }), "wind direction in degrees"),
      text("dirlabel", word([=](const TagContext& c) { return compassShort(sector(c), c.options.language); }), "wind direction as a compass point in the word language"),
      text("dirlabeldanish", word([=](const TagContext& c) { return compassShort(sector(c), WordLanguage::danish); }), "wind direction as a Danish compass point"),
      text("dirlabeldutch", word([=](const TagContext& c) { return current::compassDutch(sector(c)); }), "wind direction as a Dutch compass point"),
      text("dirlabelfrench", word([=](const TagContext& c) { return compassShort(sector(c), WordLanguage::french); }), "wind direction as a French compass point"),
      missing("dirmag", "wind direction from magnetic north; the program keeps no magnetic declination"),
      missing("dirmag10", "10-minute wind direction from magnetic north; the program keeps no magnetic declination"),
      number("feelslike", Unit::temperature, 1, 0, live(feelsC), "feels-like temperature (wind chill below 10 °C, heat index from 27 °C), whole degrees"),
      number("feelslikedp", Unit::temperature, 1, 1, live(feelsC), "feels-like temperature with one decimal"),
      number("feelslikeincelsius", Unit::celsius, 1, 0, live(feelsC), "feels-like temperature in whole °C"),
      missing("ffi", "forest fire-weather index; not built in this program"),
      number("genstormrain", Unit::rain, 1, 1, [](const TagContext& c) -> TagValue { return current::vantageStation(c) ? reading(c, c.live.stormrain) : noData(); }, "rain of the present storm as the Vantage console counts it; \"---\" for other stations"),
      number("gstspd", Unit::speed, 1, 1, live(gustKnots), "gust speed"),
      comma("gstspd,", Unit::speed, 1, gustKnots, "gust speed"),
      missing("gustgaugepointer", "position of the gust pointer on the screen's wind dial; the program draws no dial"),
      number("gustinmph", Unit::mph, 1, 1, live(gustKnots), "gust speed in mph"),
      number("gustnodp", Unit::speed, 1, 0, live(gustKnots), "gust speed, whole"),
      number("gustnodpmph", Unit::mph, 1, 0, live(gustKnots), "gust speed in whole mph"),
      number("gustspeedinkmh", Unit::kmh, 1, 1, live(gustKnots), "gust speed in km/h"),
      number("gustspeedinm/s", Unit::metresPerSecond, 1, 1, live(gustKnots), "gust speed in m/s"),
      number("gustspeedinmetric", Unit::kmh, 1, 1, live(gustKnots), "gust speed in km/h"),
      number("gustspeedinms", Unit::metresPerSecond, 1, 1, live(gustKnots), "gust speed in m/s"),
      text("heatcolourword", word([](const TagContext& c) { return current::warmthWord(feelsC(c)); }), "how warm it feels in a word (\"Freezing\" ... \"Very hot\")"),
      number("heati", Unit::temperature, 1, 1, live(heatC), "heat index"),
      comma("heati,", Unit::temperature, 1, heatC, "heat index"),
      number("heatindexinmetric", Unit::celsius, 1, 1, live(heatC), "heat index in °C"),
      number("heatinodp", Unit::temperature, 1, 0, live(heatC), "heat index, whole degrees"),
      number("HLI", Unit::none, 1, 1, live([](const TagContext& c) { return heatLoad(c, presentKnots(c)); }), "heat load index for cattle with the present wind"),
      number("HLIAavwind", Unit::none, 1, 1, live([](const TagContext& c) { return heatLoad(c, tenMinuteKnots(c)); }), "heat load index for cattle with the 10-minute average wind"),
      missing("HLIAvwindf", "heat load index in a Fahrenheit form; the index has no temperature scale to convert"),
      missing("HLIf", "heat load index in a Fahrenheit form; the index has no temperature scale to convert"),
      number("hourrn", Unit::rain, 1, 1, logged(lastHourRain), "rain of the last 60 logged minutes"),
      comma("hourrn,", Unit::rain, 1, [](const TagContext& c) { return lastHourRain(current::recentLog(c), c).value_or(kNaN); }, "rain of the last 60 logged minutes"),
      number("hourrnusa", Unit::inches, 1, 1, logged(lastHourRain), "rain of the last 60 logged minutes in inches"),
      number("hum", Unit::none, 1, 0, live(humidity), "outdoor humidity, percent"),
      number("humidex", Unit::temperature, 1, 1, live(humidexC), "humidex"),
      number("humidexcelsius", Unit::celsius, 1, 1, live(humidexC), "humidex in °C"),
      number("humidexfaren", Unit::fahrenheit, 1, 1, live(humidexC), "humidex in °F"),
      text("humpercent", [](const TagContext& c) -> TagValue { return c.readingsSeen ? TagValue(fmt::format("{}%", c.live.outhum)) : noData(); }, "outdoor humidity with %"),
      number("indoordewcelsius", Unit::celsius, 1, 1, live(indoorDewC), "indoor dew point in °C"),
      number("indoordewfaren", Unit::fahrenheit, 1, 1, live(indoorDewC), "indoor dew point in °F"),
      number("indoorhum", Unit::none, 1, 0, live([](const TagContext& c) { return double(c.live.inhum); }), "indoor humidity, percent"),
      number("indoortemp", Unit::temperature, 1, 1, live(indoorC), "indoor temperature"),
      comma("indoortemp,", Unit::temperature, 1, indoorC, "indoor temperature"),
      number("indoortempinmetric", Unit::celsius, 1, 1, live(indoorC), "indoor temperature in °C"),
      number("MDI", Unit::celsius, 1, 1, live([](const TagContext& c) { return current::modifiedDiscomfort(c.live.outtemp, c.live.outhum); }), "modified discomfort index (0.3 T + 0.75 wet bulb), °C"),
      number("monthraininmm", Unit::mm, 1, 1, live(monthRain), "this month's rain in mm"),
      number("monthrn", Unit::rain, 1, 1, live(monthRain), "this month's rain"),
      comma("monthrn,", Unit::rain, 1, monthRain, "this month's rain"),
      number("monthrnusa", Unit::inches, 1, 1, live(monthRain), "this month's rain in inches"),
      text("pressuretrendname", pressureTrendName, "pressure trend in words: the Vantage console's trend, else the three-hour change"),
      text("pressuretrendname3hour", threeHourPressureWord, "pressure trend in words from the change over three hours"),
      number("QFEbaro", Unit::pressure, 1, 1, live(current::stationPressureHPa), "pressure at the station's height (QFE)"),
      text("seaconditions", word([](const TagContext& c) { return current::seaConditions(force(averageKnots(c))); }), "sea state that goes with the average wind's Beaufort force"),
      bare("Solar", Unit::none, 1, 0, live([](const TagContext& c) { return c.live.solar; }), "solar radiation, W/m²"),
      number("temp", Unit::temperature, 2, 1, live(tempC), "outdoor temperature"),
      comma("temp,", Unit::temperature, 1, tempC, "outdoor temperature"),
      number("tempinfaren", Unit::fahrenheit, 1, 1, live(tempC), "outdoor temperature in °F"),
      number("tempinmetric", Unit::celsius, 1, 1, live(tempC), "outdoor temperature in °C"),
      number("tempinusa", Unit::fahrenheit, 1, 1, live(tempC), "outdoor temperature in °F"),
      number("tempnodp", Unit::temperature, 1, 0, live(tempC), "outdoor temperature, whole degrees"),
      number("tempnodpf", Unit::fahrenheit, 1, 0, live(tempC), "outdoor temperature in whole °F"),
      bare("tempnounits", Unit::temperature, 1, 1, live(tempC), "outdoor temperature without a unit symbol"),
      text("temptrendnamehour", temperatureTrendWord, "temperature trend over the last hour in words"),
      number("THI", Unit::celsius, 1, 1, live([](const TagContext& c) { return current::thomDiscomfort(c.live.outtemp, c.live.outhum); }), "temperature-humidity index (Thom) in °C"),
      number("THIf", Unit::fahrenheit, 1, 1, live([](const TagContext& c) { return current::thomDiscomfort(c.live.outtemp, c.live.outhum); }), "temperature-humidity index (Thom) in °F"),
      missing("THSW", "the Vantage console's temperature-humidity-sun-wind index; the live record does not carry it (see apparentsolartemp)"),
      number("trend", Unit::pressure, 1, 1, [](const TagContext& c) -> TagValue { return pressureChange(c, 60); }, "change of the sea-level pressure over the last hour"),
      text("uombaro", [](const TagContext& c) -> TagValue { return symbolWord(c, Unit::pressure); }, "the pressure unit shown (\"hPa\")"),
      text("uomdistance", distanceWord, "the distance unit that goes with the wind unit (\"km\", \"miles\", \"nm\")"),
      text("uomrain", [](const TagContext& c) -> TagValue { return symbolWord(c, Unit::rain); }, "the rain unit shown (\"mm\")"),
      text("uomtemp", [](const TagContext& c) -> TagValue { return symbolWord(c, Unit::temperature); }, "the temperature unit shown (\"°C\")"),
      text("uomwind", [](const TagContext& c) -> TagValue { return symbolWord(c, Unit::speed); }, "the wind unit shown (\"km/h\")"),
      text("UVdescription", word([](const TagContext& c) { return current::uvWords(c.live.uv); }), "UV index in words (\"Low\" ... \"Extreme\")"),
      number("vapourpressure", Unit::hPa, 1, 1, live([](const TagContext& c) { return TWeatherUtils::ActualVaporPressure(c.live.outhum, 0, c.live.outtemp); }), "water vapour pressure in hPa"),
      number("wetbulb", Unit::temperature, 1, 1, live(wetBulbC), "wet-bulb temperature"),
      number("wetbulbdiff", Unit::temperatureChange, 1, 1, live([](const TagContext& c) { return c.live.outtemp - wetBulbC(c); }), "wet-bulb depression: temperature minus wet bulb"),
      bare("wholeroundedtempcelcius", Unit::celsius, 1, 0, live(tempC), "outdoor temperature in whole °C"),
      bare("wholeroundedtempfaren", Unit::fahrenheit, 1, 0, live(tempC), "outdoor temperature in whole °F"),
      number("windch", Unit::temperature, 1, 1, live(chillC), "wind chill"),
      comma("windch,", Unit::temperature, 1, chillC, "wind chill"),
      number("windchillinmetric", Unit::celsius, 1, 1, live(chillC), "wind chill in °C"),
      number("windchnodp", Unit::temperature, 1, 0, live(chillC), "wind chill, whole degrees"),
      text("winddirinwords", word([=](const TagContext& c) { return compassLong(sector(c), c.options.language); }), "wind direction in words in the word language (\"South westerly\")"),
      text("winddirinwordsdanish", word([=](const TagContext& c) { return compassLong(sector(c), WordLanguage::danish); }), "wind direction in Danish words"),
      text("winddirinwordsdutch", word([=](const TagContext& c) { return current::compassLongDutch(sector(c)); }), "wind direction in Dutch words"),
      text("winddirinwordsfrench", word([=](const TagContext& c) { return compassLong(sector(c), WordLanguage::french); }), "wind direction in French words"),
      missing("windgaugepointer", "position of the wind pointer on the screen's wind dial; the program draws no dial"),
      number("windinmph", Unit::mph, 1, 1, live(averageKnots), "average wind speed in mph"),
      number("yearlyraininmm", Unit::mm, 1, 1, live(yearRain), "this year's rain in mm"),
      number("yearrn", Unit::rain, 1, 1, live(yearRain), "this year's rain"),
      comma("yearrn,", Unit::rain, 1, yearRain, "this year's rain"),
      number("yearrnusa", Unit::inches, 1, 1, live(yearRain), "this year's rain in inches"),
  };
}

}  // namespace nimbrel
