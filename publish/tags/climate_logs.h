#pragma once
// The monthly logs read back for the climate tags: averages over past hours
// and days, month- and year-to-date figures, counts of days. One fill reads
// each month's log at most once, and only the months a tag of that fill
// asks for, because a month of minute lines is some 44,000 lines.
//
// Two views are kept of what was read:
//   - one `DayFigures` per calendar date (a date whose lines lie in two
//     files, as with the 9 am weather day, is merged);
//   - the minute lines of the last eight days, for the averages over the
//     last minutes, hours and week.
// Values are in the internal units (°C, knots, hPa, mm), converted from the
// unit system the logs are written in.

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "core/clock.h"
#include "core/unit_choices.h"

namespace nimbrel {

// Consecutive day numbers of the proleptic Gregorian calendar (1970-01-01 is 0).
int dayNumber(int year, int month, int day);
struct CivilDate {
  int year = 0;
  int month = 0;
  int day = 0;
};
CivilDate civilDate(int dayNumber);
int daysInMonth(int year, int month);

// One line of a monthly log in internal units.
struct ClimateLine {
  std::int64_t key = 0;  // dayNumber * 1440 + minute of the day
  float temp = 0;
  float hum = 0;
  float dew = 0;
  float baro = 0;
  float wind = 0;
  float gust = 0;
  float rainMinute = 0;
  std::uint16_t dir = 0;

  int day() const { return static_cast<int>(key / 1440); }
};

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

  void add(const ClimateLine& line);
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

class ClimateLogs {
 public:
  ClimateLogs(std::filesystem::path folder, UnitSystem logUnits, bool nineAmDay, const LocalTime& now);

  // The days from `firstDay` to today (day numbers), read from the logs
  // of those months; dates without lines are absent.
  std::vector<const DayFigures*> days(int firstDay);
  const DayFigures* dayAt(int day);
  // The minute lines from `firstKey` (dayNumber * 1440 + minute) to now;
  // only the last eight days are kept.
  std::vector<ClimateLine> minutesSince(std::int64_t firstKey);
  Tally tallySince(std::int64_t firstKey);

  // Evapotranspiration of each day from `firstDay` to today, from the sun
  // logs (month + year + "lgsun.txt"): the highest of the day's running
  // totals. Dates without lines are absent.
  std::map<int, double> evapotranspiration(int firstDay);

  int today() const { return today_; }
  std::int64_t nowKey() const { return nowKey_; }
  static constexpr int kRecentDays = 8;

 private:
  void loadMonth(int year, int month);
  void loadRange(int firstDay);

  std::filesystem::path folder_;
  UnitSystem units_;
  bool nineAmDay_;
  int today_;
  std::int64_t nowKey_;
  void loadSunMonth(int year, int month);

  std::set<int> loaded_;  // year * 12 + month - 1 of every file read (or found missing)
  std::set<int> sunLoaded_;
  std::map<int, double> evapotranspiration_;
  std::map<int, DayFigures> days_;
  std::vector<ClimateLine> recent_;
  bool recentSorted_ = true;
};

}  // namespace nimbrel
