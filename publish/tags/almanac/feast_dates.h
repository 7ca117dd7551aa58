#pragma once
// The dates of movable feasts in a Gregorian year: Easter Sunday, the first
// day of Pesach (15 Nisan) and the Chinese New Year.

#include "publish/tags/civil_calendar.h"

namespace nimbrel::almanac {

using CalendarDate = CivilDate;

// Western Easter: the anonymous Gregorian computus (Meeus, Butcher).
CalendarDate easterSunday(int year);

// 15 Nisan of the Hebrew year that begins in the autumn before: the
// arithmetic Hebrew calendar (molad of Tishri and its postponements),
// 163 days before the next Rosh Hashanah.
CalendarDate pesach(int year);

// The first day of the Chinese year that begins in `year`: the day (in
// China's time, UTC+8) of the second new moon after the one that starts
// the month holding the December solstice. Years in which a leap month
// falls between the solstice and the new year (such as 2033) are not
// recognised.
CalendarDate chineseNewYear(int year);

}  // namespace nimbrel::almanac
