// Averages, month- and year-to-date figures, climate counts.
//
// Everything about past hours and days comes from the monthly logs, read
// back once per fill through `TagCaches::climate` (climate_logs.h) and only
// for the months a tag asks for: the current month, the months of this year,
// the month before and one month of last year at most, except the heating
// season and streak counts, which look back up to twelve months.
//
// Choices where a name leaves its meaning open:
//   - A "day" is a calendar day of the log's lines. The plain counts of days
//     ("daysTmax>30C") judge today by today's extremes as the statistics
//     keep them and earlier days by their logged minutes; the "lg" forms
//     judge every day, today included, by the logged minutes alone.
//   - Degree days come from each day's (highest + lowest) / 2: heating and
//     cooling against 18.3 °C (65 °F), growing against 10 °C (50 °F). The
//     heating season runs from 1 July (1 January south of the equator), the
//     cooling season from 1 January (1 July in the south).
//   - A day with rain has more than 0.05 mm (any tip of the gauge).
//   - A week starts on Monday.
//   - Long-term averages (normals of a calendar month over many years, the
//     wettest and driest months on record) need years of data the program
//     neither keeps nor reads, and the settings hold no normals: "---".

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <optional>
#include <string>

#include <fmt/format.h>

#include "datafiles/log_fields.h"
#include "processing/rollover/reset_calendar.h"
#include "processing/statistics/compass_words.h"
#include "processing/statistics/daily_extremes_table.h"
#include "publish/tags/civil_calendar.h"
#include "publish/tags/climate_logs.h"
#include "publish/tags/tag_rows.h"
#include "publish/tags/tag_tables.h"

namespace nimbrel {

using namespace tagrows;

namespace {

constexpr std::int64_t kDay = kMinutesPerDay;
constexpr double kDegreeDayBase = 18.3;  // °C, 65 °F
constexpr double kGrowingBase = 10.0;    // °C, 50 °F
constexpr double kRainDay = 0.05;        // mm
constexpr double kGaleKnots = 34.0;
constexpr double kKnotsPerMetrePerSecond = 1.0 / 0.514444;
constexpr double kKmPerNauticalMile = 1.852;
constexpr double kMilesPerNauticalMile = 1.150779;


using SpanOf = Span Tally::*;

ClimateLogs& logs(const TagContext& c) {
  if (!c.caches.climate)
    c.caches.climate.emplace(logMinutes(c), c.memory.climateMonths, c.memory.sunMonths, c.units.resets.dayReset == DayResetTime::nineAm, c.now);
  return *c.caches.climate;
}

int today(const TagContext& c) { return dayNumber(c.now.year, c.now.month, c.now.day); }
std::int64_t nowKey(const TagContext& c) { return civilMinute(c.now); }
int monthStart(const TagContext& c) { return dayNumber(c.now.year, c.now.month, 1); }
int yearStart(const TagContext& c) { return dayNumber(c.now.year, 1, 1); }

// The same day of the month in the month `monthsBack` before (clamped to its length).
int sameDayMonthsBack(const TagContext& c, int monthsBack) {
  const CivilDate d = monthsBefore({c.now.year, c.now.month, c.now.day}, monthsBack);
  return dayNumber(d.year, d.month, d.day);
}

// The last time the clock showed `hour`:00, as a minute key.
std::int64_t lastHourKey(const TagContext& c, int hour) { return lastTimeAtHour(nowKey(c), hour); }

// Start of the day as the daily reset hour counts it.
std::int64_t resetKey(const TagContext& c) { return lastHourKey(c, dailyResetHourOf(c.units.resets)); }

Tally tallyOfDays(const TagContext& c, int firstDay) {
  Tally tally;
  for (const DayFigures* day : logs(c).days(firstDay)) tally.merge(day->tally);
  return tally;
}

TagValue mean(const Span& span) { return span.mean(); }

// Today's highest and lowest temperature as the statistics keep them.
std::optional<std::pair<double, double>> todaysTemperatures(const TagContext& c) {
  if (!c.readingsSeen) return std::nullopt;
  const double high = c.stats.extremes().high(Quantity::Temperature);
  const double low = c.stats.extremes().low(Quantity::Temperature);
  if (high <= kHighSentinel || low >= kLowSentinel) return std::nullopt;
  return std::pair{high, low};
}

// Each day's highest and lowest temperature from `firstDay` to today; with
// `logOnly` false today's come from today's extremes when there are any.
std::vector<std::pair<double, double>> dailyTemperatures(const TagContext& c, int firstDay, bool logOnly) {
  std::vector<std::pair<double, double>> result;
  const auto live = logOnly ? std::nullopt : todaysTemperatures(c);
  for (const DayFigures* day : logs(c).days(firstDay)) {
    if (day->day == today(c) && live) continue;
    if (day->tally.temp.count > 0) result.emplace_back(day->tally.temp.high, day->tally.temp.low);
  }
  if (live && firstDay <= today(c)) result.push_back(*live);
  return result;
}

TagValue countDays(const TagContext& c, int firstDay, bool logOnly, const std::function<bool(double, double)>& test) {
  const auto days = dailyTemperatures(c, firstDay, logOnly);
  return static_cast<double>(std::count_if(days.begin(), days.end(), [&](const auto& d) { return test(d.first, d.second); }));
}

double heating(double mean) { return std::max(0.0, kDegreeDayBase - mean); }
double cooling(double mean) { return std::max(0.0, mean - kDegreeDayBase); }
double growing(double mean) { return std::max(0.0, mean - kGrowingBase); }
double effective(double mean) { return std::max(0.0, mean - 5.0); }

TagValue degreeDays(const TagContext& c, int firstDay, double (*rule)(double)) {
  const auto days = dailyTemperatures(c, firstDay, false);
  if (days.empty()) return noData();
  double sum = 0;
  for (const auto& [high, low] : days) sum += rule((high + low) / 2);
  return sum;
}

TagValue degreeDaysPerDay(const TagContext& c, double (*rule)(double)) {
  const auto days = dailyTemperatures(c, monthStart(c), false);
  if (days.empty()) return noData();
  double sum = 0;
  for (const auto& [high, low] : days) sum += rule((high + low) / 2);
  return sum / static_cast<double>(days.size());
}

TagValue todaysDegreeDays(const TagContext& c, double (*rule)(double)) {
  const auto t = todaysTemperatures(c);
  if (!t) return noData();
  return rule((t->first + t->second) / 2);
}

bool southern(const TagContext& c) { return c.options.position.latitude && *c.options.position.latitude < 0; }

// 1 July or 1 January, whichever came last: the start of a half-year season.
int seasonStart(const TagContext& c, bool fromJuly) {
  if (!fromJuly) return yearStart(c);
  return c.now.month >= 7 ? dayNumber(c.now.year, 7, 1) : dayNumber(c.now.year - 1, 7, 1);
}

// The first day of the meteorological season (December-February, March-May, ...).
int meteorologicalSeasonStart(const TagContext& c) {
  const int month = c.now.month;
  if (month == 12) return dayNumber(c.now.year, 12, 1);
  if (month <= 2) return dayNumber(c.now.year - 1, 12, 1);
  return dayNumber(c.now.year, month - (month % 3), 1);
}

// Rain of each day from `firstDay` to today: the logs for past days, the
// live record's day total for today.
std::vector<std::pair<int, double>> dailyRain(const TagContext& c, int firstDay) {
  std::vector<std::pair<int, double>> result;
  for (const DayFigures* day : logs(c).days(firstDay))
    if (day->day != today(c) || !c.readingsSeen) result.emplace_back(day->day, day->rain);
  if (c.readingsSeen && firstDay <= today(c)) result.emplace_back(today(c), c.live.dailyrain);
  return result;
}

TagValue rainDays(const TagContext& c, int firstDay, double atLeastMm) {
  const auto days = dailyRain(c, firstDay);
  return static_cast<double>(std::count_if(days.begin(), days.end(), [&](const auto& d) { return d.second >= atLeastMm; }));
}

TagValue rainSince(const TagContext& c, int firstDay) {
  const auto days = dailyRain(c, firstDay);
  if (days.empty()) return noData();
  double sum = 0;
  for (const auto& d : days) sum += d.second;
  return sum;
}

TagValue rainMinutesSince(const TagContext& c, std::int64_t firstKey) {
  const auto lines = logs(c).minutesSince(firstKey);
  if (lines.empty()) return noData();
  double sum = 0;
  for (const LoggedMinute& line : lines) sum += singlePrecision(std::max(0.0, line.rain()));
  return sum;
}

// Days in a row up to today with (or without) rain, looking back a year at most.
TagValue rainStreak(const TagContext& c, bool wet) {
  auto days = dailyRain(c, today(c) - 365);
  int expected = today(c);
  int streak = 0;
  for (auto it = days.rbegin(); it != days.rend(); ++it, --expected) {
    if (it->first != expected || (it->second > kRainDay) != wet) break;
    ++streak;
  }
  return static_cast<double>(streak);
}

// A month of this year: its rain, the live record's total for the current month.
TagValue monthRain(const TagContext& c, int month, bool zeroWhenNone) {
  const TagValue none = zeroWhenNone ? TagValue(0.0) : noData();
  if (month > c.now.month) return none;
  if (month == c.now.month && c.readingsSeen) return c.live.monthlyrain;
  const int first = dayNumber(c.now.year, month, 1);
  const int last = first + daysInMonth(c.now.year, month) - 1;
  double sum = 0;
  bool any = false;
  for (const DayFigures* day : logs(c).days(first)) {
    if (day->day > last) break;
    sum += day->rain;
    any = true;
  }
  return any ? TagValue(sum) : none;
}

TagValue monthMeanTemperature(const TagContext& c, int month) {
  if (month > c.now.month) return noData();
  const int first = dayNumber(c.now.year, month, 1);
  const int last = first + daysInMonth(c.now.year, month) - 1;
  Span span;
  for (const DayFigures* day : logs(c).days(first))
    if (day->day <= last) span.merge(day->tally.temp);
  return span.mean();
}

// The rain that fell last month up to the same day of the month.
TagValue rainToDateMonthAgo(const TagContext& c) {
  const int last = sameDayMonthsBack(c, 1);
  const CivilDate date = civilDate(last);
  const int first = dayNumber(date.year, date.month, 1);
  double sum = 0;
  bool any = false;
  for (int day = first; day <= last; ++day)
    if (const DayFigures* figures = logs(c).dayAt(day)) {
      sum += figures->rain;
      any = true;
    }
  return any ? TagValue(sum) : noData();
}

// The year's rain total a year ago on this date, as that day's last log line shows it.
TagValue rainToDateYearAgo(const TagContext& c) {
  const DayFigures* day = logs(c).dayAt(sameDayMonthsBack(c, 12));
  return day ? TagValue(day->yearRainEnd) : noData();
}

TagValue dayMeanAgo(const TagContext& c, int monthsBack, SpanOf span) {
  const DayFigures* day = logs(c).dayAt(sameDayMonthsBack(c, monthsBack));
  return day ? mean(day->tally.*span) : noData();
}

TagValue meanSince(const TagContext& c, std::int64_t firstKey, SpanOf span) {
  return mean(logs(c).tallySince(firstKey).*span);
}

TagValue directionSince(const TagContext& c, std::int64_t firstKey) {
  return logs(c).tallySince(firstKey).direction();
}

std::string compassText(const TagContext& c, double degrees) {
  return std::string(compassLetters(compassSector(degrees), c.options.language == WordLanguage::german));
}

TagValue directionWord(std::optional<double> degrees, const TagContext& c) {
  if (!degrees) return noData();
  return compassText(c, *degrees);
}

// Wind run in the distance of the owner's wind unit: nautical miles for
// knots, miles for mph, kilometres otherwise.
TagValue windRun(const TagContext& c, std::optional<double> nauticalMiles) {
  if (!nauticalMiles) return noData();
  switch (c.units.units.webWindShown()) {
    case WindUnit::knots: return *nauticalMiles;
    case WindUnit::mph: return *nauticalMiles * kMilesPerNauticalMile;
    default: return *nauticalMiles * kKmPerNauticalMile;
  }
}

std::optional<double> windRunOfDays(const TagContext& c, int firstDay, int lastDay) {
  const auto days = logs(c).days(firstDay);
  double sum = 0;
  bool any = false;
  for (const DayFigures* day : days)
    if (day->day <= lastDay) {
      sum += day->tally.windRunNm;
      any = true;
    }
  return any ? std::optional(sum) : std::nullopt;
}

std::string dayMonthText(const TagContext& c, int day) {
  const CivilDate date = civilDate(day);
  return c.units.units.date == UnitSystem::usa ? fmt::format("{}/{}", date.month, date.day)
                                                : fmt::format("{}/{}", date.day, date.month);
}

// The day of this month with the most rain (the earliest of equals).
const DayFigures* wettestDay(const TagContext& c) {
  const DayFigures* best = nullptr;
  for (const DayFigures* day : logs(c).days(monthStart(c)))
    if (!best || day->rain > best->rain) best = day;
  return best;
}

// The minutes of tonight (from 6 pm) or, before 6 pm, of last night (6 pm to 6 am).
Tally lastNight(const TagContext& c) {
  const std::int64_t start = lastHourKey(c, 18);
  const std::int64_t end = start + 12 * 60;
  Tally tally;
  for (const auto& line : logs(c).minutesSince(start))
    if (line.minute <= end) tally.add(line);
  return tally;
}

// Monday of this week.
int weekStart(const TagContext& c) { return today(c) - (c.now.weekday + 6) % 7; }

TagValue rainOnWeekday(const TagContext& c, int mondayBased) {
  const int day = weekStart(c) + mondayBased;
  if (day > today(c)) return 0.0;
  if (day == today(c)) return c.readingsSeen ? TagValue(c.live.dailyrain) : noData();
  const DayFigures* figures = logs(c).dayAt(day);
  return figures ? TagValue(figures->rain) : noData();
}

// Days this month on which the highest gust passed `metresPerSecond`.
TagValue daysWithGustOver(const TagContext& c, double metresPerSecond) {
  const double knots = metresPerSecond * kKnotsPerMetrePerSecond;
  const auto days = logs(c).days(monthStart(c));
  return static_cast<double>(
      std::count_if(days.begin(), days.end(), [&](const DayFigures* d) { return d->tally.gust.count > 0 && d->tally.gust.high > knots; }));
}

TagValue hoursSince(const TagContext& c, std::int64_t firstKey, int Tally::*minutes) {
  return logs(c).tallySince(firstKey).*minutes / 60.0;
}

// A climate count of days judged by their highest or lowest temperature.
struct DayCount {
  const char* name;
  bool ofMax;      // the day's highest (else lowest) temperature
  bool above;      // strictly above (else strictly below) the threshold
  double celsius;  // threshold
  bool year;       // this year (else this month)
  bool logOnly;    // the "lg" forms
};

constexpr DayCount kDayCounts[] = {
    {"daysTmax<-10C", true, false, -10, false, false},
    {"daysTmax<-15C", true, false, -15, false, false},
    {"daysTmax<-5C", true, false, -5, false, false},
    {"daysTmax<0C", true, false, 0, false, false},
    {"daysTmax<0Clg", true, false, 0, false, true},
    {"daysTmax<10C", true, false, 10, false, false},
    {"daysTmax<10Clg", true, false, 10, false, true},
    {"daysTmax<15C", true, false, 15, false, false},
    {"daysTmax<15Clg", true, false, 15, false, true},
    {"daysTmax<20C", true, false, 20, false, false},
    {"daysTmax<20Clg", true, false, 20, false, true},
    {"daysTmax<5C", true, false, 5, false, false},
    {"daysTmax<5Clg", true, false, 5, false, true},
    {"daysTmax>-10C", true, true, -10, false, false},
    {"daysTmax>-15C", true, true, -15, false, false},
    {"daysTmax>-20C", true, true, -20, false, false},
    {"daysTmax>-5C", true, true, -5, false, false},
    {"daysTmax>0C", true, true, 0, false, false},
    {"daysTmax>10C", true, true, 10, false, false},
    {"daysTmax>15C", true, true, 15, false, false},
    {"daysTmax>20C", true, true, 20, false, false},
    {"daysTmax>20Clg", true, true, 20, false, true},
    {"daysTmax>25C", true, true, 25, false, false},
    {"daysTmax>25Clg", true, true, 25, false, true},
    {"daysTmax>30C", true, true, 30, false, false},
    {"daysTmax>30Clg", true, true, 30, false, true},
    {"daysTmax>32.22C", true, true, 32.22, false, false},
    {"daysTmax>32.22Clg", true, true, 32.22, false, true},
    {"daysTmax>35C", true, true, 35, false, false},
    {"daysTmax>35Clg", true, true, 35, false, true},
    {"daysTmax>37.77C", true, true, 37.77, false, false},
    {"daysTmax>37.77Clg", true, true, 37.77, false, true},
    {"daysTmax>38C", true, true, 38, false, false},
    {"daysTmax>40C", true, true, 40, false, false},
    {"daysTmax>40Clg", true, true, 40, false, true},
    {"daysTmax>44C", true, true, 44, false, false},
    {"daysTmax>44Clg", true, true, 44, false, true},
    {"daysTmax>47C", true, true, 47, false, false},
    {"daysTmax>47Clg", true, true, 47, false, true},
    {"daysTmax>49C", true, true, 49, false, false},
    {"daysTmax>49Clg", true, true, 49, false, true},
    {"daysTmax>5C", true, true, 5, false, false},
    {"daysTmaxyear<-10C", true, false, -10, true, false},
    {"daysTmaxyear<-15C", true, false, -15, true, false},
    {"daysTmaxyear<-5C", true, false, -5, true, false},
    {"daysTmaxyear<0C", true, false, 0, true, false},
    {"daysTmaxyear<0Clg", true, false, 0, true, true},
    {"daysTmaxyear<0lgC", true, false, 0, true, true},
    {"daysTmaxyear<10C", true, false, 10, true, false},
    {"daysTmaxyear<10Clg", true, false, 10, true, true},
    {"daysTmaxyear<15C", true, false, 15, true, false},
    {"daysTmaxyear<15Clg", true, false, 15, true, true},
    {"daysTmaxyear<20C", true, false, 20, true, false},
    {"daysTmaxyear<20Clg", true, false, 20, true, true},
    {"daysTmaxyear<5C", true, false, 5, true, false},
    {"daysTmaxyear<5Clg", true, false, 5, true, true},
    {"daysTmaxyear>-10C", true, true, -10, true, false},
    {"daysTmaxyear>-15C", true, true, -15, true, false},
    {"daysTmaxyear>-5C", true, true, -5, true, false},
    {"daysTmaxyear>0C", true, true, 0, true, false},
    {"daysTmaxyear>10C", true, true, 10, true, false},
    {"daysTmaxyear>15C", true, true, 15, true, false},
    {"daysTmaxyear>20C", true, true, 20, true, false},
    {"daysTmaxyear>20Clg", true, true, 20, true, true},
    {"daysTmaxyear>25C", true, true, 25, true, false},
    {"daysTmaxyear>25Clg", true, true, 25, true, true},
    {"daysTmaxyear>30C", true, true, 30, true, false},
    {"daysTmaxyear>30Clg", true, true, 30, true, true},
    {"daysTmaxyear>32.22C", true, true, 32.22, true, false},
    {"daysTmaxyear>32.22Clg", true, true, 32.22, true, true},
    {"daysTmaxyear>35C", true, true, 35, true, false},
    {"daysTmaxyear>35Clg", true, true, 35, true, true},
    {"daysTmaxyear>37.77C", true, true, 37.77, true, false},
    {"daysTmaxyear>37.77Clg", true, true, 37.77, true, true},
    {"daysTmaxyear>38C", true, true, 38, true, false},
    {"daysTmaxyear>40C", true, true, 40, true, false},
    {"daysTmaxyear>40Clg", true, true, 40, true, true},
    {"daysTmaxyear>44C", true, true, 44, true, false},
    {"daysTmaxyear>44Clg", true, true, 44, true, true},
    {"daysTmaxyear>47C", true, true, 47, true, false},
    {"daysTmaxyear>47Clg", true, true, 47, true, true},
    {"daysTmaxyear>49C", true, true, 49, true, false},
    {"daysTmaxyear>49Clg", true, true, 49, true, true},
    {"daysTmaxyear>5C", true, true, 5, true, false},
    {"daysTmin<-10C", false, false, -10, false, false},
    {"daysTmin<-15C", false, false, -15, false, false},
    {"daysTmin<-15Clg", false, false, -15, false, true},
    {"daysTmin<-17.78C", false, false, -17.78, false, false},
    {"daysTmin<-17.78Clg", false, false, -17.78, false, true},
    {"daysTmin<-20C", false, false, -20, false, false},
    {"daysTmin<-25C", false, false, -25, false, false},
    {"daysTmin<-5C", false, false, -5, false, false},
    {"daysTmin<0C", false, false, 0, false, false},
    {"daysTmin<0Clg", false, false, 0, false, true},
    {"daysTmin<10C", false, false, 10, false, false},
    {"daysTmin<15C", false, false, 15, false, false},
    {"daysTmin<20C", false, false, 20, false, false},
    {"daysTmin<25C", false, false, 25, false, false},
    {"daysTmin<5C", false, false, 5, false, false},
    {"daysTmin>-5C", false, true, -5, false, false},
    {"daysTminyear<-10C", false, false, -10, true, false},
    {"daysTminyear<-15C", false, false, -15, true, false},
    {"daysTminyear<-15Clg", false, false, -15, true, true},
    {"daysTminyear<-17.78C", false, false, -17.78, true, false},
    {"daysTminyear<-20C", false, false, -20, true, false},
    {"daysTminyear<-25C", false, false, -25, true, false},
    {"daysTminyear<-5C", false, false, -5, true, false},
    {"daysTminyear<0C", false, false, 0, true, false},
    {"daysTminyear<0Clg", false, false, 0, true, true},
    {"daysTminyear<10C", false, false, 10, true, false},
    {"daysTminyear<15C", false, false, 15, true, false},
    {"daysTminyear<20C", false, false, 20, true, false},
    {"daysTminyear<25C", false, false, 25, true, false},
    {"daysTminyear<5C", false, false, 5, true, false},
    {"daysTminyearlg<0C", false, false, 0, true, true},
};

TagDef dayCountRow(const DayCount& count) {
  const std::string gives = fmt::format("number of days {} with a {} temperature {} {} °C{}", count.year ? "this year" : "this month",
                                        count.ofMax ? "highest" : "lowest", count.above ? "above" : "below",
                                        count.celsius, count.logOnly ? ", judged from the logged minutes only" : "");
  return bare(count.name, Unit::none, 1, 0,
              [count](const TagContext& c) {
                return countDays(c, count.year ? yearStart(c) : monthStart(c), count.logOnly, [&](double high, double low) {
                  const double value = count.ofMax ? high : low;
                  return count.above ? value > count.celsius : value < count.celsius;
                });
              },
              gives);
}

// NOAA-style counts: at or beyond the threshold.
TagDef atLeastRow(const char* name, bool ofMax, bool atLeast, double celsius, bool year, std::string gives) {
  return bare(name, Unit::none, 1, 0,
              [=](const TagContext& c) {
                return countDays(c, year ? yearStart(c) : monthStart(c), false, [&](double high, double low) {
                  const double value = ofMax ? high : low;
                  return atLeast ? value >= celsius - 0.01 : value <= celsius + 0.01;
                });
              },
              std::move(gives));
}

TagDef unknown(const char* name, const char* guess) {
  return missing(name, fmt::format("{}; the meaning of this name is not known, so no value is given", guess));
}

TagDef longTerm(std::string name, std::string what) {
  return missing(std::move(name), what + " over many years; the program keeps no long-term climate data and no "
                                         "settings for it");
}

}  // namespace

std::vector<TagDef> climateTags() {
  const auto monthAgo = [](SpanOf span) { return [span](const TagContext& c) { return dayMeanAgo(c, 1, span); }; };
  const auto yearAgo = [](SpanOf span) { return [span](const TagContext& c) { return dayMeanAgo(c, 12, span); }; };
  const auto week = [](SpanOf span) {
    return [span](const TagContext& c) { return meanSince(c, nowKey(c) - 7 * kDay, span); };
  };
  const auto lastMinutes = [](int minutes, SpanOf span) {
    return [minutes, span](const TagContext& c) { return meanSince(c, nowKey(c) - minutes + 1, span); };
  };
  const auto dirLast = [](int minutes) {
    return [minutes](const TagContext& c) { return directionSince(c, nowKey(c) - minutes + 1); };
  };
  const auto monthSpan = [](SpanOf span, TagValue (*pick)(const Span&)) {
    return [span, pick](const TagContext& c) { return pick(tallyOfDays(c, monthStart(c)).*span); };
  };
  constexpr auto high = [](const Span& s) -> TagValue { return s.highest(); };
  constexpr auto low = [](const Span& s) -> TagValue { return s.lowest(); };
  constexpr auto avg = [](const Span& s) -> TagValue { return s.mean(); };
  const auto since = [](int hour, SpanOf span) {
    return [hour, span](const TagContext& c) { return meanSince(c, lastHourKey(c, hour), span); };
  };

  std::vector<TagDef> rows = {
      number("avbaromtago", Unit::pressure, 1, 1, monthAgo(&Tally::baro), "average pressure on this date a month ago"),
      number("avbaroweek", Unit::pressure, 1, 1, week(&Tally::baro), "average pressure over the last 7 days"),
      number("avbaroyrago", Unit::pressure, 1, 1, yearAgo(&Tally::baro), "average pressure on this date a year ago"),
      number("avdewmtago", Unit::temperature, 1, 1, monthAgo(&Tally::dew), "average dew point on this date a month ago"),
      number("avdewyrago", Unit::temperature, 1, 1, yearAgo(&Tally::dew), "average dew point on this date a year ago"),
      bare("avdirlastimediate10", Unit::none, 1, 0, dirLast(10), "average wind direction (degrees) over the last 10 minutes"),
      bare("avdirlastimediate120", Unit::none, 1, 0, dirLast(120), "average wind direction (degrees) over the last 2 hours"),
      bare("avdirlastimediate15", Unit::none, 1, 0, dirLast(15), "average wind direction (degrees) over the last 15 minutes"),
      bare("avdirlastimediate180", Unit::none, 1, 0, dirLast(180), "average wind direction (degrees) over the last 3 hours"),
      bare("avdirlastimediate30", Unit::none, 1, 0, dirLast(30), "average wind direction (degrees) over the last 30 minutes"),
      bare("avdirlastimediate60", Unit::none, 1, 0, dirLast(60), "average wind direction (degrees) over the last hour"),
      missing("averagetempfordaytimeofyearfromyourdata",
              "average temperature of this date over all the years of your logs; the program reads no earlier years' logs"),
      number("avgspeedsincereset", Unit::speed, 1, 1,
             [](const TagContext& c) { return meanSince(c, resetKey(c), &Tally::wind); },
             "average wind speed since the day's reset hour"),
      number("avgustweek", Unit::speed, 1, 1, week(&Tally::gust), "average gust over the last 7 days"),
      longTerm("avgYearRain", "average yearly rain"),
      number("avhummtago", Unit::none, 1, 0, monthAgo(&Tally::hum), "average humidity (%) on this date a month ago"),
      number("avhumweek", Unit::none, 1, 0, week(&Tally::hum), "average humidity (%) over the last 7 days"),
      number("avhumyrago", Unit::none, 1, 0, yearAgo(&Tally::hum), "average humidity (%) on this date a year ago"),
      missing("avindoortempmid",
              "average indoor temperature since midnight; the monthly log keeps no indoor temperature"),
  };

  for (int m = 0; m < 12; ++m)
    rows.push_back(longTerm(fmt::format("avrain{}", kMonthKeys[m]), fmt::format("average rain of {}", kMonthNames[m])));
  for (int m = 0; m < 12; ++m) {
    const std::string month = kMonthKeys[m];
    const std::string name = kMonthNames[m];
    rows.push_back(longTerm("avtemp" + month, "average temperature of " + name));
    rows.push_back(number("avtemp" + month + "now", Unit::temperature, 1, 1,
                          [m](const TagContext& c) { return monthMeanTemperature(c, m + 1); },
                          "average temperature of " + name + " this year, from the logs (\"---\" before it comes)"));
    rows.push_back(missing("avtemp" + month + "nowsoil",
                           "average soil temperature of " + name + " this year; the logs keep no soil temperature "
                           "through the day"));
    rows.push_back(longTerm("avtemp" + month + "soil", "average soil temperature of " + name));
  }

  const std::vector<TagDef> middle = {
      number("avtempmtago", Unit::temperature, 1, 1, monthAgo(&Tally::temp), "average temperature on this date a month ago"),
      number("avtempsince6am", Unit::temperature, 1, 1, since(6, &Tally::temp),
             "average temperature since 6 am (before 6 am: since 6 am yesterday)"),
      number("avtempsince6amUSA", Unit::fahrenheit, 1, 1, since(6, &Tally::temp),
             "average temperature since 6 am in °F"),
      number("avtempsince6pm", Unit::temperature, 1, 1, since(18, &Tally::temp),
             "average temperature since 6 pm (before 6 pm: since 6 pm yesterday)"),
      number("avtempsince6pmUSA", Unit::fahrenheit, 1, 1, since(18, &Tally::temp),
             "average temperature since 6 pm in °F"),
      number("avtempsincemidnight", Unit::temperature, 1, 1, since(0, &Tally::temp), "average temperature since midnight"),
      number("avtempweek", Unit::temperature, 1, 1, week(&Tally::temp), "average temperature over the last 7 days"),
      number("avtempyrago", Unit::temperature, 1, 1, yearAgo(&Tally::temp), "average temperature on this date a year ago"),
      number("avwindlastimediate10", Unit::speed, 1, 1, lastMinutes(10, &Tally::wind), "average wind speed over the last 10 minutes"),
      number("avwindlastimediate120", Unit::speed, 1, 1, lastMinutes(120, &Tally::wind), "average wind speed over the last 2 hours"),
      number("avwindlastimediate15", Unit::speed, 1, 1, lastMinutes(15, &Tally::wind), "average wind speed over the last 15 minutes"),
      number("avwindlastimediate30", Unit::speed, 1, 1, lastMinutes(30, &Tally::wind), "average wind speed over the last 30 minutes"),
      number("avwindlastimediate60", Unit::speed, 1, 1, lastMinutes(60, &Tally::wind), "average wind speed over the last hour"),
      number("avwindmtago", Unit::speed, 1, 1, monthAgo(&Tally::wind), "average wind speed on this date a month ago"),
      number("avwindweek", Unit::speed, 1, 1, week(&Tally::wind), "average wind speed over the last 7 days"),
      number("avwindyrago", Unit::speed, 1, 1, yearAgo(&Tally::wind), "average wind speed on this date a year ago"),
      number("cddday", Unit::temperatureChange, 1, 1, [](const TagContext& c) { return todaysDegreeDays(c, cooling); },
             "cooling degree days today, base 18.3 °C (65 °F)"),
      number("cddmonth", Unit::temperatureChange, 1, 1, [](const TagContext& c) { return degreeDays(c, monthStart(c), cooling); },
             "cooling degree days this month, base 18.3 °C (65 °F)"),
      number("cddseason", Unit::temperatureChange, 1, 1,
             [](const TagContext& c) { return degreeDays(c, seasonStart(c, southern(c)), cooling); },
             "cooling degree days this season (from 1 January; 1 July south of the equator), base 18.3 °C"),
      number("cddyear", Unit::temperatureChange, 1, 1, [](const TagContext& c) { return degreeDays(c, yearStart(c), cooling); },
             "cooling degree days this year, base 18.3 °C (65 °F)"),
      bare("climatewindrun", Unit::none, 1, 1,
           [](const TagContext& c) -> TagValue {
             const auto run = windRunOfDays(c, monthStart(c), today(c));
             if (!run) return noData();
             return windRun(c, *run / (today(c) - monthStart(c) + 1));
           },
           "average daily wind run this month (km; miles for mph, nautical miles for knots)"),
      bare("consecdayswithrain", Unit::none, 1, 0, [](const TagContext& c) { return rainStreak(c, true); },
           "days in a row with rain up to today (0 when today is dry)"),
  };
  rows.insert(rows.end(), middle.begin(), middle.end());

  for (int day = 1; day <= 31; ++day)
    rows.push_back(unknown(fmt::format("countsday{}", day).c_str(), fmt::format("a count for day {} of the month", day).c_str()));

  const std::vector<TagDef> rest = {
      longTerm("currentmonthaveragerain", "average rain of the current month"),
      longTerm("currentmonthaveragerain2", "average rain of the current month (second form)"),
      longTerm("currentmonthaveragetemp", "average temperature of the current month"),
      atLeastRow("d90", true, true, 32.22, true, "number of days this year with a highest temperature of 90 °F (32.2 °C) or more"),
      missing("daysheavyfog", "number of days with heavy fog; the station has no fog or visibility sensor"),
  };
  rows.insert(rows.end(), rest.begin(), rest.end());
  for (const DayCount& count : kDayCounts) rows.push_back(dayCountRow(count));

  const std::vector<TagDef> tail = {
      bare("dayswithgale", Unit::none, 1, 0,
           [](const TagContext& c) -> TagValue {
             const auto days = logs(c).days(monthStart(c));
             return static_cast<double>(std::count_if(days.begin(), days.end(), [](const DayFigures* d) {
               return d->tally.wind.count > 0 && d->tally.wind.high >= kGaleKnots;
             }));
           },
           "number of days this month with a minute's average wind of gale force (34 knots) or more"),
      bare("dayswithnorain", Unit::none, 1, 0, [](const TagContext& c) { return rainStreak(c, false); },
           "days in a row without rain up to today (0 when it rained today)"),
      bare("dayswithrain", Unit::none, 1, 0, [](const TagContext& c) { return rainDays(c, monthStart(c), kRainDay); },
           "number of days this month with rain"),
      bare("dayswithrainyear", Unit::none, 1, 0, [](const TagContext& c) { return rainDays(c, yearStart(c), kRainDay); },
           "number of days this year with rain"),
      atLeastRow("dm90", true, true, 32.22, false, "number of days this month with a highest temperature of 90 °F (32.2 °C) or more"),
      atLeastRow("dm=32", true, false, 0, false, "number of days this month with a highest temperature of 32 °F (0 °C) or less"),
      atLeastRow("dmi=0", false, false, -17.78, false, "number of days this month with a lowest temperature of 0 °F (-17.8 °C) or less"),
      atLeastRow("dmi=32", false, false, 0, false, "number of days this month with a lowest temperature of 32 °F (0 °C) or less"),
      longTerm("driestcurrmonth", "rain of the driest current calendar month on record"),
  };
  rows.insert(rows.end(), tail.begin(), tail.end());
  for (int m : {1, 10, 11, 12, 2, 3, 4, 5, 6, 7, 8, 9})
    rows.push_back(longTerm(fmt::format("driestmonth{}", m), fmt::format("rain of the driest {} on record", kMonthNames[m - 1])));

  const std::vector<TagDef> more = {
      number("etcurrentweek", Unit::rain, 1, 2,
             [](const TagContext& c) -> TagValue {
               auto days = logs(c).evapotranspiration(weekStart(c));
               if (c.readingsSeen) days[today(c)] = c.live.dailyet;
               if (days.empty()) return noData();
               double sum = 0;
               for (const auto& [day, mm] : days) sum += mm;
               return sum;
             },
             "evapotranspiration this week, since Monday (the sun logs' day totals, today's from the station)"),
      number("gddmonth", Unit::temperatureChange, 1, 1, [](const TagContext& c) { return degreeDays(c, monthStart(c), growing); },
             "growing degree days this month, base 10 °C (50 °F)"),
      number("gddyear", Unit::temperatureChange, 1, 1, [](const TagContext& c) { return degreeDays(c, yearStart(c), growing); },
             "growing degree days this year, base 10 °C (50 °F)"),
      number("hddday", Unit::temperatureChange, 1, 1, [](const TagContext& c) { return todaysDegreeDays(c, heating); },
             "heating degree days today, base 18.3 °C (65 °F)"),
      number("hddmonth", Unit::temperatureChange, 1, 1, [](const TagContext& c) { return degreeDays(c, monthStart(c), heating); },
             "heating degree days this month, base 18.3 °C (65 °F)"),
      number("hddseason", Unit::temperatureChange, 1, 1,
             [](const TagContext& c) { return degreeDays(c, seasonStart(c, !southern(c)), heating); },
             "heating degree days this season (from 1 July; 1 January south of the equator), base 18.3 °C"),
      number("hddyear", Unit::temperatureChange, 1, 1, [](const TagContext& c) { return degreeDays(c, yearStart(c), heating); },
             "heating degree days this year, base 18.3 °C (65 °F)"),
      number("houraveragehum", Unit::none, 1, 0, lastMinutes(60, &Tally::hum), "average humidity (%) over the last hour"),
      number("houraveragetemp", Unit::temperature, 1, 1, lastMinutes(60, &Tally::temp), "average temperature over the last hour"),
      bare("hoursoffrost", Unit::none, 1, 1, [](const TagContext& c) { return hoursSince(c, resetKey(c), &Tally::frostMinutes); },
           "hours below 0 °C since the day's reset hour"),
      bare("hrsfrostmidnight", Unit::none, 1, 1,
           [](const TagContext& c) { return hoursSince(c, lastHourKey(c, 0), &Tally::frostMinutes); },
           "hours below 0 °C since midnight"),
      number("last24houravbaro", Unit::pressure, 1, 1, lastMinutes(1440, &Tally::baro), "average pressure over the last 24 hours"),
      bare("last24houravdir", Unit::none, 1, 0, dirLast(1440), "average wind direction (degrees) over the last 24 hours"),
      bare("last24houravdirday", Unit::none, 1, 0,
           [](const TagContext& c) { return directionSince(c, lastHourKey(c, 0)); },
           "average wind direction (degrees) today, since midnight"),
      text("last24houravdirword", [](const TagContext& c) { return directionWord(logs(c).tallySince(nowKey(c) - kDay + 1).direction(), c); },
           "average wind direction over the last 24 hours as a compass word"),
      text("last24houravdirwordday",
           [](const TagContext& c) { return directionWord(logs(c).tallySince(lastHourKey(c, 0)).direction(), c); },
           "average wind direction today, since midnight, as a compass word"),
      number("last24houravhum", Unit::none, 1, 0, lastMinutes(1440, &Tally::hum), "average humidity (%) over the last 24 hours"),
      number("last24houravtemp", Unit::temperature, 1, 1, lastMinutes(1440, &Tally::temp), "average temperature over the last 24 hours"),
      longTerm("last24houravtempclimate", "average temperature of this time of year"),
      longTerm("last24houravtempclimatediff", "last 24 hours' average temperature less the average of this time of year"),
      missing("maxtempfordaytimeofyearfromyourdata",
              "highest temperature of this date over all the years of your logs; the program reads no earlier years' logs"),
      missing("maxtempfortodayfromyourdata",
              "highest temperature of today's date in your logs of past years; the program reads no earlier years' logs"),
      missing("mintempfordaytimeofyearfromyourdata",
              "lowest temperature of this date over all the years of your logs; the program reads no earlier years' logs"),
      missing("mintempfortodayfromyourdata",
              "lowest temperature of today's date in your logs of past years; the program reads no earlier years' logs"),
      number("monthtodateavbaro", Unit::pressure, 1, 1, monthSpan(&Tally::baro, avg), "average pressure this month"),
      number("monthtodateavbaromb", Unit::mb, 1, 1, monthSpan(&Tally::baro, avg), "average pressure this month in mb"),
      bare("monthtodateavdir", Unit::none, 1, 0,
           [](const TagContext& c) { return TagValue(tallyOfDays(c, monthStart(c)).direction()); },
           "average wind direction (degrees) this month"),
      text("monthtodateavdirword", [](const TagContext& c) { return directionWord(tallyOfDays(c, monthStart(c)).direction(), c); },
           "average wind direction this month as a compass word"),
      number("monthtodateavdp", Unit::temperature, 1, 1, monthSpan(&Tally::dew, avg), "average dew point this month"),
      number("monthtodateavdpcelsius", Unit::celsius, 1, 1, monthSpan(&Tally::dew, avg), "average dew point this month in °C"),
      number("monthtodateavgust", Unit::speed, 1, 1, monthSpan(&Tally::gust, avg), "average gust this month"),
      number("monthtodateavgustkmh", Unit::kmh, 1, 1, monthSpan(&Tally::gust, avg), "average gust this month in km/h"),
      number("monthtodateavgustkts", Unit::knots, 1, 1, monthSpan(&Tally::gust, avg), "average gust this month in knots"),
      number("monthtodateavgustms", Unit::metresPerSecond, 1, 1, monthSpan(&Tally::gust, avg), "average gust this month in m/s"),
      number("monthtodateavhum", Unit::none, 1, 0, monthSpan(&Tally::hum, avg), "average humidity (%) this month"),
      number("monthtodateavspeed", Unit::speed, 1, 1, monthSpan(&Tally::wind, avg), "average wind speed this month"),
      number("monthtodateavspeedkmh", Unit::kmh, 1, 1, monthSpan(&Tally::wind, avg), "average wind speed this month in km/h"),
      number("monthtodateavspeedkts", Unit::knots, 1, 1, monthSpan(&Tally::wind, avg), "average wind speed this month in knots"),
      number("monthtodateavspeedms", Unit::metresPerSecond, 1, 1, monthSpan(&Tally::wind, avg), "average wind speed this month in m/s"),
      number("monthtodateavtemp", Unit::temperature, 1, 1, monthSpan(&Tally::temp, avg), "average temperature this month"),
      number("monthtodateavtemp31", Unit::temperature, 1, 1,
             [](const TagContext& c) { return mean(tallyOfDays(c, today(c) - 30).temp); },
             "average temperature of the last 31 days, today included"),
      number("monthtodateavtempcelsius", Unit::celsius, 1, 1, monthSpan(&Tally::temp, avg), "average temperature this month in °C"),
      number("monthtodateavtempcelsius31", Unit::celsius, 1, 1,
             [](const TagContext& c) { return mean(tallyOfDays(c, today(c) - 30).temp); },
             "average temperature of the last 31 days in °C"),
      longTerm("monthtodateavtempdiff", "this month's average temperature less the average of this calendar month"),
      number("monthtodatemaxbaro", Unit::pressure, 1, 1, monthSpan(&Tally::baro, high), "highest pressure this month"),
      number("monthtodatemaxbaromb", Unit::mb, 1, 1, monthSpan(&Tally::baro, high), "highest pressure this month in mb"),
      number("monthtodatemaxdp", Unit::temperature, 1, 1, monthSpan(&Tally::dew, high), "highest dew point this month"),
      number("monthtodatemaxdpcelsius", Unit::celsius, 1, 1, monthSpan(&Tally::dew, high), "highest dew point this month in °C"),
      number("monthtodatemaxgust", Unit::speed, 1, 1, monthSpan(&Tally::gust, high), "highest gust this month"),
      bare("monthtodatemaxgustdirdeg", Unit::none, 1, 0,
           [](const TagContext& c) -> TagValue {
             const Tally t = tallyOfDays(c, monthStart(c));
             return t.gust.count ? TagValue(t.gustHighDir) : noData();
           },
           "wind direction (degrees) of this month's highest gust"),
      text("monthtodatemaxgustdirword",
           [](const TagContext& c) -> TagValue {
             const Tally t = tallyOfDays(c, monthStart(c));
             return t.gust.count ? directionWord(t.gustHighDir, c) : noData();
           },
           "wind direction of this month's highest gust as a compass word"),
      number("monthtodatemaxgustkmh", Unit::kmh, 1, 1, monthSpan(&Tally::gust, high), "highest gust this month in km/h"),
      number("monthtodatemaxgustkts", Unit::knots, 1, 1, monthSpan(&Tally::gust, high), "highest gust this month in knots"),
      number("monthtodatemaxgustms", Unit::metresPerSecond, 1, 1, monthSpan(&Tally::gust, high), "highest gust this month in m/s"),
      number("monthtodatemaxhum", Unit::none, 1, 0, monthSpan(&Tally::hum, high), "highest humidity (%) this month"),
      number("monthtodatemaxtemp", Unit::temperature, 1, 1, monthSpan(&Tally::temp, high), "highest temperature this month"),
      number("monthtodatemaxtempcelsius", Unit::celsius, 1, 1, monthSpan(&Tally::temp, high), "highest temperature this month in °C"),
      number("monthtodatemaxwind", Unit::speed, 1, 1, monthSpan(&Tally::wind, high), "highest minute's average wind this month"),
      number("monthtodatemaxwindkmh", Unit::kmh, 1, 1, monthSpan(&Tally::wind, high), "highest minute's average wind this month in km/h"),
      number("monthtodatemaxwindkts", Unit::knots, 1, 1, monthSpan(&Tally::wind, high), "highest minute's average wind this month in knots"),
      number("monthtodatemaxwindms", Unit::metresPerSecond, 1, 1, monthSpan(&Tally::wind, high), "highest minute's average wind this month in m/s"),
      number("monthtodateminbaro", Unit::pressure, 1, 1, monthSpan(&Tally::baro, low), "lowest pressure this month"),
      number("monthtodateminbaromb", Unit::mb, 1, 1, monthSpan(&Tally::baro, low), "lowest pressure this month in mb"),
      number("monthtodatemindp", Unit::temperature, 1, 1, monthSpan(&Tally::dew, low), "lowest dew point this month"),
      number("monthtodatemindpcelsius", Unit::celsius, 1, 1, monthSpan(&Tally::dew, low), "lowest dew point this month in °C"),
      number("monthtodateminhum", Unit::none, 1, 0, monthSpan(&Tally::hum, low), "lowest humidity (%) this month"),
      number("monthtodatemintemp", Unit::temperature, 1, 1, monthSpan(&Tally::temp, low), "lowest temperature this month"),
      number("monthtodatemintempcelsius", Unit::celsius, 1, 1, monthSpan(&Tally::temp, low), "lowest temperature this month in °C"),
      missing("monthtodatesolarhrs", "hours of sunshine this month; the program works out no sunshine hours"),
  };
  rows.insert(rows.end(), more.begin(), more.end());

  for (int m = 0; m < 12; ++m) {
    rows.push_back(missing(fmt::format("myav{}rain", kMonthKeys[m]),
                           fmt::format("average rain of {} over the years of your own logs; the program reads no earlier "
                                       "years' logs",
                                       kMonthNames[m])));
    rows.push_back(missing(fmt::format("myav{}temp", kMonthKeys[m]),
                           fmt::format("average temperature of {} over the years of your own logs; the program reads no "
                                       "earlier years' logs",
                                       kMonthNames[m])));
  }

  const auto monthTally = [](const TagContext& c) { return tallyOfDays(c, monthStart(c)); };
  const std::vector<TagDef> noaa = {
      unknown("nad", "a monthly climate-summary figure"),
      number("namt", Unit::temperature, 1, 1,
             [](const TagContext& c) -> TagValue {
               const auto days = dailyTemperatures(c, monthStart(c), false);
               if (days.empty()) return noData();
               double sum = 0;
               for (const auto& d : days) sum += d.first;
               return sum / static_cast<double>(days.size());
             },
             "mean of the days' highest temperatures this month"),
      number("navc", Unit::temperatureChange, 1, 1, [](const TagContext& c) { return degreeDaysPerDay(c, cooling); },
             "average cooling degree days per day this month, base 18.3 °C (65 °F)"),
      number("navh", Unit::temperatureChange, 1, 1, [](const TagContext& c) { return degreeDaysPerDay(c, heating); },
             "average heating degree days per day this month, base 18.3 °C (65 °F)"),
      number("navmt", Unit::temperature, 1, 1,
             [](const TagContext& c) -> TagValue {
               const auto days = dailyTemperatures(c, monthStart(c), false);
               if (days.empty()) return noData();
               double sum = 0;
               for (const auto& d : days) sum += (d.first + d.second) / 2;
               return sum / static_cast<double>(days.size());
             },
             "mean temperature this month as climate reports take it: the average of each day's (highest + lowest) / 2"),
      number("navp", Unit::pressure, 1, 1, monthSpan(&Tally::baro, avg), "average pressure this month"),
      unknown("navps", "a monthly climate-summary figure about pressure"),
      number("navs", Unit::speed, 1, 1, monthSpan(&Tally::wind, avg), "average wind speed this month"),
      number("navt", Unit::temperature, 1, 1, monthSpan(&Tally::temp, avg), "average temperature this month (all logged minutes)"),
      unknown("naw", "a monthly climate-summary figure about wind"),
      number("nctot", Unit::temperatureChange, 1, 1, [](const TagContext& c) { return degreeDays(c, monthStart(c), cooling); },
             "total cooling degree days this month, base 18.3 °C (65 °F)"),
      atLeastRow("ndgt0", true, false, 0, false, "number of days this month with a highest temperature of 0 °C (32 °F) or less"),
      atLeastRow("ndgt90", true, true, 32.22, false, "number of days this month with a highest temperature of 32.2 °C (90 °F) or more"),
      atLeastRow("ndgtm0", false, false, 0, false, "number of days this month with a lowest temperature of 0 °C (32 °F) or less"),
      atLeastRow("ndgtm00", false, false, -17.78, false,
                 "number of days this month with a lowest temperature of -17.8 °C (0 °F) or less"),
      unknown("ndn", "a monthly climate-summary count"),
      unknown("ndp1", "a monthly climate-summary count of days"),
      unknown("ndp3", "a monthly climate-summary count of days"),
      unknown("ndp4", "a monthly climate-summary count of days"),
      unknown("ndp5", "a monthly climate-summary count of days"),
      missing("ndthunder", "number of days with thunder this month; the station has no thunder or lightning sensor"),
      number("nhtot", Unit::temperatureChange, 1, 1, [](const TagContext& c) { return degreeDays(c, monthStart(c), heating); },
             "total heating degree days this month, base 18.3 °C (65 °F)"),
      number("nightlyhitemp12", Unit::temperature, 1, 1, [](const TagContext& c) { return TagValue(lastNight(c).temp.highest()); },
             "highest temperature of the night, 6 pm to 6 am (before 6 pm: last night)"),
      number("nightlylotemp12", Unit::temperature, 1, 1, [](const TagContext& c) { return TagValue(lastNight(c).temp.lowest()); },
             "lowest temperature of the night, 6 pm to 6 am (before 6 pm: last night)"),
      number("nmatm", Unit::temperature, 1, 1, monthSpan(&Tally::temp, high), "highest temperature this month"),
      number("nmb", Unit::pressure, 1, 1, monthSpan(&Tally::baro, high), "highest pressure this month"),
      bare("nmbd", Unit::none, 1, 0,
           [monthTally](const TagContext& c) -> TagValue {
             const Tally t = monthTally(c);
             return t.baro.count ? TagValue(civilDate(t.baroHighDay).day) : noData();
           },
           "day of the month of this month's highest pressure"),
      text("nmbdm",
           [monthTally](const TagContext& c) -> TagValue {
             const Tally t = monthTally(c);
             return t.baro.count ? TagValue(dayMonthText(c, t.baroHighDay)) : noData();
           },
           "date of this month's highest pressure (day/month, or month/day with US dates)"),
      bare("nmbid", Unit::none, 1, 0,
           [monthTally](const TagContext& c) -> TagValue {
             const Tally t = monthTally(c);
             return t.baro.count ? TagValue(civilDate(t.baroLowDay).day) : noData();
           },
           "day of the month of this month's lowest pressure"),
      text("nmbidm",
           [monthTally](const TagContext& c) -> TagValue {
             const Tally t = monthTally(c);
             return t.baro.count ? TagValue(dayMonthText(c, t.baroLowDay)) : noData();
           },
           "date of this month's lowest pressure (day/month, or month/day with US dates)"),
      number("nmib", Unit::pressure, 1, 1, monthSpan(&Tally::baro, low), "lowest pressure this month"),
      number("nmitm", Unit::temperature, 1, 1, monthSpan(&Tally::temp, low), "lowest temperature this month"),
  };
  rows.insert(rows.end(), noaa.begin(), noaa.end());

  for (int m : {4, 8, 12, 2, 1, 7, 6, 3, 5, 11, 10, 9}) {
    const std::string month = kMonthKeys[m - 1];
    const std::string name = kMonthNames[m - 1];
    rows.push_back(number("nowrain" + month, Unit::rain, 1, 1, [m](const TagContext& c) { return monthRain(c, m, false); },
                          "rain in " + name + " this year (\"---\" before it comes)"));
    rows.push_back(number("nowrain" + month + "0", Unit::rain, 1, 1, [m](const TagContext& c) { return monthRain(c, m, true); },
                          "rain in " + name + " this year (0 before it comes or without a log)"));
  }

  const std::vector<TagDef> rain = {
      unknown("npt2", "a monthly climate-summary figure"),
      bare("nrd", Unit::none, 1, 0, [](const TagContext& c) { return rainDays(c, monthStart(c), kRainDay); },
           "number of days this month with rain"),
      unknown("nrdm", "a monthly climate-summary figure about days of rain"),
      bare("nrin01", Unit::none, 1, 0, [](const TagContext& c) { return rainDays(c, monthStart(c), 0.254 - 0.001); },
           "number of days this month with 0.01 in (0.25 mm) of rain or more"),
      bare("nrin10", Unit::none, 1, 0, [](const TagContext& c) { return rainDays(c, monthStart(c), 2.54 - 0.001); },
           "number of days this month with 0.10 in (2.5 mm) of rain or more"),
      unknown("nrin10s", "a monthly climate-summary count of days of rain"),
      number("nrn", Unit::rain, 1, 1,
             [](const TagContext& c) -> TagValue {
               const DayFigures* d = wettestDay(c);
               return d ? TagValue(d->rain) : noData();
             },
             "most rain in one day this month (from the logs)"),
      bare("nrnd", Unit::none, 1, 0,
           [](const TagContext& c) -> TagValue {
             const DayFigures* d = wettestDay(c);
             return d ? TagValue(civilDate(d->day).day) : noData();
           },
           "day of the month with this month's most rain"),
      text("nrndm",
           [](const TagContext& c) -> TagValue {
             const DayFigures* d = wettestDay(c);
             return d ? TagValue(dayMonthText(c, d->day)) : noData();
           },
           "date of the day with this month's most rain (day/month, or month/day with US dates)"),
      number("nrs", Unit::rain, 1, 1, [](const TagContext& c) { return monthRain(c, c.now.month, false); }, "rain this month"),
      longTerm("nrsn", "normal rain of this calendar month"),
      missing("nsunt", "total hours of sunshine this month; the program works out no sunshine hours"),
      unknown("nwt", "a monthly climate-summary figure"),
      unknown("nwtn", "a monthly climate-summary figure"),
      bare("rai01", Unit::none, 1, 0, [](const TagContext& c) { return rainDays(c, monthStart(c), 0.1 - 0.001); },
           "number of days this month with 0.1 mm of rain or more"),
      bare("rai1", Unit::none, 1, 0, [](const TagContext& c) { return rainDays(c, monthStart(c), 1.0 - 0.001); },
           "number of days this month with 1 mm of rain or more"),
  };
  rows.insert(rows.end(), rain.begin(), rain.end());

  for (int m : {4, 8})
    rows.push_back(number(std::string("rain") + kMonthKeys[m - 1], Unit::rain, 1, 1,
                          [m](const TagContext& c) { return monthRain(c, m, false); },
                          std::string("rain in ") + kMonthNames[m - 1] + " this year (\"---\" before it comes)"));

  const std::vector<TagDef> changes = {
      number("rainchange24hour", Unit::rain, 1, 1, [](const TagContext& c) { return rainMinutesSince(c, nowKey(c) - kDay + 1); },
             "rain in the last 24 hours"),
      number("rainchangemonth", Unit::rain, 1, 1,
             [](const TagContext& c) -> TagValue {
               const TagValue before = rainToDateMonthAgo(c);
               if (!c.readingsSeen || before.missing()) return noData();
               return c.live.monthlyrain - *before.number();
             },
             "this month's rain so far less last month's rain up to the same day"),
      number("rainchangeyear", Unit::rain, 1, 1,
             [](const TagContext& c) -> TagValue {
               const TagValue before = rainToDateYearAgo(c);
               if (!c.readingsSeen || before.missing()) return noData();
               return c.live.yearlyrain - *before.number();
             },
             "this year's rain so far less last year's up to the same date"),
      number("raincurrentweek", Unit::rain, 1, 1, [](const TagContext& c) { return rainSince(c, weekStart(c)); },
             "rain this week, since Monday"),
  };
  rows.insert(rows.end(), changes.begin(), changes.end());
  rows.push_back(number("raindec", Unit::rain, 1, 1, [](const TagContext& c) { return monthRain(c, 12, false); },
                        "rain in December this year (\"---\" before it comes)"));
  rows.push_back(longTerm("raindifffromav", "this month's rain less the average of this calendar month"));
  rows.push_back(longTerm("raindifffromavyear", "this year's rain less the average yearly rain"));
  rows.push_back(bare("rainduration", Unit::none, 1, 1,
                      [](const TagContext& c) { return hoursSince(c, lastHourKey(c, 0), &Tally::minutesWithRain); },
                      "hours with rain today since midnight (minutes of the log with rain)"));
  rows.push_back(number("rainfeb", Unit::rain, 1, 1, [](const TagContext& c) { return monthRain(c, 2, false); },
                        "rain in February this year (\"---\" before it comes)"));
  rows.push_back(number("rainforweek", Unit::rain, 1, 1, [](const TagContext& c) { return rainMinutesSince(c, nowKey(c) - 7 * kDay + 1); },
                        "rain over the last 7 days"));
  for (int m : {1, 7, 6})
    rows.push_back(number(std::string("rain") + kMonthKeys[m - 1], Unit::rain, 1, 1,
                          [m](const TagContext& c) { return monthRain(c, m, false); },
                          std::string("rain in ") + kMonthNames[m - 1] + " this year (\"---\" before it comes)"));

  const std::vector<TagDef> recent = {
      number("rainlast10min", Unit::rain, 1, 1, [](const TagContext& c) { return rainMinutesSince(c, nowKey(c) - 9); },
             "rain in the last 10 minutes"),
      number("rainlast12hourmm", Unit::mm, 1, 1, [](const TagContext& c) { return rainMinutesSince(c, nowKey(c) - 12 * 60 + 1); },
             "rain in the last 12 hours in mm"),
      number("rainlast3hourmm", Unit::mm, 1, 1, [](const TagContext& c) { return rainMinutesSince(c, nowKey(c) - 3 * 60 + 1); },
             "rain in the last 3 hours in mm"),
      number("rainlast6hourmm", Unit::mm, 1, 1, [](const TagContext& c) { return rainMinutesSince(c, nowKey(c) - 6 * 60 + 1); },
             "rain in the last 6 hours in mm"),
      number("rainlasthourmm", Unit::mm, 1, 1, [](const TagContext& c) { return rainMinutesSince(c, nowKey(c) - 59); },
             "rain in the last hour in mm"),
      number("rainlastmin", Unit::rain, 1, 2, [](const TagContext& c) { return reading(c, rainLastMinuteMm(c.live)); },
             "rain in the last minute"),
  };
  rows.insert(rows.end(), recent.begin(), recent.end());
  for (int m : {3, 5, 11, 10}) {
    rows.push_back(number(std::string("rain") + kMonthKeys[m - 1], Unit::rain, 1, 1,
                          [m](const TagContext& c) { return monthRain(c, m, false); },
                          std::string("rain in ") + kMonthNames[m - 1] + " this year (\"---\" before it comes)"));
  }
  const std::array<std::pair<const char*, int>, 7> weekdays{{{"rainonfriday", 4},
                                                             {"rainonmonday", 0},
                                                             {"rainonsaturday", 5},
                                                             {"rainonsunday", 6},
                                                             {"rainonthursday", 3},
                                                             {"rainontuesday", 1},
                                                             {"rainonwedensday", 2}}};
  constexpr std::array<const char*, 7> kWeekdayNames{"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"};
  for (const auto& [name, index] : weekdays)
    rows.push_back(number(name, Unit::rain, 1, 1, [index](const TagContext& c) { return rainOnWeekday(c, index); },
                          std::string("rain on ") + kWeekdayNames[index] + " of this week (0 for days still to come)"));

  const std::vector<TagDef> last = {
      number("rainsep", Unit::rain, 1, 1, [](const TagContext& c) { return monthRain(c, 9, false); },
             "rain in September this year (\"---\" before it comes)"),
      number("raintodatemonthago", Unit::rain, 1, 1, rainToDateMonthAgo,
             "last month's rain up to the same day of the month"),
      number("raintodateyearago", Unit::rain, 1, 1, rainToDateYearAgo,
             "the year's rain up to this date last year (the log's year total at the end of that day)"),
      number("raintodateyearagotoday", Unit::rain, 1, 1,
             [](const TagContext& c) -> TagValue {
               const DayFigures* day = logs(c).dayAt(sameDayMonthsBack(c, 12));
               return day ? TagValue(day->rain) : noData();
             },
             "rain on this date last year"),
      bare("rais10", Unit::none, 1, 0, [](const TagContext& c) { return rainDays(c, monthStart(c), 10.0 - 0.001); },
           "number of days this month with 10 mm of rain or more"),
      number("seasonavtemp", Unit::temperature, 1, 1,
             [](const TagContext& c) { return mean(tallyOfDays(c, meteorologicalSeasonStart(c)).temp); },
             "average temperature this season so far (seasons of three months from December, March, June, September)"),
      number("seasonmaxtemp", Unit::temperature, 1, 1,
             [](const TagContext& c) { return TagValue(tallyOfDays(c, meteorologicalSeasonStart(c)).temp.highest()); },
             "highest temperature this season so far (seasons of three months from December, March, June, September)"),
      number("seasonmintemp", Unit::temperature, 1, 1,
             [](const TagContext& c) { return TagValue(tallyOfDays(c, meteorologicalSeasonStart(c)).temp.lowest()); },
             "lowest temperature this season so far (seasons of three months from December, March, June, September)"),
      unknown("tempfortimedate", "a temperature for a time and date"),
      missing("todaysolarhrs", "hours of sunshine today; the program works out no sunshine hours"),
      number("tsum", Unit::temperatureChange, 1, 1, [](const TagContext& c) { return degreeDays(c, yearStart(c), effective); },
             "effective temperature sum this year: each day's mean ((highest + lowest) / 2) above 5 °C, added up"),
      longTerm("wettestcurrmonth", "rain of the wettest current calendar month on record"),
  };
  rows.insert(rows.end(), last.begin(), last.end());
  for (int m : {1, 10, 11, 12, 2, 3, 4, 5, 6, 7, 8, 9})
    rows.push_back(longTerm(fmt::format("wettestmonth{}", m), fmt::format("rain of the wettest {} on record", kMonthNames[m - 1])));

  const std::vector<TagDef> end = {
      longTerm("wettestyear", "rain of the wettest year on record"),
      longTerm("wettestyearyear", "the wettest year on record"),
      bare("windruntodatethismonth", Unit::none, 1, 1,
           [](const TagContext& c) { return windRun(c, windRunOfDays(c, monthStart(c), today(c))); },
           "wind run this month (km; miles for mph, nautical miles for knots)"),
      bare("windruntodatethisyear", Unit::none, 1, 1,
           [](const TagContext& c) { return windRun(c, windRunOfDays(c, yearStart(c), today(c))); },
           "wind run this year (km; miles for mph, nautical miles for knots)"),
      bare("windruntoday", Unit::none, 1, 1,
           [](const TagContext& c) { return windRun(c, windRunOfDays(c, today(c), today(c))); },
           "wind run today since midnight (km; miles for mph, nautical miles for knots)"),
      bare("windrunyesterday", Unit::none, 1, 1,
           [](const TagContext& c) { return windRun(c, windRunOfDays(c, today(c) - 1, today(c) - 1)); },
           "wind run yesterday (km; miles for mph, nautical miles for knots)"),
      bare("wover13", Unit::none, 1, 0, [](const TagContext& c) { return daysWithGustOver(c, 13); },
           "number of days this month with a gust over 13 m/s"),
      bare("wover17", Unit::none, 1, 0, [](const TagContext& c) { return daysWithGustOver(c, 17); },
           "number of days this month with a gust over 17 m/s"),
      bare("wover21", Unit::none, 1, 0, [](const TagContext& c) { return daysWithGustOver(c, 21); },
           "number of days this month with a gust over 21 m/s"),
      missing("yearmaxtempfortodayfromyourdata",
              "year of the highest temperature of today's date in your logs; the program reads no earlier years' logs"),
      missing("yearmintempfortodayfromyourdata",
              "year of the lowest temperature of today's date in your logs; the program reads no earlier years' logs"),
      number("yeartodateavtemp", Unit::temperature, 1, 1, [](const TagContext& c) { return mean(tallyOfDays(c, yearStart(c)).temp); },
             "average temperature this year"),
      number("yeartodateavwind", Unit::speed, 1, 1, [](const TagContext& c) { return mean(tallyOfDays(c, yearStart(c)).wind); },
             "average wind speed this year"),
      number("yeartodategstwind", Unit::speed, 1, 1,
             [](const TagContext& c) { return TagValue(tallyOfDays(c, yearStart(c)).gust.highest()); },
             "highest gust this year"),
      missing("yeartodatesolarhrs", "hours of sunshine this year; the program works out no sunshine hours"),
  };
  rows.insert(rows.end(), end.begin(), end.end());
  return rows;
}

}  // namespace nimbrel
