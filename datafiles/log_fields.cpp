#include "datafiles/log_fields.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <utility>

#include "core/log_formulas.h"
#include "core/number_format.h"
#include "datafiles/log_context.h"
#include "stations/station_types.h"

namespace nimbrel {
namespace {

using namespace writer_units;

bool isUsa(UnitSystem units) { return units == UnitSystem::usa; }

std::string padLeft(std::string text, std::size_t width) {
  if (text.size() < width) text.insert(0, width - text.size(), ' ');
  return text;
}

bool timeIsSet(const ReadingTime& t) {
  return t.year > 0 && t.month >= 1 && t.month <= 12 && t.day >= 1 && t.day <= 31 && t.hour <= 23 &&
         t.minute <= 59;
}

// The heat index written in the last column: the station's own value when
// the owner chose it, otherwise the one computed for the line.
std::string heatIndexText(const LiveRecord& record, double computedC, const LogOptions& options) {
  if (options.heatIndexFromStation) {
    const double value = isUsa(options.units) ? toFahrenheit(record.heatindexalt) : record.heatindexalt;
    return fixed(value, 2, 1);
  }
  return logTemperatureText(computedC, options.units);
}

}  // namespace

std::array<std::string, kDateColumns> dateTexts(const ReadingTime& time) {
  if (!timeIsSet(time)) return {};
  return {padded(time.day, 2), padded(time.month, 2), fmt::format("{}", time.year), padded(time.hour, 2),
          padded(time.minute, 2)};
}

// A value from 0 up to 10, as rounded for writing, gets a leading "0"
// ("05.3", "00.0"); 9.95 rounds to "10.0" and gets none, nor does a negative
// value. US logs write the plain Fahrenheit text.
std::string logTemperatureText(double celsius, UnitSystem units) {
  if (isUsa(units)) return fixed(toFahrenheit(celsius), 0, 1);
  std::string text = fixed(celsius, 0, 1);
  if (text.size() == 3 && text.front() != '-') text.insert(0, 1, '0');
  return text;
}

std::string logHumidityText(std::uint16_t percent) {
  std::string text = fmt::format("{}", percent);
  if (text.size() < 3) text.insert(0, 1, ' ');
  return text;
}

std::string logBarometerText(double hPa, UnitSystem units) {
  if (isUsa(units)) {
    std::string text = fixed(toInchesHg(hPa), 0, 3);
    if (text.size() < 6) text.insert(0, 1, ' ');
    return text;
  }
  std::string text = fixed(hPa, 0, 1);
  if (text.size() == 4) text.insert(0, 1, ' ');
  return text;
}

std::string logWindText(double knots, UnitSystem units) {
  return padLeft(isUsa(units) ? fixed(toMph(knots), 2, 1) : fixed(knots, 0, 1), 3);
}

std::string logDirectionText(std::uint16_t degrees) { return padded(degrees, 3); }

double rainLastMinuteMm(const LiveRecord& record) {
  const double gained = record.raincounter - record.raincounterprev;
  return gained < 0 || gained > kMaxRainPerMinuteMm ? 0.0 : gained;
}

std::string logRainLastMinuteText(double mm, UnitSystem units, std::uint16_t stationType) {
  if (isUsa(units)) {
    // That station counts rain in hundredths of an inch.
    const int decimals = stationType == stationtype::ultimeter ? 2 : 3;
    std::string text = fixed(toInches(mm), 0, decimals);
    if (text.size() < 6) text.insert(0, 1, ' ');
    return text;
  }
  std::string text = fixed(mm, 0, 1);
  return text.size() <= 2 ? padLeft(text, 6) : text;
}

std::string logRainTotalText(double mm, int width, UnitSystem units) {
  return isUsa(units) ? fixed(toInches(mm), width, 3) : fixed(mm, width, 1);
}

std::string trimBlanks(const std::string& text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

LogFields makeLogFields(const LiveRecord& record, const ReadingTime& time, const LogOptions& options) {
  const UnitSystem units = options.units;
  const double pressure = record.barometer < 500 ? record.barometeralt : record.barometer;
  LogFields fields;
  fields.heatIndexC = logHeatIndex(record.outtemp, record.outhum);
  const auto date = dateTexts(time);
  std::copy(date.begin(), date.end(), fields.text.begin());
  auto set = [&fields](LogColumn column, std::string text) {
    fields.text[static_cast<std::size_t>(column)] = std::move(text);
  };
  set(LogColumn::temperature, logTemperatureText(record.outtemp, units));
  set(LogColumn::humidity, logHumidityText(record.outhum));
  set(LogColumn::dewpoint, logTemperatureText(logDewPoint(record.outtemp, record.outhum), units));
  set(LogColumn::barometer, logBarometerText(pressure, units));
  set(LogColumn::windspeed, logWindText(record.windsamples.mean(), units));
  set(LogColumn::gustspeed, logWindText(record.gustsamples.max(), units));
  set(LogColumn::direction, logDirectionText(record.winddir));
  set(LogColumn::rainlastmin, logRainLastMinuteText(rainLastMinuteMm(record), units, options.stationType));
  set(LogColumn::dailyrain, logRainTotalText(record.dailyrain, 3, units));
  set(LogColumn::monthlyrain, logRainTotalText(record.monthlyrain, 3, units));
  set(LogColumn::yearlyrain, logRainTotalText(record.yearlyrain, 4, units));
  set(LogColumn::heatindex, heatIndexText(record, fields.heatIndexC, options));
  return fields;
}

std::string LogFields::datePrefix() const {
  if (text[0].empty()) return {};
  return fmt::format("{} {} {} {} {}", text[0], text[1], text[2], text[3], text[4]);
}

std::string LogFields::line() const { return fmt::format("{}", fmt::join(text, " ")); }

std::string LogFields::csv(LogColumn first, LogColumn last) const {
  std::string joined;
  for (auto i = static_cast<std::size_t>(first); i <= static_cast<std::size_t>(last); ++i) {
    if (i != static_cast<std::size_t>(first)) joined += ',';
    joined += trimBlanks(text[i]);
  }
  return joined;
}

}  // namespace nimbrel
