#pragma once
// Dates and minutes on the civil calendar, as the monthly logs write them:
// no time zone, no daylight saving. Days are counted from 1970-01-01 (day 0)
// on the proleptic Gregorian calendar, minutes from its midnight, so that a
// log line "15 6 2026 14 30" and the moment of a fill compare directly.

#include <array>

#include "core/clock.h"

namespace nimbrel {

int dayNumber(int year, int month, int day);
struct CivilDate {
  int year = 0;
  int month = 0;
  int day = 0;
  friend bool operator==(const CivilDate&, const CivilDate&) = default;
};
CivilDate civilDate(int dayNumber);
int daysInMonth(int year, int month);
// The same day of the month `months` calendar months before `date`; the
// month's last day when that month is shorter (29 February a year back
// falls on the 28th).
CivilDate monthsBefore(const CivilDate& date, int months);

// English names of the months (January first) and of the days (Sunday
// first, as LocalTime::weekday counts), and the three-letter lower-case month
// keys that tag names and settings keys use ("jan").
inline constexpr std::array<const char*, 12> kMonthNames{"January", "February", "March",     "April",
                                                         "May",     "June",     "July",      "August",
                                                         "September", "October", "November", "December"};
inline constexpr std::array<const char*, 12> kMonthKeys{"jan", "feb", "mar", "apr", "may", "jun",
                                                        "jul", "aug", "sep", "oct", "nov", "dec"};
inline constexpr std::array<const char*, 7> kDayNames{"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                      "Thursday", "Friday", "Saturday"};

inline constexpr long long kMinutesPerDay = 24 * 60;

long long civilMinute(int year, int month, int day, int hour, int minute);
inline long long civilMinute(const LocalTime& t) { return civilMinute(t.year, t.month, t.day, t.hour, t.minute); }
// The last civil minute at or before `minute` when the clock showed
// `hour`:00: the start of the day holding `minute` for a day that begins
// at that hour.
long long lastTimeAtHour(long long minute, int hour);
// The calendar time of a civil minute (weekday and day of the year filled in too).
LocalTime civilTime(long long minute);

}  // namespace nimbrel
