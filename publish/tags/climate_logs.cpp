#include "publish/tags/climate_logs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <numbers>
#include <sstream>
#include <string>
#include <utility>

#include "core/live_record.h"
#include "datafiles/log_files.h"

namespace nimbrel {

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

namespace {

// Sine and cosine of each whole degree, worked out once: a tally of many
// minutes takes both for every minute.
struct DegreeTable {
  std::array<double, 360> sin{};
  std::array<double, 360> cos{};
  DegreeTable() {
    for (int dir = 0; dir < 360; ++dir) {
      const double radians = dir * std::numbers::pi / 180.0;
      sin[static_cast<std::size_t>(dir)] = std::sin(radians);
      cos[static_cast<std::size_t>(dir)] = std::cos(radians);
    }
  }
};

const DegreeTable& degrees() {
  static const DegreeTable table;
  return table;
}

}  // namespace

// Directions are taken in whole degrees 0-359 and rain of a minute as no
// less than none.
void Tally::add(const LoggedMinute& m) {
  const int day = static_cast<int>(m.minute / kMinutesPerDay);
  const int dir = static_cast<int>(std::clamp(m.direction(), 0.0, 359.0));
  const double rain = singlePrecision(std::max(0.0, m.rain()));
  const double temperature = singlePrecision(m.temperature());
  const double barometer = singlePrecision(m.barometer());
  const double windSpeed = singlePrecision(m.wind());
  const double gustSpeed = singlePrecision(m.gust());
  temp.add(temperature);
  hum.add(singlePrecision(m.humidity()));
  dew.add(singlePrecision(m.dewpoint()));
  if (baro.count == 0 || barometer > baro.high) baroHighDay = day;
  if (baro.count == 0 || barometer < baro.low) baroLowDay = day;
  baro.add(barometer);
  wind.add(windSpeed);
  if (gust.count == 0 || gustSpeed > gust.high) {
    gustHighDir = dir;
    gustHighDay = day;
  }
  gust.add(gustSpeed);
  dirX += windSpeed * degrees().sin[static_cast<std::size_t>(dir)];
  dirY += windSpeed * degrees().cos[static_cast<std::size_t>(dir)];
  rainMinutes += rain;
  if (rain > 0) ++minutesWithRain;
  if (temperature < 0) ++frostMinutes;
  windRunNm += windSpeed / 60.0;
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

ClimateLogs::ClimateLogs(LogMinutes& logs, std::map<int, ClimateMonth>& months, std::map<int, SunMonth>& sunMonths,
                         bool nineAmDay, const LocalTime& now)
    : logs_(&logs),
      months_(&months),
      sunMonths_(&sunMonths),
      nineAmDay_(nineAmDay),
      today_(dayNumber(now.year, now.month, now.day)),
      nowKey_(civilMinute(now)) {}

std::vector<LogMonth> ClimateLogs::monthsFrom(int firstDay) const {
  CivilDate from = civilDate(firstDay);
  const CivilDate to = civilDate(today_);
  if (nineAmDay_ && from.day == 1) from = civilDate(firstDay - 1);
  std::vector<LogMonth> months;
  for (int index = from.year * 12 + from.month - 1; index <= to.year * 12 + to.month - 1; ++index)
    months.push_back({index % 12 + 1, index / 12});
  return months;
}

namespace {

constexpr std::size_t kClimateMonthsKept = 30;

// Sums up the lines of `minutes` from `summary.processed` on.
void sumUp(ClimateMonth& summary, const std::vector<LoggedMinute>& minutes, std::int64_t nowKey) {
  for (std::size_t i = summary.processed; i < minutes.size(); ++i) {
    const LoggedMinute& minute = minutes[i];
    if (minute.minute > nowKey) {  // a clock set back leaves lines "in the future"
      summary.passedLater = true;
      continue;
    }
    summary.latest = std::max<std::int64_t>(summary.latest, minute.minute);
    const int day = static_cast<int>(minute.minute / kMinutesPerDay);
    DayFigures& figures = summary.days[day];
    figures.day = day;
    figures.tally.add(minute);
    // A fall of the day's total is its reset: what it shows now fell since.
    figures.rain += minute.dailyRain() >= summary.previousDailyRain ? minute.dailyRain() - summary.previousDailyRain
                                                                  : minute.dailyRain();
    summary.previousDailyRain = minute.dailyRain();
    figures.monthRainEnd = minute.monthRain();
    figures.yearRainEnd = minute.yearRain();
  }
  summary.processed = minutes.size();
}

}  // namespace

void ClimateLogs::summarise(const LogMonth& month) {
  const int key = month.year * 12 + month.month - 1;
  if (!summarised_.insert(key).second) return;
  const LogMinutes::Version version = logs_->version(month);
  ClimateMonth& summary = (*months_)[key];
  // A summary still holds when the log only grew and the moment of the fill
  // leaves out the same lines; otherwise the month is summed up again.
  const bool holds = summary.version.generation == version.generation && summary.latest <= nowKey_ &&
                     !(summary.passedLater && summary.nowKey != nowKey_);
  if (!holds) summary = ClimateMonth{};
  if (!holds || !(summary.version == version)) {
    sumUp(summary, logs_->month(month), nowKey_);
    summary.version = version;
    summary.nowKey = nowKey_;
  }
  for (const auto& [day, figures] : summary.days) {
    const auto [it, added] = days_.try_emplace(day, figures);
    if (added) continue;
    // A date whose lines lie in two files (the 9 am weather day).
    it->second.tally.merge(figures.tally);
    it->second.rain += figures.rain;
    it->second.monthRainEnd = figures.monthRainEnd;
    it->second.yearRainEnd = figures.yearRainEnd;
  }
  while (months_->size() > kClimateMonthsKept) months_->erase(months_->begin());
}

void ClimateLogs::loadRange(int firstDay) {
  for (const LogMonth& month : monthsFrom(firstDay)) summarise(month);
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
  summarise({date.month, date.year});
  if (nineAmDay_) {
    // The day's first or last hours may lie in a neighbouring month's file.
    const CivilDate before = civilDate(day - 1);
    const CivilDate after = civilDate(std::min(day + 1, today_));
    summarise({before.month, before.year});
    summarise({after.month, after.year});
  }
  const auto it = days_.find(day);
  return it == days_.end() ? nullptr : &it->second;
}

std::span<const LoggedMinute> ClimateLogs::minutesSince(std::int64_t firstKey) {
  const std::int64_t recentFrom = nowKey_ - static_cast<std::int64_t>(kRecentDays) * kMinutesPerDay;
  firstKey = std::max(firstKey, recentFrom);
  const std::vector<LogMonth> months = monthsFrom(static_cast<int>(firstKey / kMinutesPerDay));
  const int first = months.front().year * 12 + months.front().month - 1;
  if (!recent_ || first < recentFirstMonth_) {
    recent_ = MinuteHistory::gather(*logs_, months, MinuteHistory::Repeats::all, recentFrom, nowKey_);
    recentFirstMonth_ = first;
  }
  return recent_->between(firstKey, nowKey_ + 1);
}

namespace {

// A sun-log line is "day month year hour minute sunshine ET"; anything else
// (the header, a damaged line) is passed over. Lines after `nowKey` (a clock
// set back) are left out, and counted in `latest`.
void readSunLines(const std::string& text, bool usa, std::int64_t nowKey, std::map<int, double>& days,
                  std::int64_t& latest) {
  std::istringstream in(text);
  std::string line;
  while (std::getline(in, line)) {
    std::istringstream fields(line);
    int day = 0, lineMonth = 0, lineYear = 0, hour = 0, minute = 0;
    double sunshine = 0, et = 0;
    if (!(fields >> day >> lineMonth >> lineYear >> hour >> minute >> sunshine >> et)) continue;
    if (lineMonth < 1 || lineMonth > 12 || day < 1 || day > daysInMonth(lineYear, lineMonth)) continue;
    const int number = dayNumber(lineYear, lineMonth, day);
    const std::int64_t key = static_cast<std::int64_t>(number) * kMinutesPerDay + hour * 60 + minute;
    latest = std::max(latest, key);
    if (key > nowKey) continue;
    const double mm = usa ? et / writer_units::kInchesPerMm : et;
    auto [it, added] = days.try_emplace(number, mm);
    if (!added) it->second = std::max(it->second, mm);
  }
}

std::optional<std::string> readFrom(const std::filesystem::path& file, std::uintmax_t offset) {
  std::ifstream in(file, std::ios::binary);
  if (!in) return std::nullopt;
  in.seekg(static_cast<std::streamoff>(offset));
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

}  // namespace

void ClimateLogs::loadSunMonth(const LogMonth& month) {
  if (!sunLoaded_.insert(month.year * 12 + month.month - 1).second) return;
  const std::filesystem::path file = monthFile(logs_->folder(), month, "lgsun.txt");
  const bool usa = logs_->reading().logUnits == UnitSystem::usa;
  SunMonth& sun = (*sunMonths_)[month.year * 12 + month.month - 1];
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(file, error);
  std::filesystem::file_time_type written{};
  if (!error) written = std::filesystem::last_write_time(file, error);
  if (error) {
    sun = SunMonth{};
    return;
  }
  if (size != sun.size || written != sun.written) {
    constexpr std::size_t kHead = 64;
    std::string head(kHead, '\0');
    {
      std::ifstream in(file, std::ios::binary);
      in.read(head.data(), kHead);
      head.resize(static_cast<std::size_t>(in.gcount()));
    }
    const bool appended = size > sun.size && head.compare(0, sun.head.size(), sun.head) == 0;
    if (!appended) sun = SunMonth{};
    if (const auto text = readFrom(file, sun.consumed)) {
      // Whole lines only: the last may still be being written.
      const std::size_t end = text->rfind('\n');
      if (end != std::string::npos) {
        readSunLines(text->substr(0, end + 1), usa, std::numeric_limits<std::int64_t>::max(), sun.days, sun.latest);
        sun.consumed += end + 1;
      }
    }
    sun.head = head;
    sun.size = size;
    sun.written = written;
  }
  if (sun.latest <= nowKey_) {
    for (const auto& [day, mm] : sun.days) {
      auto [it, added] = evapotranspiration_.try_emplace(day, mm);
      if (!added) it->second = std::max(it->second, mm);
    }
    return;
  }
  // Lines after the fill's moment: this fill reads the file for itself.
  if (const auto text = readFrom(file, 0)) {
    std::int64_t latest = 0;
    readSunLines(*text, usa, nowKey_, evapotranspiration_, latest);
  }
}

std::map<int, double> ClimateLogs::evapotranspiration(int firstDay) {
  for (const LogMonth& month : monthsFrom(firstDay)) loadSunMonth(month);
  return {evapotranspiration_.lower_bound(firstDay), evapotranspiration_.upper_bound(today_)};
}

Tally ClimateLogs::tallySince(std::int64_t firstKey) {
  if (const auto it = tallies_.find(firstKey); it != tallies_.end()) return it->second;
  Tally tally;
  for (const auto& line : minutesSince(firstKey)) tally.add(line);
  tallies_.emplace(firstKey, tally);
  return tally;
}

}  // namespace nimbrel
