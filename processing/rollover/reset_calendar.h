#pragma once
// Dates and hours of the day's rollover.
//
// The extremes of a day end at the daily reset hour: 9 when "Reset times" is
// "9am", otherwise the custom hour of "New daily reset time" / "number"
// (0, midnight, when it is empty). Today's rain ends at "rain number" when
// that differs from "number"; when the two are equal (an empty "rain number"
// reads as "number") the rain resets together with the extremes, also with
// the 9 am reset.
//
// A "reset day" is named by the date on which it started: at 08:59 with a
// 9 am reset the reset day is still yesterday's date.

#include <optional>
#include <string>
#include <string_view>

#include "core/clock.h"
#include "core/unit_choices.h"
#include "core/unit_settings.h"

namespace nimbrel {

struct CalendarDate {
  int year = 0;
  int month = 0;  // 1-12
  int day = 0;    // 1-31

  friend bool operator==(const CalendarDate&, const CalendarDate&) = default;
};

int dailyResetHourOf(const ResetSettings& resets);
int rainResetHourOf(const ResetSettings& resets);

CalendarDate dateOf(const LocalTime& time);
CalendarDate nextDay(CalendarDate date);
CalendarDate previousDay(CalendarDate date);
// 0 = Sunday, as LocalTime::weekday.
int weekdayOf(CalendarDate date);

// The date of the latest reset at `hour` at or before `now`.
CalendarDate resetDateAt(const LocalTime& now, int hour);
// `hour`:00 on `date`, with its weekday and day of the year.
LocalTime momentAt(CalendarDate date, int hour);

// The date that the rain reset at `at` files today's rain under: the
// present date, except that a reset at midnight files it under the day
// before. On the first of a month that is the last day of the previous month
// from a fixed table of month lengths in which February always has 28 days,
// also in leap years; stored rain dates have always been written that way.
CalendarDate rainDayEndingAt(const LocalTime& at);

// "28/2" (day/month), or "2/28" when the date order is the US one.
std::string shortDateText(CalendarDate date, UnitSystem order);

// "2024-02-29", the form the rollover keeps its own dates in.
std::string isoDateText(CalendarDate date);
bool parseIsoDate(std::string_view text, CalendarDate& date);

// Whether a month starting with `seasonMonth` lies after the month of `from`
// and not after the month of `to`.
bool monthStartsBetween(CalendarDate from, CalendarDate to, int seasonMonth);

// A reset that is due: its moment and the date of the reset before it. The
// month and year ends are found against that earlier reset, so that a
// program that was off over the first of a month still ends the month at its
// next reset. With no earlier reset known, the first of a month is a month
// end.
struct DayChange {
  LocalTime at;
  std::optional<CalendarDate> previous;

  bool startsNewMonth() const;
  bool startsNewYear() const;
  // The month (1-12) that ended, when startsNewMonth().
  int endedMonth() const;
  // Whether `month` (1-12) has started since the earlier reset.
  bool startsMonth(int month) const;
};

}  // namespace nimbrel
