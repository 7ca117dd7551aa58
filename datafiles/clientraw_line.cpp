#include "datafiles/clientraw_line.h"

#include <fmt/format.h>

#include <array>
#include <cmath>

#include "core/live_record.h"
#include "core/log_formulas.h"
#include "core/number_format.h"
#include "core/version.h"
#include "datafiles/clientraw_layout.h"
#include "datafiles/clientraw_settings.h"
#include "processing/statistics/station_statistics.h"

namespace nimbrel {
namespace {

using namespace clientraw;
using Fields = std::array<std::string, kFieldCount>;

constexpr double kMinutesPerHour = 60.0;
constexpr double kRainLastMinuteLimitMm = 50.0;

// "Width w with d decimals"; a value that is not a number is missing.
std::string decimal(double value, int width, int decimals) {
  if (!std::isfinite(value)) return std::string(kNoValue);
  return fixed(value, width, decimals);
}

std::string whole(long long value) { return fmt::format("{}", value); }

std::string rounded(double value) {
  if (!std::isfinite(value)) return std::string(kNoValue);
  return whole(std::llround(value));
}

std::string twoDigits(int value) { return fmt::format("{:02}", value); }

// A text field: blanks would split it, so they become "_"; nothing is missing.
std::string word(std::string_view text) {
  if (text.empty()) return std::string(kNoValue);
  std::string out(text);
  for (char& c : out)
    if (c == ' ') c = '_';
  return out;
}

std::string trimmedWord(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return std::string(kNoValue);
  return word(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string temperature(double celsius) { return decimal(celsius, 2, 1); }
std::string wind(double knots) { return decimal(knots, 2, 1); }
std::string rainRatePerMinute(double rate, bool perHour) {
  return decimal(perHour ? rate / kMinutesPerHour : rate, 2, 3);
}

// -1, 0 or 1: how the newest sample of a short-term series compares with the
// oldest, at the resolution the file shows, so that a trend never appears
// between two values that read the same.
template <class Series>
std::string trend(const Series& series, bool seeded) {
  if (!seeded) return "0";
  const auto shown = [](double v) { return std::llround(v * 10.0); };
  const long long oldest = shown(series.front());
  const long long newest = shown(series.back());
  return whole((newest > oldest) - (newest < oldest));
}

std::uint16_t iconShown(const LiveRecord& r, const ClientrawOptions& options) {
  if (!options.alternativeIcon || r.forecasticonalt == kForecastIconNotSet) return r.forecasticon;
  return r.forecasticonalt;
}

void fillCurrentConditions(Fields& f, const LiveRecord& r, const ClientrawOptions& options) {
  f[magic] = kMagic;
  f[averageWind] = wind(r.windspeed);
  f[gust] = wind(r.windgust);
  f[direction] = whole(r.winddir);
  f[outdoorTemp] = decimal(r.outtemp, 2, options.temperatureTwoDecimals ? 2 : 1);
  f[outdoorHumidity] = whole(r.outhum);
  f[pressure] = decimal(r.barometer, 2, 1);
  f[rainToday] = decimal(r.dailyrain, 2, 1);
  f[rainMonth] = decimal(r.monthlyrain, 2, 1);
  f[rainYear] = decimal(r.yearlyrain, 2, 1);
  f[rainRate] = rainRatePerMinute(r.rainrate, options.rainRatePerHour);
  f[highRainRateToday] = rainRatePerMinute(r.maxrainrate, options.rainRatePerHour);
  f[indoorTemp] = temperature(r.intemp);
  f[indoorHumidity] = whole(r.inhum);
  f[soilTemp] = temperature(r.soiltemp);
  f[forecastIcon] = whole(iconShown(r, options));
}

void fillExtraChannels(Fields& f, const LiveRecord& r) {
  constexpr std::array<Field, kExtraChannels> temps{extraTemp1, extraTemp2, extraTemp3, extraTemp4, extraTemp5,
                                                    extraTemp6, extraTemp7, extraTemp8, extraTemp9};
  constexpr std::array<Field, kExtraChannels> hums{extraHumidity1, extraHumidity2, extraHumidity3,
                                                   extraHumidity4, extraHumidity5, extraHumidity6,
                                                   extraHumidity7, extraHumidity8, extraHumidity9};
  for (int channel = 1; channel <= kExtraChannels; ++channel) {
    f[temps[channel - 1]] = temperature(r.extratemp[channel]);
    f[hums[channel - 1]] = whole(r.extrahum[channel]);
  }
}

// The wind chill of this file is always the US formula from the average
// wind, whatever chill option the screen uses, written back in degrees C.
double clientrawWindChillCelsius(const LiveRecord& r) {
  const double chillF = clientrawWindChillUS(r.windspeed, writer_units::toFahrenheit(r.outtemp));
  return (chillF - writer_units::kFahrenheitOffset) / writer_units::kFahrenheitPerCelsius;
}

void fillDerived(Fields& f, const LiveRecord& r, const ShortTermSeries& series) {
  f[dewPoint] = temperature(r.dewpoint);
  f[heatIndex] = temperature(r.heatindex);
  f[windChill] = temperature(clientrawWindChillCelsius(r));
  f[temperatureTrend] = trend(series.temperature(), series.seeded());
  f[humidityTrend] = trend(series.humidity(), series.seeded());
  f[pressureTrend] = trend(series.barometer(), series.seeded());
}

std::string readingTimeText(const ReadingTime& t) {
  if (t.day == 0) return "00:00:00";  // no reading has been stamped yet
  return fmt::format("{:02}:{:02}:{:02}", t.hour, t.minute, t.second);
}

void fillTimeAndPlace(Fields& f, const ClientrawSources& s) {
  f[hour] = twoDigits(s.now.hour);
  f[minute] = twoDigits(s.now.minute);
  f[second] = twoDigits(s.now.second);
  f[stationName] = word(s.stationName);
  f[readingTime] = readingTimeText(s.record.readingtime);
  f[day] = whole(s.now.day);
  f[month] = whole(s.now.month);
  f[year] = whole(s.now.year);
}

void fillSkyAndGround(Fields& f, const LiveRecord& r, double tenMinuteAverage) {
  f[tenMinuteAverageWind] = wind(tenMinuteAverage);
  f[solar] = rounded(r.solar);
  f[uvIndex] = decimal(r.uv, 1, 1);
  f[evapotranspirationToday] = decimal(r.dailyet, 1, 2);
  f[snowDepth] = decimal(r.snowheight, 1, 1);
  f[lightningCount] = whole(r.lightningcount);
  f[soilTemp2] = temperature(r.soiltemps[2]);
  f[soilTemp3] = temperature(r.soiltemps[3]);
  f[soilTemp4] = temperature(r.soiltemps[4]);
  constexpr std::array<Field, kVantageSoilChannels> moisture{soilMoisture1, soilMoisture2, soilMoisture3,
                                                             soilMoisture4};
  constexpr std::array<Field, kVantageLeafChannels> leaf{leafWetness1, leafWetness2, leafWetness3, leafWetness4};
  for (int channel = 1; channel <= kVantageSoilChannels; ++channel)
    f[moisture[channel - 1]] = whole(r.soilmoisture[channel]);
  for (int channel = 1; channel <= kVantageLeafChannels; ++channel) f[leaf[channel - 1]] = whole(r.leafwetness[channel]);
}

void fillConsole(Fields& f, const LiveRecord& r) {
  f[consolePressureTendency] = whole(r.barotrend);
  f[stormRain] = decimal(r.stormrain, 1, 1);
  f[consoleBatteryVolts] = decimal(r.consolebattery, 1, 2);
  f[transmitterBattery] = whole(r.transmitterbattery);
  f[consoleForecastRule] = whole(r.forecastrule);
}

// Rain of the last minute from the station's counter; a counter that went
// back (reset) or jumped beyond belief counts as no rain.
double rainOfLastMinute(const LiveRecord& r) {
  const double mm = r.raincounter - r.raincounterprev;
  return mm < 0 || mm > kRainLastMinuteLimitMm ? 0.0 : mm;
}

void fillRecentRainAndWind(Fields& f, const LiveRecord& r, const StationStatistics& statistics) {
  const LastHourMaximum& top = statistics.lastHour();
  f[lastHourMaxWind] = top.found ? wind(top.knots) : std::string(kNoValue);
  f[lastHourMaxWindDirection] = top.found ? trimmedWord(top.compass) : std::string(kNoValue);
  f[lastHourMaxWindTime] = top.found ? word(top.time) : std::string(kNoValue);
  f[highRainRateTime] = word(statistics.rain().maxRainRateTime());
  f[rainLastMinute] = decimal(rainOfLastMinute(r), 1, 1);
}

enum class Shape { temperature, pressure, percent, speed, whole, index };

std::string shaped(double value, Shape shape) {
  switch (shape) {
    case Shape::temperature:
    case Shape::pressure:
    case Shape::speed:
      return decimal(value, 2, 1);
    case Shape::index:
      return decimal(value, 1, 1);
    case Shape::percent:
    case Shape::whole:
      return rounded(value);
  }
  return std::string(kNoValue);
}

struct ExtremeSlot {
  Quantity quantity;
  Side side;
  Field value;
  Field time;
  Shape shape;
};

constexpr std::array<ExtremeSlot, 22> kExtremeSlots{{
    {Quantity::Temperature, Side::High, highTemp, highTempTime, Shape::temperature},
    {Quantity::Temperature, Side::Low, lowTemp, lowTempTime, Shape::temperature},
    {Quantity::Pressure, Side::High, highPressure, highPressureTime, Shape::pressure},
    {Quantity::Pressure, Side::Low, lowPressure, lowPressureTime, Shape::pressure},
    {Quantity::WindChill, Side::High, highWindChill, highWindChillTime, Shape::temperature},
    {Quantity::WindChill, Side::Low, lowWindChill, lowWindChillTime, Shape::temperature},
    {Quantity::Humidity, Side::High, highHumidity, highHumidityTime, Shape::percent},
    {Quantity::Humidity, Side::Low, lowHumidity, lowHumidityTime, Shape::percent},
    {Quantity::DewPoint, Side::High, highDewPoint, highDewPointTime, Shape::temperature},
    {Quantity::DewPoint, Side::Low, lowDewPoint, lowDewPointTime, Shape::temperature},
    {Quantity::HeatIndex, Side::High, highHeatIndex, highHeatIndexTime, Shape::temperature},
    {Quantity::HeatIndex, Side::Low, lowHeatIndex, lowHeatIndexTime, Shape::temperature},
    {Quantity::Gust, Side::High, highGust, highGustTime, Shape::speed},
    {Quantity::Average, Side::High, highAverageWind, highAverageWindTime, Shape::speed},
    {Quantity::IndoorTemp, Side::High, highIndoorTemp, highIndoorTempTime, Shape::temperature},
    {Quantity::IndoorTemp, Side::Low, lowIndoorTemp, lowIndoorTempTime, Shape::temperature},
    {Quantity::IndoorHumidity, Side::High, highIndoorHumidity, highIndoorHumidityTime, Shape::percent},
    {Quantity::IndoorHumidity, Side::Low, lowIndoorHumidity, lowIndoorHumidityTime, Shape::percent},
    {Quantity::SoilTemp, Side::High, highSoilTemp, highSoilTempTime, Shape::temperature},
    {Quantity::SoilTemp, Side::Low, lowSoilTemp, lowSoilTempTime, Shape::temperature},
    {Quantity::Solar, Side::High, highSolar, highSolarTime, Shape::whole},
    {Quantity::Uv, Side::High, highUv, highUvTime, Shape::index},
}};

// An extreme not reached yet today is still at its starting sentinel: missing.
// (The indoor humidity keeps only its time across a restart, so its time can
// be known while its value is not.)
void fillTodaysExtremes(Fields& f, const DailyExtremes& extremes) {
  for (const ExtremeSlot& slot : kExtremeSlots) {
    const Extreme& e = extremes.extreme(slot.quantity, slot.side);
    f[slot.value] = e.seen ? shaped(e.value, slot.shape) : std::string(kNoValue);
    f[slot.time] = word(e.time);
  }
}

ClientrawText joined(const Fields& f) {
  ClientrawText text;
  text.line.reserve(kFieldCount * 6);
  for (std::size_t i = 0; i < kFieldCount; ++i) {
    // An empty field would read as two blanks and move every later field.
    const std::string_view value = f[i].empty() ? kNoValue : std::string_view(f[i]);
    text.line.append(value).push_back(' ');
    if (i >= kSharedTextFrom && i != trailer) text.fromTimeFields.append(value).push_back(' ');
  }
  return text;
}

}  // namespace

std::string clientrawTrailer() {
  return fmt::format("{}{}b{}{}", kTrailerOpening, kVersion, kBuildNumber, kTrailerClosing);
}

ClientrawText buildClientrawText(const ClientrawSources& sources, const ClientrawOptions& options) {
  const LiveRecord& r = sources.record;
  const StationStatistics& statistics = sources.statistics;
  Fields f;
  fillCurrentConditions(f, r, options);
  fillExtraChannels(f, r);
  fillDerived(f, r, statistics.series());
  fillTimeAndPlace(f, sources);
  fillSkyAndGround(f, r, statistics.tenMinuteAverage());
  fillConsole(f, r);
  fillRecentRainAndWind(f, r, statistics);
  fillTodaysExtremes(f, statistics.extremes());
  f[trailer] = clientrawTrailer();
  return joined(f);
}

}  // namespace nimbrel
