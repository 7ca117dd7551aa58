#include "publish/tags/log_minutes.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "core/live_record.h"
#include "core/weather_utils.h"
#include "datafiles/log_fields.h"
#include "datafiles/monthly_log_reader.h"
#include "publish/tags/comfort_formulas.h"
#include "publish/tags/tag_context.h"
#include "publish/tags/unit_conversion.h"

namespace nimbrel {
namespace {

template <class Better>
std::optional<LoggedExtreme> extremeOf(std::span<const LoggedMinute> minutes, LoggedField field, Better better) {
  std::optional<LoggedExtreme> top;
  for (const LoggedMinute& m : minutes)
    if (!top || better(m.*field, top->value)) top = LoggedExtreme{m.*field, &m};
  return top;
}

bool earlier(const LoggedMinute& a, const LoggedMinute& b) { return a.minute < b.minute; }
bool before(const LoggedMinute& m, long long minute) { return m.minute < minute; }

}  // namespace

LoggedMinute loggedMinute(const MonthlyLogLine& line, const LogReading& reading) {
  using C = LogColumn;
  const bool usa = reading.logUnits == UnitSystem::usa;
  auto temperature = [&](C column) {
    const double v = line.number(column);
    return usa ? (v - writer_units::kFahrenheitOffset) / writer_units::kFahrenheitPerCelsius : v;
  };
  auto speed = [&](C column) { return usa ? line.number(column) / writer_units::kMphPerKnot : line.number(column); };
  auto rain = [&](C column) { return usa ? line.number(column) / writer_units::kInchesPerMm : line.number(column); };
  LoggedMinute m;
  m.minute = civilMinute(static_cast<int>(line.number(C::year)), static_cast<int>(line.number(C::month)),
                         static_cast<int>(line.number(C::day)), static_cast<int>(line.number(C::hour)),
                         static_cast<int>(line.number(C::minute)));
  m.temperature = temperature(C::temperature);
  m.humidity = line.number(C::humidity);
  m.dewpoint = temperature(C::dewpoint);
  m.barometer = usa ? line.number(C::barometer) / writer_units::kInchesHgPerHPa : line.number(C::barometer);
  m.wind = speed(C::windspeed);
  m.gust = speed(C::gustspeed);
  m.direction = line.number(C::direction);
  m.rain = rain(C::rainlastmin);
  m.heatindex = temperature(C::heatindex);
  m.dailyRain = rain(C::dailyrain);
  m.monthRain = rain(C::monthlyrain);
  m.yearRain = rain(C::yearlyrain);
  m.windchill = TWeatherUtils::WindChill((reading.chillFromGust ? m.gust : m.wind) * kKmhPerKnot, m.temperature);
  m.apparent = apparentTemperature(m.temperature, m.humidity, m.wind);
  m.humidex = humidex(m.temperature, m.dewpoint);
  return m;
}

// Apparent temperature of the Australian Bureau of Meteorology's shade form:
// AT = T + 0.33 e - 0.70 v - 4.00, e the water vapour pressure in hPa, v the
// wind in m/s.
double apparentTemperature(double celsius, double humidity, double windKnots) {
  const double vapour = humidity / 100.0 * 6.105 * std::exp(17.27 * celsius / (237.7 + celsius));
  return celsius + 0.33 * vapour - 0.70 * windKnots * kMetresPerSecondPerKnot - 4.00;
}

LogMinutes::LogMinutes(std::filesystem::path folder, LogReading reading)
    : folder_(std::move(folder)), reading_(reading) {}

const std::vector<LoggedMinute>& LogMinutes::month(const LogMonth& month) {
  const auto [it, added] = months_.try_emplace(month.year * 12 + month.month - 1);
  if (!added) return it->second;
  if (const auto log = readMonthlyLog(monthFile(folder_, month, "lg.txt"))) {
    it->second.reserve(log->lines().size());
    for (const MonthlyLogLine& line : log->lines()) it->second.push_back(loggedMinute(line, reading_));
  }
  return it->second;
}

LogMinutes& logMinutes(const TagContext& context) {
  auto& cached = context.caches.logMinutes;
  if (!cached)
    cached.emplace(context.logFolder, LogReading{context.units.units.logFile, context.units.wind.chillFromGust});
  return *cached;
}

LogMonth logMonthOf(long long minute, bool nineAmDay) {
  const LocalTime t = civilTime(minute);
  ReadingTime r;
  r.year = static_cast<std::uint16_t>(t.year);
  r.month = static_cast<std::uint16_t>(t.month);
  r.day = static_cast<std::uint16_t>(t.day);
  r.hour = static_cast<std::uint16_t>(t.hour);
  return logMonth(r, nineAmDay);
}

std::vector<LogMonth> logMonthsCovering(long long from, long long to, bool nineAmDay) {
  std::vector<LogMonth> months;
  LogMonth month = logMonthOf(from, nineAmDay);
  const LogMonth last = logMonthOf(std::max(from, to - 1), nineAmDay);
  while (true) {
    months.push_back(month);
    if (month == last || months.size() > 24) break;
    month = month.month == 12 ? LogMonth{1, month.year + 1} : LogMonth{month.month + 1, month.year};
  }
  return months;
}

MinuteHistory MinuteHistory::gather(LogMinutes& logs, std::span<const LogMonth> months, Repeats repeats,
                                    long long from, long long to) {
  MinuteHistory history;
  auto& minutes = history.minutes_;
  for (const LogMonth& month : months)
    for (const LoggedMinute& m : logs.month(month))
      if (m.minute >= from && m.minute <= to) minutes.push_back(m);
  std::stable_sort(minutes.begin(), minutes.end(), earlier);
  if (repeats == Repeats::first)
    minutes.erase(std::unique(minutes.begin(), minutes.end(),
                              [](const LoggedMinute& a, const LoggedMinute& b) { return a.minute == b.minute; }),
                  minutes.end());
  return history;
}

const LoggedMinute* MinuteHistory::near(long long minute, int tolerance) const {
  const auto after = std::lower_bound(minutes_.begin(), minutes_.end(), minute, before);
  const LoggedMinute* best = nullptr;
  if (after != minutes_.end()) best = &*after;
  if (after != minutes_.begin()) {
    const LoggedMinute* previous = &*std::prev(after);
    if (best == nullptr || minute - previous->minute <= best->minute - minute) best = previous;
  }
  if (best == nullptr || std::llabs(best->minute - minute) > tolerance) return nullptr;
  return best;
}

const LoggedMinute* MinuteHistory::latestUpTo(long long minute) const {
  const auto after = std::lower_bound(minutes_.begin(), minutes_.end(), minute + 1, before);
  return after == minutes_.begin() ? nullptr : &*std::prev(after);
}

std::span<const LoggedMinute> MinuteHistory::between(long long from, long long to) const {
  const auto first = std::lower_bound(minutes_.begin(), minutes_.end(), from, before);
  const auto last = std::lower_bound(first, minutes_.end(), std::max(from, to), before);
  return {first, last};
}

std::optional<LoggedExtreme> highest(std::span<const LoggedMinute> minutes, LoggedField field) {
  return extremeOf(minutes, field, [](double a, double b) { return a > b; });
}

std::optional<LoggedExtreme> lowest(std::span<const LoggedMinute> minutes, LoggedField field) {
  return extremeOf(minutes, field, [](double a, double b) { return a < b; });
}

double rainOf(std::span<const LoggedMinute> minutes) {
  double sum = 0;
  for (const LoggedMinute& m : minutes) sum += m.rain;
  return sum;
}

}  // namespace nimbrel
