#include "publish/tags/civil_calendar.h"

#include <algorithm>

namespace nimbrel {

// The era arithmetic: years counted from March, so that the leap day ends
// a year, in 400-year eras of 146097 days.
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

CivilDate monthsBefore(const CivilDate& date, int months) {
  const int index = date.year * 12 + date.month - 1 - months;
  const int year = index / 12;
  const int month = index % 12 + 1;
  return {year, month, std::min(date.day, daysInMonth(year, month))};
}

long long civilMinute(int year, int month, int day, int hour, int minute) {
  return dayNumber(year, month, day) * kMinutesPerDay + hour * 60LL + minute;
}

long long lastTimeAtHour(long long minute, int hour) {
  const long long shifted = minute - hour * 60LL;
  const long long day = shifted >= 0 ? shifted / kMinutesPerDay : (shifted - kMinutesPerDay + 1) / kMinutesPerDay;
  return day * kMinutesPerDay + hour * 60LL;
}

LocalTime civilTime(long long minute) {
  long long days = minute / kMinutesPerDay;
  long long rest = minute % kMinutesPerDay;
  if (rest < 0) {
    rest += kMinutesPerDay;
    --days;
  }
  const CivilDate date = civilDate(static_cast<int>(days));
  LocalTime t;
  t.year = date.year;
  t.month = date.month;
  t.day = date.day;
  t.hour = static_cast<int>(rest / 60);
  t.minute = static_cast<int>(rest % 60);
  t.weekday = static_cast<int>(((days + 4) % 7 + 7) % 7);  // 1 January 1970 was a Thursday
  t.yearday = static_cast<int>(days - dayNumber(t.year, 1, 1));
  return t;
}

}  // namespace nimbrel
