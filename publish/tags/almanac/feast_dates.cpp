#include "publish/tags/almanac/feast_dates.h"

#include <cmath>

#include "publish/tags/almanac/astronomy.h"

namespace nimbrel::almanac {
namespace {

// Days counted from 1 January of year 1 (that day is 1), as the calendar
// arithmetic of the Hebrew year is usually written.
constexpr long kDayOfUnixEpoch = 719163;

CalendarDate dateOfDay(long day) { return civilDate(static_cast<int>(day - kDayOfUnixEpoch)); }

// Days from the Hebrew epoch to the molad-determined start of year `y`,
// with the postponement that keeps Rosh Hashanah off Sunday, Wednesday and
// Friday. Months and parts (1/1080 hour) from the molad of year 1.
long hebrewElapsedDays(long y) {
  const long months = (235 * y - 234) / 19;
  const long parts = 12084 + 13753 * months;
  long days = 29 * months + parts / 25920;
  if ((3 * (days + 1)) % 7 < 3) ++days;
  return days;
}

// The further postponements that keep every year 353-355 or 383-385 days long.
long hebrewYearDelay(long y) {
  const long before = hebrewElapsedDays(y - 1);
  const long at = hebrewElapsedDays(y);
  const long after = hebrewElapsedDays(y + 1);
  if (after - at == 356) return 2;
  if (at - before == 382) return 1;
  return 0;
}

constexpr long kHebrewEpoch = -1373427;  // the day before 1 Tishri of year 1, in the count above

long roshHashanah(long hebrewYear) {
  return kHebrewEpoch + hebrewElapsedDays(hebrewYear) + hebrewYearDelay(hebrewYear);
}

// The day, counted as above, on which a moment falls in UTC+8.
long chinaDay(double jd) {
  return static_cast<long>(std::floor(jd + 8.0 / 24.0 - 1721424.5));
}

}  // namespace

CalendarDate easterSunday(int year) {
  const int a = year % 19;
  const int b = year / 100;
  const int c = year % 100;
  const int d = b / 4;
  const int e = b % 4;
  const int f = (b + 8) / 25;
  const int g = (b - f + 1) / 3;
  const int h = (19 * a + b - d - g + 15) % 30;
  const int i = c / 4;
  const int k = c % 4;
  const int l = (32 + 2 * e + 2 * i - h - k) % 7;
  const int m = (a + 11 * h + 22 * l) / 451;
  const int n = h + l - 7 * m + 114;
  return {year, n / 31, n % 31 + 1};
}

CalendarDate pesach(int year) {
  // The Hebrew year 3761 + y begins in the autumn of the Gregorian year y.
  return dateOfDay(roshHashanah(3761L + year) - 163);
}

CalendarDate chineseNewYear(int year) {
  const long solstice = chinaDay(astro::seasonStart(year - 1, astro::Season::decemberSolstice));
  long k = astro::lunationAt(astro::seasonStart(year - 1, astro::Season::decemberSolstice));
  // The month holding the solstice starts with the last new moon on or before its day.
  while (chinaDay(astro::phaseOfLunation(k + 1, astro::Phase::newMoon)) <= solstice) ++k;
  while (chinaDay(astro::phaseOfLunation(k, astro::Phase::newMoon)) > solstice) --k;
  return dateOfDay(chinaDay(astro::phaseOfLunation(k + 2, astro::Phase::newMoon)));
}

}  // namespace nimbrel::almanac
