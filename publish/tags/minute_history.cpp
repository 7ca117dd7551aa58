#include "publish/tags/minute_history.h"

#include <algorithm>
#include <cstdlib>

#include <cmath>

#include "core/live_record.h"
#include "core/weather_utils.h"
#include "datafiles/log_fields.h"
#include "datafiles/monthly_log_reader.h"
#include "publish/tags/comfort_formulas.h"
#include "publish/tags/unit_conversion.h"

namespace nimbrel {
namespace {

constexpr long long kMinutesPerDay = 24 * 60;

// Days from 1970-01-01 of a civil date (the proleptic Gregorian calendar).
long long daysFromCivil(int year, int month, int day) {
  const long long y = month <= 2 ? year - 1 : year;
  const long long era = (y >= 0 ? y : y - 399) / 400;
  const long long yearOfEra = y - era * 400;
  const long long dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
  const long long dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * 146097 + dayOfEra - 719468;
}

LoggedMinute fromLine(const MonthlyLogLine& line, const LogReading& reading) {
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
  m.windchill = TWeatherUtils::WindChill((reading.chillFromGust ? m.gust : m.wind) * kKmhPerKnot, m.temperature);
  m.apparent = apparentTemperature(m.temperature, m.humidity, m.wind);
  m.humidex = humidex(m.temperature, m.dewpoint);
  return m;
}

template <class Better>
std::optional<LoggedExtreme> extremeOf(std::span<const LoggedMinute> minutes, LoggedField field, Better better) {
  std::optional<LoggedExtreme> top;
  for (const LoggedMinute& m : minutes)
    if (!top || better(m.*field, top->value)) top = LoggedExtreme{m.*field, &m};
  return top;
}

}  // namespace

// Apparent temperature of the Australian Bureau of Meteorology's shade form:
// AT = T + 0.33 e - 0.70 v - 4.00, e the water vapour pressure in hPa, v the
// wind in m/s.
double apparentTemperature(double celsius, double humidity, double windKnots) {
  const double vapour = humidity / 100.0 * 6.105 * std::exp(17.27 * celsius / (237.7 + celsius));
  return celsius + 0.33 * vapour - 0.70 * windKnots * kMetresPerSecondPerKnot - 4.00;
}

long long civilMinute(int year, int month, int day, int hour, int minute) {
  return daysFromCivil(year, month, day) * kMinutesPerDay + hour * 60LL + minute;
}

LocalTime civilTime(long long minute) {
  long long days = minute / kMinutesPerDay;
  long long rest = minute % kMinutesPerDay;
  if (rest < 0) {
    rest += kMinutesPerDay;
    --days;
  }
  // The inverse of daysFromCivil.
  const long long z = days + 719468;
  const long long era = (z >= 0 ? z : z - 146096) / 146097;
  const long long dayOfEra = z - era * 146097;
  const long long yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const long long dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const long long mp = (5 * dayOfYear + 2) / 153;
  LocalTime t;
  t.day = static_cast<int>(dayOfYear - (153 * mp + 2) / 5 + 1);
  t.month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  t.year = static_cast<int>(yearOfEra + era * 400 + (t.month <= 2 ? 1 : 0));
  t.hour = static_cast<int>(rest / 60);
  t.minute = static_cast<int>(rest % 60);
  t.weekday = static_cast<int>(((days + 4) % 7 + 7) % 7);  // 1 January 1970 was a Thursday
  t.yearday = static_cast<int>(days - daysFromCivil(t.year, 1, 1));
  return t;
}

MinuteHistory MinuteHistory::read(const std::filesystem::path& folder, std::span<const LogMonth> months,
                                  const LogReading& reading) {
  MinuteHistory history;
  for (const LogMonth& month : months) {
    const auto log = readMonthlyLog(folder / (monthStem(month) + "lg.txt"));
    if (!log) continue;
    for (const MonthlyLogLine& line : log->lines()) history.minutes_.push_back(fromLine(line, reading));
  }
  auto& minutes = history.minutes_;
  std::stable_sort(minutes.begin(), minutes.end(),
                   [](const LoggedMinute& a, const LoggedMinute& b) { return a.minute < b.minute; });
  minutes.erase(std::unique(minutes.begin(), minutes.end(),
                            [](const LoggedMinute& a, const LoggedMinute& b) { return a.minute == b.minute; }),
                minutes.end());
  return history;
}

const LoggedMinute* MinuteHistory::near(long long minute, int tolerance) const {
  const auto after = std::lower_bound(minutes_.begin(), minutes_.end(), minute,
                                      [](const LoggedMinute& m, long long value) { return m.minute < value; });
  const LoggedMinute* best = nullptr;
  if (after != minutes_.end()) best = &*after;
  if (after != minutes_.begin()) {
    const LoggedMinute* before = &*std::prev(after);
    if (best == nullptr || minute - before->minute <= best->minute - minute) best = before;
  }
  if (best == nullptr || std::llabs(best->minute - minute) > tolerance) return nullptr;
  return best;
}

std::span<const LoggedMinute> MinuteHistory::between(long long from, long long to) const {
  auto byMinute = [](const LoggedMinute& m, long long value) { return m.minute < value; };
  const auto first = std::lower_bound(minutes_.begin(), minutes_.end(), from, byMinute);
  const auto last = std::lower_bound(first, minutes_.end(), std::max(from, to), byMinute);
  return {first, last};
}

std::optional<LoggedExtreme> highest(std::span<const LoggedMinute> minutes, LoggedField field) {
  return extremeOf(minutes, field, [](double a, double b) { return a > b; });
}

std::optional<LoggedExtreme> lowest(std::span<const LoggedMinute> minutes, LoggedField field) {
  return extremeOf(minutes, field, [](double a, double b) { return a < b; });
}

std::vector<LogMonth> logMonthsCovering(long long from, long long to, bool nineAmDay) {
  auto monthOf = [&](long long minute) {
    const LocalTime t = civilTime(minute);
    ReadingTime r;
    r.year = static_cast<std::uint16_t>(t.year);
    r.month = static_cast<std::uint16_t>(t.month);
    r.day = static_cast<std::uint16_t>(t.day);
    r.hour = static_cast<std::uint16_t>(t.hour);
    return logMonth(r, nineAmDay);
  };
  std::vector<LogMonth> months;
  LogMonth month = monthOf(from);
  const LogMonth last = monthOf(std::max(from, to - 1));
  while (true) {
    months.push_back(month);
    if (month == last || months.size() > 24) break;
    month = month.month == 12 ? LogMonth{1, month.year + 1} : LogMonth{month.month + 1, month.year};
  }
  return months;
}

}  // namespace nimbrel
