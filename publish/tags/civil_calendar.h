#pragma once
// Dates and minutes on the civil calendar, as the monthly logs write them:
// no time zone, no daylight saving. Days are counted from 1970-01-01 (day 0)
// on the proleptic Gregorian calendar, minutes from its midnight, so that a
// log line "15 6 2026 14 30" and the moment of a fill compare directly.

#include "core/clock.h"

namespace nimbrel {

int dayNumber(int year, int month, int day);
struct CivilDate {
  int year = 0;
  int month = 0;
  int day = 0;
};
CivilDate civilDate(int dayNumber);
int daysInMonth(int year, int month);

inline constexpr long long kMinutesPerDay = 24 * 60;

long long civilMinute(int year, int month, int day, int hour, int minute);
inline long long civilMinute(const LocalTime& t) { return civilMinute(t.year, t.month, t.day, t.hour, t.minute); }
// The calendar time of a civil minute (weekday and day of the year filled in too).
LocalTime civilTime(long long minute);

}  // namespace nimbrel
