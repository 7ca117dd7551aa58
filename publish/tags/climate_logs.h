#pragma once
// The monthly logs' minutes summed up for the climate tags: averages over
// past hours and days, month- and year-to-date figures, counts of days. The
// minutes come from the fill's LogMinutes (log_minutes.h), only the months
// a tag of that fill asks for.
//
// Two views are kept of what was read:
//   - one `DayFigures` per calendar date (a date whose lines lie in two
//     files, as with the 9 am weather day, is merged);
//   - the minutes of the last eight days, for the averages over the last
//     minutes, hours and week.
// Values are in the internal units (°C, knots, hPa, mm).

#include <cstdint>
#include <filesystem>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <span>
#include <vector>

#include "core/clock.h"
#include "publish/tags/civil_calendar.h"
#include "publish/tags/log_minutes.h"

namespace nimbrel {

// Minute values enter the climate figures in single precision, all that a
// log line's one or two decimals carry; the day means and degree days round
// on it.
inline double singlePrecision(double value) { return static_cast<float>(value); }

// Highest, lowest, sum and count of one quantity.
struct Span {
  double sum = 0;
  double high = 0;
  double low = 0;
  int count = 0;

  void add(double value);
  void merge(const Span& other);
  std::optional<double> mean() const;
  std::optional<double> highest() const;
  std::optional<double> lowest() const;
};

// The figures of a stretch of minute lines: one day, or several merged.
struct Tally {
  Span temp, hum, dew, baro, wind, gust;
  double dirX = 0;  // wind-weighted unit vectors of the direction, for its average
  double dirY = 0;
  int gustHighDir = 0;     // direction at the highest gust
  int gustHighDay = 0;     // its day number
  int baroHighDay = 0;     // day numbers of the highest and lowest pressure
  int baroLowDay = 0;
  double rainMinutes = 0;  // sum of the rain-last-minute column
  int minutesWithRain = 0;
  int frostMinutes = 0;    // minutes below 0 °C
  double windRunNm = 0;    // the mean wind of each minute for one minute, nautical miles

  void add(const LoggedMinute& minute);
  void merge(const Tally& other);
  // The average direction in degrees 0-359; nothing in calm or without lines.
  std::optional<double> direction() const;
};

struct DayFigures {
  int day = 0;  // day number
  Tally tally;
  double rain = 0;          // the day's rain: the rises of the daily-rain column
  double monthRainEnd = 0;  // the month and year columns at the day's last line
  double yearRainEnd = 0;
};

// The day figures of one month's log, kept across fills (TagMemory) while
// the log does not change, and carried on over the lines appended to it.
struct ClimateMonth {
  LogMinutes::Version version;
  std::size_t processed = 0;       // lines of the log summed up
  double previousDailyRain = 0;    // the daily-rain column of the last line summed
  std::int64_t latest = std::numeric_limits<std::int64_t>::min();  // the latest minute summed
  bool passedLater = false;        // lines after `nowKey` were left out
  std::int64_t nowKey = 0;
  std::map<int, DayFigures> days;
};

// The evapotranspiration of each day of one month's sun log (the highest of
// the day's running totals, in mm), kept across fills and carried on over
// the lines appended to the log; read again when it was replaced.
struct SunMonth {
  std::uintmax_t size = 0;
  std::filesystem::file_time_type written{};
  std::uintmax_t consumed = 0;  // bytes up to the last whole line read
  std::string head;             // the first bytes, to tell an append from a rewrite
  std::map<int, double> days;   // day number: mm
  std::int64_t latest = std::numeric_limits<std::int64_t>::min();  // the latest line's minute
};

class ClimateLogs {
 public:
  // `logs` and `months` are the memory's (TagMemory) and outlive this.
  ClimateLogs(LogMinutes& logs, std::map<int, ClimateMonth>& months, std::map<int, SunMonth>& sunMonths,
              bool nineAmDay, const LocalTime& now);

  // The days from `firstDay` to today (day numbers), summed from the logs
  // of those months; dates without lines are absent.
  std::vector<const DayFigures*> days(int firstDay);
  const DayFigures* dayAt(int day);
  // The minutes from `firstKey` (a civil minute) to now; only the last
  // eight days are kept.
  std::span<const LoggedMinute> minutesSince(std::int64_t firstKey);
  Tally tallySince(std::int64_t firstKey);

  // Evapotranspiration of each day from `firstDay` to today, from the sun
  // logs (month + year + "lgsun.txt"): the highest of the day's running
  // totals. Dates without lines are absent.
  std::map<int, double> evapotranspiration(int firstDay);

  int today() const { return today_; }
  std::int64_t nowKey() const { return nowKey_; }
  static constexpr int kRecentDays = 8;

 private:
  // The calendar months from `firstDay` to today; with the 9 am weather day
  // the first hours of a month lie in the file before.
  std::vector<LogMonth> monthsFrom(int firstDay) const;
  void summarise(const LogMonth& month);
  void loadRange(int firstDay);
  void loadSunMonth(const LogMonth& month);

  LogMinutes* logs_;
  std::map<int, ClimateMonth>* months_;
  std::map<int, SunMonth>* sunMonths_;
  bool nineAmDay_;
  int today_;
  std::int64_t nowKey_;

  std::set<int> summarised_;  // year * 12 + month - 1 of every month summed up
  std::set<int> sunLoaded_;
  std::map<int, double> evapotranspiration_;
  std::map<int, DayFigures> days_;
  std::optional<MinuteHistory> recent_;
  std::map<std::int64_t, Tally> tallies_;  // by first minute: several tags sum up the same stretch
  int recentFirstMonth_ = 0;  // year * 12 + month - 1 of the first month in recent_
};

}  // namespace nimbrel
