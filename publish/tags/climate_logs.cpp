#include "publish/tags/climate_logs.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <numbers>
#include <sstream>
#include <string>
#include <utility>

#include "core/live_record.h"
#include "datafiles/log_files.h"
#include "datafiles/monthly_log_reader.h"

namespace nimbrel {
namespace {

constexpr int kMinutesPerDay = 1440;

double fromLogTemperature(double value, UnitSystem units) {
  return units == UnitSystem::usa
             ? (value - writer_units::kFahrenheitOffset) / writer_units::kFahrenheitPerCelsius
             : value;
}
double fromLogWind(double value, UnitSystem units) {
  return units == UnitSystem::usa ? value / writer_units::kMphPerKnot : value;
}
double fromLogPressure(double value, UnitSystem units) {
  return units == UnitSystem::usa ? value / writer_units::kInchesHgPerHPa : value;
}
double fromLogRain(double value, UnitSystem units) {
  return units == UnitSystem::usa ? value / writer_units::kInchesPerMm : value;
}

}  // namespace

// Days from 1970-01-01 of a Gregorian date (the well-known era arithmetic:
// years from March, 400-year eras of 146097 days).
int dayNumber(int year, int month, int day) {
  year -= month <= 2 ? 1 : 0;
  const int era = (year >= 0 ? year : year - 399) / 400;
  const int yearOfEra = year - era * 400;
  const int dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  const int dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * 146097 + dayOfEra - 719468;
}

CivilDate civilDate(int number) {
  number += 719468;
  const int era = (number >= 0 ? number : number - 146096) / 146097;
  const int dayOfEra = number - era * 146097;
  const int yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const int dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const int shifted = (5 * dayOfYear + 2) / 153;
  const int day = dayOfYear - (153 * shifted + 2) / 5 + 1;
  const int month = shifted < 10 ? shifted + 3 : shifted - 9;
  return {yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month, day};
}

int daysInMonth(int year, int month) {
  const int next = month == 12 ? dayNumber(year + 1, 1, 1) : dayNumber(year, month + 1, 1);
  return next - dayNumber(year, month, 1);
}

void Span::add(double value) {
  if (count == 0) {
    high = low = value;
  } else {
    high = std::max(high, value);
    low = std::min(low, value);
  }
  sum += value;
  ++count;
}

void Span::merge(const Span& other) {
  if (other.count == 0) return;
  if (count == 0) {
    *this = other;
    return;
  }
  high = std::max(high, other.high);
  low = std::min(low, other.low);
  sum += other.sum;
  count += other.count;
}

std::optional<double> Span::mean() const {
  if (count == 0) return std::nullopt;
  return sum / count;
}
std::optional<double> Span::highest() const {
  if (count == 0) return std::nullopt;
  return high;
}
std::optional<double> Span::lowest() const {
  if (count == 0) return std::nullopt;
  return low;
}

void Tally::add(const ClimateLine& line) {
  const int day = line.day();
  temp.add(line.temp);
  hum.add(line.hum);
  dew.add(line.dew);
  if (baro.count == 0 || line.baro > baro.high) baroHighDay = day;
  if (baro.count == 0 || line.baro < baro.low) baroLowDay = day;
  baro.add(line.baro);
  wind.add(line.wind);
  if (gust.count == 0 || line.gust > gust.high) {
    gustHighDir = line.dir;
    gustHighDay = day;
  }
  gust.add(line.gust);
  const double radians = line.dir * std::numbers::pi / 180.0;
  dirX += line.wind * std::sin(radians);
  dirY += line.wind * std::cos(radians);
  rainMinutes += line.rainMinute;
  if (line.rainMinute > 0) ++minutesWithRain;
  if (line.temp < 0) ++frostMinutes;
  windRunNm += line.wind / 60.0;
}

void Tally::merge(const Tally& other) {
  if (other.gust.count > 0 && (gust.count == 0 || other.gust.high > gust.high)) {
    gustHighDir = other.gustHighDir;
    gustHighDay = other.gustHighDay;
  }
  if (other.baro.count > 0 && (baro.count == 0 || other.baro.high > baro.high)) baroHighDay = other.baroHighDay;
  if (other.baro.count > 0 && (baro.count == 0 || other.baro.low < baro.low)) baroLowDay = other.baroLowDay;
  temp.merge(other.temp);
  hum.merge(other.hum);
  dew.merge(other.dew);
  baro.merge(other.baro);
  wind.merge(other.wind);
  gust.merge(other.gust);
  dirX += other.dirX;
  dirY += other.dirY;
  rainMinutes += other.rainMinutes;
  minutesWithRain += other.minutesWithRain;
  frostMinutes += other.frostMinutes;
  windRunNm += other.windRunNm;
}

std::optional<double> Tally::direction() const {
  if (std::hypot(dirX, dirY) < 1e-9) return std::nullopt;
  double degrees = std::atan2(dirX, dirY) * 180.0 / std::numbers::pi;
  if (degrees < 0) degrees += 360.0;
  degrees = std::round(degrees);
  return degrees >= 360.0 ? 0.0 : degrees;
}

ClimateLogs::ClimateLogs(std::filesystem::path folder, UnitSystem logUnits, bool nineAmDay, const LocalTime& now)
    : folder_(std::move(folder)),
      units_(logUnits),
      nineAmDay_(nineAmDay),
      today_(dayNumber(now.year, now.month, now.day)),
      nowKey_(static_cast<std::int64_t>(today_) * kMinutesPerDay + now.hour * 60 + now.minute) {}

void ClimateLogs::loadMonth(int year, int month) {
  if (!loaded_.insert(year * 12 + month - 1).second) return;
  const auto text = readMonthlyLog(folder_ / (monthStem({month, year}) + "lg.txt"));
  if (!text) return;
  const std::int64_t recentFrom = nowKey_ - static_cast<std::int64_t>(kRecentDays) * kMinutesPerDay;
  double previousDailyRain = 0;  // a file starts just after a reset of the day's rain
  for (const auto& line : text->lines()) {
    const int day = dayNumber(static_cast<int>(line.number(LogColumn::year)),
                              static_cast<int>(line.number(LogColumn::month)),
                              static_cast<int>(line.number(LogColumn::day)));
    ClimateLine minute;
    minute.key = static_cast<std::int64_t>(day) * kMinutesPerDay +
                 static_cast<int>(line.number(LogColumn::hour)) * 60 + static_cast<int>(line.number(LogColumn::minute));
    if (minute.key > nowKey_) continue;  // a clock set back leaves lines "in the future"
    minute.temp = static_cast<float>(fromLogTemperature(line.number(LogColumn::temperature), units_));
    minute.hum = static_cast<float>(line.number(LogColumn::humidity));
    minute.dew = static_cast<float>(fromLogTemperature(line.number(LogColumn::dewpoint), units_));
    minute.baro = static_cast<float>(fromLogPressure(line.number(LogColumn::barometer), units_));
    minute.wind = static_cast<float>(fromLogWind(line.number(LogColumn::windspeed), units_));
    minute.gust = static_cast<float>(fromLogWind(line.number(LogColumn::gustspeed), units_));
    minute.dir = static_cast<std::uint16_t>(std::clamp(line.number(LogColumn::direction), 0.0, 359.0));
    minute.rainMinute = static_cast<float>(std::max(0.0, fromLogRain(line.number(LogColumn::rainlastmin), units_)));
    const double dailyRain = fromLogRain(line.number(LogColumn::dailyrain), units_);

    DayFigures& figures = days_[day];
    figures.day = day;
    figures.tally.add(minute);
    // A fall of the day's total is its reset: what it shows now fell since.
    figures.rain += dailyRain >= previousDailyRain ? dailyRain - previousDailyRain : dailyRain;
    previousDailyRain = dailyRain;
    figures.monthRainEnd = fromLogRain(line.number(LogColumn::monthlyrain), units_);
    figures.yearRainEnd = fromLogRain(line.number(LogColumn::yearlyrain), units_);

    if (minute.key >= recentFrom) {
      recent_.push_back(minute);
      recentSorted_ = false;
    }
  }
}

void ClimateLogs::loadRange(int firstDay) {
  CivilDate from = civilDate(firstDay);
  const CivilDate to = civilDate(today_);
  // With the 9 am weather day the first hours of a month lie in the file before.
  if (nineAmDay_ && from.day == 1) from = civilDate(firstDay - 1);
  for (int index = from.year * 12 + from.month - 1; index <= to.year * 12 + to.month - 1; ++index)
    loadMonth(index / 12, index % 12 + 1);
}

std::vector<const DayFigures*> ClimateLogs::days(int firstDay) {
  loadRange(firstDay);
  std::vector<const DayFigures*> result;
  for (auto it = days_.lower_bound(firstDay); it != days_.end() && it->first <= today_; ++it)
    result.push_back(&it->second);
  return result;
}

const DayFigures* ClimateLogs::dayAt(int day) {
  if (day > today_) return nullptr;
  const CivilDate date = civilDate(day);
  loadMonth(date.year, date.month);
  if (nineAmDay_) {
    // The day's first or last hours may lie in a neighbouring month's file.
    const CivilDate before = civilDate(day - 1);
    const CivilDate after = civilDate(std::min(day + 1, today_));
    loadMonth(before.year, before.month);
    loadMonth(after.year, after.month);
  }
  const auto it = days_.find(day);
  return it == days_.end() ? nullptr : &it->second;
}

std::vector<ClimateLine> ClimateLogs::minutesSince(std::int64_t firstKey) {
  firstKey = std::max(firstKey, nowKey_ - static_cast<std::int64_t>(kRecentDays) * kMinutesPerDay);
  loadRange(static_cast<int>(firstKey / kMinutesPerDay));
  if (!recentSorted_) {
    std::stable_sort(recent_.begin(), recent_.end(),
                     [](const ClimateLine& a, const ClimateLine& b) { return a.key < b.key; });
    recentSorted_ = true;
  }
  const auto first = std::lower_bound(recent_.begin(), recent_.end(), firstKey,
                                      [](const ClimateLine& line, std::int64_t key) { return line.key < key; });
  return {first, recent_.end()};
}

// A sun-log line is "day month year hour minute sunshine ET"; anything else
// (the header, a damaged line) is passed over.
void ClimateLogs::loadSunMonth(int year, int month) {
  if (!sunLoaded_.insert(year * 12 + month - 1).second) return;
  std::ifstream in(folder_ / (monthStem({month, year}) + "lgsun.txt"), std::ios::binary);
  std::string line;
  while (std::getline(in, line)) {
    std::istringstream fields(line);
    int day = 0, lineMonth = 0, lineYear = 0, hour = 0, minute = 0;
    double sunshine = 0, et = 0;
    if (!(fields >> day >> lineMonth >> lineYear >> hour >> minute >> sunshine >> et)) continue;
    if (lineMonth < 1 || lineMonth > 12 || day < 1 || day > daysInMonth(lineYear, lineMonth)) continue;
    const int number = dayNumber(lineYear, lineMonth, day);
    if (static_cast<std::int64_t>(number) * kMinutesPerDay + hour * 60 + minute > nowKey_) continue;
    const double mm = fromLogRain(et, units_);
    auto [it, added] = evapotranspiration_.try_emplace(number, mm);
    if (!added) it->second = std::max(it->second, mm);
  }
}

std::map<int, double> ClimateLogs::evapotranspiration(int firstDay) {
  CivilDate from = civilDate(firstDay);
  const CivilDate to = civilDate(today_);
  if (nineAmDay_ && from.day == 1) from = civilDate(firstDay - 1);
  for (int index = from.year * 12 + from.month - 1; index <= to.year * 12 + to.month - 1; ++index)
    loadSunMonth(index / 12, index % 12 + 1);
  return {evapotranspiration_.lower_bound(firstDay), evapotranspiration_.upper_bound(today_)};
}

Tally ClimateLogs::tallySince(std::int64_t firstKey) {
  Tally tally;
  for (const auto& line : minutesSince(firstKey)) tally.add(line);
  return tally;
}

}  // namespace nimbrel
