#include "processing/rollover/reset_calendar.h"

#include <fmt/format.h>

#include <array>
#include <charconv>
#include <chrono>

namespace nimbrel {
namespace {

namespace chr = std::chrono;

constexpr int kNineAm = 9;
constexpr int kMonthsPerYear = 12;
// February keeps 28 days in every year: see rainDayEndingAt.
constexpr std::array<int, kMonthsPerYear> kFixedMonthLengths{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

chr::sys_days daysOf(CalendarDate date) {
  return chr::sys_days{chr::year{date.year} / chr::month{static_cast<unsigned>(date.month)} /
                       chr::day{static_cast<unsigned>(date.day)}};
}

CalendarDate dateFrom(chr::sys_days days) {
  const chr::year_month_day ymd{days};
  return CalendarDate{static_cast<int>(ymd.year()), static_cast<int>(static_cast<unsigned>(ymd.month())),
                      static_cast<int>(static_cast<unsigned>(ymd.day()))};
}

int monthIndex(CalendarDate date) { return date.year * kMonthsPerYear + date.month - 1; }

bool parsePart(std::string_view text, int& value) {
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  return result.ec == std::errc{} && result.ptr == text.data() + text.size();
}

}  // namespace

int dailyResetHourOf(const ResetSettings& resets) {
  return resets.dayReset == DayResetTime::nineAm ? kNineAm : resets.dailyResetHour;
}

int rainResetHourOf(const ResetSettings& resets) {
  return resets.rainResetHour != resets.dailyResetHour ? resets.rainResetHour : dailyResetHourOf(resets);
}

CalendarDate dateOf(const LocalTime& time) { return CalendarDate{time.year, time.month, time.day}; }

CalendarDate nextDay(CalendarDate date) { return dateFrom(daysOf(date) + chr::days{1}); }

CalendarDate previousDay(CalendarDate date) { return dateFrom(daysOf(date) - chr::days{1}); }

int weekdayOf(CalendarDate date) { return static_cast<int>(chr::weekday{daysOf(date)}.c_encoding()); }

CalendarDate resetDateAt(const LocalTime& now, int hour) {
  const CalendarDate today = dateOf(now);
  return now.hour >= hour ? today : previousDay(today);
}

LocalTime momentAt(CalendarDate date, int hour) {
  const chr::sys_days days = daysOf(date);
  const chr::sys_days newYear{chr::year{date.year} / chr::January / 1};
  return LocalTime{.year = date.year,
                   .month = date.month,
                   .day = date.day,
                   .hour = hour,
                   .weekday = weekdayOf(date),
                   .yearday = static_cast<int>((days - newYear).count())};
}

CalendarDate rainDayEndingAt(const LocalTime& at) {
  CalendarDate date = dateOf(at);
  if (at.hour != 0) return date;
  if (date.day > 1) {
    --date.day;
    return date;
  }
  date.month = date.month == 1 ? kMonthsPerYear : date.month - 1;
  if (date.month == kMonthsPerYear) --date.year;
  date.day = kFixedMonthLengths[static_cast<std::size_t>(date.month - 1)];
  return date;
}

std::string shortDateText(CalendarDate date, UnitSystem order) {
  if (order == UnitSystem::usa) return fmt::format("{}/{}", date.month, date.day);
  return fmt::format("{}/{}", date.day, date.month);
}

std::string isoDateText(CalendarDate date) { return fmt::format("{:04}-{:02}-{:02}", date.year, date.month, date.day); }

bool parseIsoDate(std::string_view text, CalendarDate& date) {
  constexpr std::size_t kLength = 10;  // "YYYY-MM-DD"
  if (text.size() != kLength || text[4] != '-' || text[7] != '-') return false;
  CalendarDate parsed;
  if (!parsePart(text.substr(0, 4), parsed.year) || !parsePart(text.substr(5, 2), parsed.month) ||
      !parsePart(text.substr(8, 2), parsed.day))
    return false;
  if (!chr::year_month_day{chr::year{parsed.year} / chr::month{static_cast<unsigned>(parsed.month)} /
                           chr::day{static_cast<unsigned>(parsed.day)}}
           .ok())
    return false;
  date = parsed;
  return true;
}

bool monthStartsBetween(CalendarDate from, CalendarDate to, int seasonMonth) {
  const int monthsPassed = monthIndex(to) - monthIndex(from);
  if (monthsPassed <= 0) return false;
  if (monthsPassed >= kMonthsPerYear) return true;
  int ahead = (seasonMonth - from.month + kMonthsPerYear) % kMonthsPerYear;
  if (ahead == 0) ahead = kMonthsPerYear;
  return ahead <= monthsPassed;
}

bool DayChange::startsNewMonth() const {
  if (!previous) return at.day == 1;
  return previous->year != at.year || previous->month != at.month;
}

bool DayChange::startsNewYear() const {
  if (!previous) return at.day == 1 && at.month == 1;
  return previous->year != at.year;
}

int DayChange::endedMonth() const {
  if (previous) return previous->month;
  return at.month == 1 ? kMonthsPerYear : at.month - 1;
}

bool DayChange::startsMonth(int month) const {
  if (!previous) return at.day == 1 && at.month == month;
  return monthStartsBetween(*previous, dateOf(at), month);
}

}  // namespace nimbrel
