// Date and time forms, sun, moon, seasons, the station itself.
//
// Times are local (the process's time zone) in the owner's time style;
// dates are day/month/year, or month/day/year when the owner's date setting
// is "usa". A date with a time is written "date time". The sun's and the
// moon's risings, settings and transits need the station's position; the
// moon's phases, the seasons and the feasts do not.

#include <fmt/format.h>

#include <array>
#include <chrono>
#include <cmath>

#include "processing/statistics/time_text.h"
#include "publish/tags/almanac/almanac_day.h"
#include "publish/tags/almanac/feast_dates.h"
#include "publish/tags/almanac/last_rain.h"
#include "publish/tags/civil_calendar.h"
#include "publish/tags/tag_rows.h"
#include "publish/tags/tag_tables.h"

namespace nimbrel {

using namespace tagrows;

namespace {


bool usaDates(const TagContext& c) { return c.units.units.date == UnitSystem::usa; }

std::string dateText(const TagContext& c, int year, int month, int day) {
  if (usaDates(c)) return fmt::format("{:02}/{:02}/{}", month, day, year);
  return fmt::format("{:02}/{:02}/{}", day, month, year);
}

std::string dateText(const TagContext& c, const almanac::CalendarDate& d) { return dateText(c, d.year, d.month, d.day); }

LocalTime localOf(double jd) { return toLocalTime(astro::fromJulianDay(jd)); }

std::string timeOf(const TagContext& c, double jd) { return timeconvert(localOf(jd), usaDates(c)); }

std::string dateOf(const TagContext& c, double jd) {
  const LocalTime t = localOf(jd);
  return dateText(c, t.year, t.month, t.day);
}

std::string dateTimeOf(const TagContext& c, double jd) { return dateOf(c, jd) + " " + timeOf(c, jd); }

TagValue timeOf(const TagContext& c, std::optional<double> jd) { return jd ? TagValue(timeOf(c, *jd)) : noData(); }
TagValue dateTimeOf(const TagContext& c, std::optional<double> jd) {
  return jd ? TagValue(dateTimeOf(c, *jd)) : noData();
}

// A length of time in days as hours and minutes, "14:05".
std::string hoursAndMinutes(double days) {
  const long minutes = std::lround(days * 1440.0);
  return fmt::format("{:02}:{:02}", minutes / 60, minutes % 60);
}

// Seconds as well as minutes, in the owner's time style.
std::string timeWithSeconds(const LocalTime& t, bool usa) {
  if (!usa) return fmt::format("{:02}:{:02}:{:02}", t.hour, t.minute, t.second);
  const int twelveHour = t.hour % 12 == 0 ? 12 : t.hour % 12;
  return fmt::format("{}:{:02}:{:02} {}", twelveHour, t.minute, t.second, t.hour < 12 ? "am" : "pm");
}

// The ISO 8601 week: weeks start on Monday, week 1 holds the year's first Thursday.
int isoWeek(const LocalTime& t) {
  const int fromMonday = (t.weekday + 6) % 7;
  const int thursday = dayNumber(t.year, t.month, t.day) + 3 - fromMonday;
  const int firstOfYear = dayNumber(civilDate(thursday).year, 1, 1);
  return (thursday - firstOfYear) / 7 + 1;
}

// Night before 5:00 and from 22:00, early morning to 8:00, morning to noon,
// afternoon to 18:00, evening to 22:00.
const char* greeting(int hour) {
  if (hour < 5 || hour >= 22) return "Night";
  if (hour < 8) return "Early Morning";
  if (hour < 12) return "Morning";
  if (hour < 18) return "Afternoon";
  return "Evening";
}

struct UtcTime {
  int year, month, day, hour, minute, second;
};

UtcTime utcOf(SystemTime t) {
  using namespace std::chrono;
  const auto day = floor<days>(t);
  const year_month_day ymd{day};
  const hh_mm_ss clock{floor<seconds>(t - day)};
  return {static_cast<int>(ymd.year()),
          static_cast<int>(static_cast<unsigned>(ymd.month())),
          static_cast<int>(static_cast<unsigned>(ymd.day())),
          static_cast<int>(clock.hours().count()),
          static_cast<int>(clock.minutes().count()),
          static_cast<int>(clock.seconds().count())};
}

std::string twoDigits(int n) { return fmt::format("{:02}", n); }

// The sun's figures of the day, or "---" without a position.
template <class Pick>
TagSource fromSun(Pick pick) {
  return [pick](const TagContext& c) -> TagValue {
    const almanac::SunDay* s = almanac::sunDay(c);
    return s ? TagValue(pick(c, *s)) : noData();
  };
}

template <class Pick>
TagSource fromMoon(Pick pick) {
  return [pick](const TagContext& c) -> TagValue {
    const almanac::MoonDay* m = almanac::moonDay(c);
    return m ? TagValue(pick(c, *m)) : noData();
  };
}

template <class Pick>
TagSource fromLunation(Pick pick) {
  return [pick](const TagContext& c) -> TagValue { return pick(c, almanac::moonMonth(c)); };
}

// The date only: the sun's position is good to about 0.01°, which puts the
// moment of an equinox or solstice within some ten minutes.
TagSource seasonOf(astro::Season season) {
  return [season](const TagContext& c) -> TagValue { return dateOf(c, astro::seasonStart(c.now.year, season)); };
}

template <class Feast>
TagSource feastOf(Feast feast) {
  return [feast](const TagContext& c) -> TagValue { return dateText(c, feast(c.now.year)); };
}

TagValue stationName(const TagContext& c) {
  const std::string& name = c.units.connections.stationName;
  return name.empty() ? noData() : TagValue(name);
}

using SunDay = almanac::SunDay;
using MoonDay = almanac::MoonDay;
using MoonMonth = almanac::MoonMonth;
using Ctx = const TagContext&;

// The time or date of the last rain: `always` counts today's rain, otherwise
// the last rain on an earlier day ("---" when the logs of the past year hold none).
TagSource lastRainText(bool always, bool date) {
  return [always, date](const TagContext& c) -> TagValue {
    const almanac::LastRain& rain = almanac::lastRain(c);
    const auto& at = always ? rain.latest : rain.beforeToday;
    if (!at) return noData();
    if (date) return dateText(c, at->year, at->month, at->day);
    return timeconvert(*at, usaDates(c));
  };
}
constexpr const char* kNoSunshine =
    "; no sunshine duration is counted here (it needs a sunshine sensor or a radiation threshold history)";

}  // namespace

std::vector<TagDef> almanacTags() {
  return {
      text("chinesenewyear", feastOf(almanac::chineseNewYear), "date of this year's Chinese New Year"),
      text("date", [](Ctx c) -> TagValue { return dateText(c, c.now.year, c.now.month, c.now.day); },
           "today's date (day/month/year, or month/day/year with US dates)"),
      text("date-day", [](Ctx c) -> TagValue { return twoDigits(c.now.day); }, "day of the month, two digits"),
      text("date-month", [](Ctx c) -> TagValue { return twoDigits(c.now.month); }, "month number, two digits"),
      text("date-week", [](Ctx c) -> TagValue { return std::to_string(isoWeek(c.now)); }, "ISO week number (1-53)"),
      text("date-year", [](Ctx c) -> TagValue { return std::to_string(c.now.year); }, "the year, four digits"),
      text("datefmt", [](Ctx c) -> TagValue { return fmt::format("{}-{:02}-{:02}", c.now.year, c.now.month, c.now.day); },
           "today's date as year-month-day (2026-06-15)"),
      text("dateoflastrain", lastRainText(false, true), "date of the last rain before today (from the monthly logs)"),
      text("dateoflastrainalways", lastRainText(true, true), "date of the last rain, today included"),
      text("daylengthyesterday", fromSun([](Ctx, const SunDay& s) { return hoursAndMinutes(s.yesterdayDaylight); }),
           "yesterday's time from sunrise to sunset (hours:minutes)"),
      text("dayname", [](Ctx c) -> TagValue { return kDayNames[c.now.weekday]; }, "name of the day of the week"),
      text("dayornight", fromSun([](Ctx, const SunDay& s) { return s.upNow ? "Day" : "Night"; }),
           "\"Day\" while the sun is above the horizon, otherwise \"Night\""),
      text("decsolstice", seasonOf(astro::Season::decemberSolstice), "date of this year's December solstice"),
      text("easterdate", feastOf(almanac::easterSunday), "date of this year's Easter Sunday (Western)"),
      text("eveningastrotwilight", fromSun([](Ctx c, const SunDay& s) { return timeOf(c, s.astronomical.set); }),
           "end of astronomical twilight tonight (sun 18° below the horizon); \"---\" when it stays lighter"),
      text("eveningciviltwilight", fromSun([](Ctx c, const SunDay& s) { return timeOf(c, s.civil.set); }),
           "end of civil twilight tonight (sun 6° below the horizon)"),
      text("firstquarter", fromLunation([](Ctx c, const MoonMonth& m) { return dateTimeOf(c, m.firstQuarter); }),
           "date and time of this lunation's first quarter"),
      text("formateddate",
           [](Ctx c) -> TagValue {
             const char* day = kDayNames[c.now.weekday];
             const char* month = kMonthNames[c.now.month - 1];
             if (usaDates(c)) return fmt::format("{}, {} {}, {}", day, month, c.now.day, c.now.year);
             return fmt::format("{} {} {} {}", day, c.now.day, month, c.now.year);
           },
           "today's date in words (\"Monday 15 June 2026\", US: \"Monday, June 15, 2026\")"),
      text("fullmoon", fromLunation([](Ctx c, const MoonMonth& m) { return dateTimeOf(c, m.fullMoon); }),
           "date and time of this lunation's full moon"),
      text("fullmoondate", fromLunation([](Ctx c, const MoonMonth& m) { return dateOf(c, m.fullMoon); }),
           "date of this lunation's full moon"),
      text("hoursofpossibledaylight", fromSun([](Ctx, const SunDay& s) { return hoursAndMinutes(s.sun.daysAbove); }),
           "today's time from sunrise to sunset (hours:minutes)"),
      text("junesolstice", seasonOf(astro::Season::juneSolstice), "date of this year's June solstice"),
      text("lastquarter", fromLunation([](Ctx c, const MoonMonth& m) { return dateTimeOf(c, m.lastQuarter); }),
           "date and time of this lunation's last quarter"),
      text("marchequinox", seasonOf(astro::Season::marchEquinox), "date of this year's March equinox"),
      text("monthname", [](Ctx c) -> TagValue { return kMonthNames[c.now.month - 1]; }, "name of the month"),
      number("moonage", Unit::none, 1, 1, fromLunation([](Ctx, const MoonMonth& m) { return m.ageDays; }),
             "the moon's age: days since the last new moon"),
      number("moonaphel", Unit::none, 1, 0,
             fromLunation([](Ctx, const MoonMonth& m) { return m.apogee.distanceKm; }),
             "the moon's distance at its next apogee, km"),
      text("moonapogee", fromLunation([](Ctx c, const MoonMonth& m) { return dateTimeOf(c, m.apogee.jd); }),
           "date and time of the moon's next apogee (farthest from the earth)"),
      missing("mooneclipse", "date of the next lunar eclipse; eclipses are not predicted here"),
      number("moonlunation", Unit::none, 1, 0,
             fromLunation([](Ctx, const MoonMonth& m) { return static_cast<double>(astro::brownLunation(m.lunation)); }),
             "number of the present lunation (Brown's numbering, 1 from January 1923)"),
      text("moonperigee", fromLunation([](Ctx c, const MoonMonth& m) { return dateTimeOf(c, m.perigee.jd); }),
           "date and time of the moon's next perigee (closest to the earth)"),
      number("moonperihel", Unit::none, 1, 0,
             fromLunation([](Ctx, const MoonMonth& m) { return m.perigee.distanceKm; }),
             "the moon's distance at its next perigee, km"),
      number("moonphase", Unit::none, 1, 0,
             fromLunation([](Ctx, const MoonMonth& m) { return m.illuminated * 100.0; }),
             "share of the moon's disc lit by the sun, percent"),
      text("moonphasename", fromLunation([](Ctx, const MoonMonth& m) { return m.phaseName; }),
           "the moon's phase in words (New Moon, Waxing Crescent, First Quarter, ...)"),
      text("moonrise", fromMoon([](Ctx c, const MoonDay& m) { return timeOf(c, m.today.rise); }),
           "time of today's moonrise; \"---\" on a day without one"),
      text("moonrisedate", fromMoon([](Ctx c, const MoonDay& m) { return dateTimeOf(c, m.nextRise); }),
           "date and time of the next moonrise"),
      text("moonset", fromMoon([](Ctx c, const MoonDay& m) { return timeOf(c, m.today.set); }),
           "time of today's moonset; \"---\" on a day without one"),
      text("moonsetdate", fromMoon([](Ctx c, const MoonDay& m) { return dateTimeOf(c, m.nextSet); }),
           "date and time of the next moonset"),
      number("moontransit", Unit::none, 1, 1,
             fromMoon([](Ctx, const MoonDay& m) { return m.today.transit ? TagValue(m.today.transitAltitude) : noData(); }),
             "the moon's height above the horizon at today's transit, degrees"),
      text("moontransittime", fromMoon([](Ctx c, const MoonDay& m) { return timeOf(c, m.today.transit); }),
           "time the moon crosses the meridian today"),
      text("morningastrotwilight", fromSun([](Ctx c, const SunDay& s) { return timeOf(c, s.astronomical.rise); }),
           "start of astronomical twilight this morning (sun 18° below the horizon); \"---\" when it stays lighter"),
      text("morningciviltwilight", fromSun([](Ctx c, const SunDay& s) { return timeOf(c, s.civil.rise); }),
           "start of civil twilight this morning (sun 6° below the horizon)"),
      text("newmoon", fromLunation([](Ctx c, const MoonMonth& m) { return dateTimeOf(c, m.newMoon); }),
           "date and time of the new moon that began this lunation"),
      text("newmoondate", fromLunation([](Ctx c, const MoonMonth& m) { return dateOf(c, m.newMoon); }),
           "date of the new moon that began this lunation"),
      text("nextfullmoon", fromLunation([](Ctx c, const MoonMonth& m) { return dateTimeOf(c, m.nextFullMoon); }),
           "date and time of the next full moon"),
      text("nextfullmoondate", fromLunation([](Ctx c, const MoonMonth& m) { return dateOf(c, m.nextFullMoon); }),
           "date of the next full moon"),
      text("nextnewmoon", fromLunation([](Ctx c, const MoonMonth& m) { return dateTimeOf(c, m.nextNewMoon); }),
           "date and time of the next new moon"),
      text("pesachdate", feastOf(almanac::pesach), "date of this year's first day of Pesach (15 Nisan)"),
      text("sepequinox", seasonOf(astro::Season::septemberEquinox), "date of this year's September equinox"),
      text("solarnoon", fromSun([](Ctx c, const SunDay& s) { return timeOf(c, s.sun.transit); }),
           "time of solar noon (the sun due south or north)"),
      bare("stationaltitude", Unit::none, 1, 0, [](Ctx c) -> TagValue { return c.options.position.altitudeMetres; },
           "the station's height above sea level, metres"),
      bare("stationlatitude", Unit::none, 1, 4,
           [](Ctx c) -> TagValue { return TagValue(c.options.position.latitude); },
           "the station's latitude, decimal degrees (north positive)"),
      bare("stationlongitude", Unit::none, 1, 4,
           [](Ctx c) -> TagValue { return TagValue(c.options.position.longitude); },
           "the station's longitude, decimal degrees (east positive)"),
      text("stationname", stationName, "the station's name as set in the connection settings"),
      missing("suneclipse", "date of the next solar eclipse; eclipses are not predicted here"),
      text("sunrise", fromSun([](Ctx c, const SunDay& s) { return timeOf(c, s.sun.rise); }),
           "time of today's sunrise; \"---\" on a day without one"),
      text("sunset", fromSun([](Ctx c, const SunDay& s) { return timeOf(c, s.sun.set); }),
           "time of today's sunset; \"---\" on a day without one"),
      missing("sunsetdew", "dew point at sunset; no reading is kept for the moment of sunset"),
      missing("sunshinehoursinlast10", std::string("sunshine in the last 10 minutes") + kNoSunshine),
      missing("sunshinehoursinlast10percent", std::string("share of the last 10 minutes with sunshine") + kNoSunshine),
      missing("sunshinehoursinlast60", std::string("sunshine in the last hour") + kNoSunshine),
      missing("sunshinehoursinlast60percent", std::string("share of the last hour with sunshine") + kNoSunshine),
      missing("sunshinehoursinlastwholehour", std::string("sunshine in the last whole clock hour") + kNoSunshine),
      missing("sunshinehourstodateday", std::string("hours of sunshine today") + kNoSunshine),
      missing("sunshinehourstodatemonth", std::string("hours of sunshine this month") + kNoSunshine),
      missing("sunshinehourstodateyear", std::string("hours of sunshine this year") + kNoSunshine),
      missing("sunshineyesterday", std::string("hours of sunshine yesterday") + kNoSunshine),
      number("suntransit", Unit::none, 1, 1,
             fromSun([](Ctx, const SunDay& s) { return s.sun.transit ? TagValue(s.sun.transitAltitude) : noData(); }),
             "the sun's height above the horizon at solar noon, degrees"),
      text("suntransittime", fromSun([](Ctx c, const SunDay& s) { return timeOf(c, s.sun.transit); }),
           "time the sun crosses the meridian (solar noon)"),
      text("time", [](Ctx c) -> TagValue { return timeconvert(c.now, usaDates(c)); }, "time of the fill (hours:minutes)"),
      text("time-hour", [](Ctx c) -> TagValue { return twoDigits(c.now.hour); }, "hour of the fill, 00-23"),
      text("time-minute", [](Ctx c) -> TagValue { return twoDigits(c.now.minute); }, "minute of the fill, 00-59"),
      text("time-second", [](Ctx c) -> TagValue { return twoDigits(c.now.second); }, "second of the fill, 00-59"),
      text("timeofdaygreeting", [](Ctx c) -> TagValue { return greeting(c.now.hour); },
           "part of the day: Night (22:00-5:00), Early Morning (to 8:00), Morning (to noon), Afternoon (to 18:00), "
           "Evening"),
      text("timeoflastrain", lastRainText(false, false), "time of the last minute with rain before today"),
      text("timeoflastrainalways", lastRainText(true, false), "time of the last minute with rain, today included"),
      missing("timeoflowgrass", "time of today's lowest grass temperature; no grass temperature sensor is read"),
      text("timesec", [](Ctx c) -> TagValue { return timeWithSeconds(c.now, usaDates(c)); },
           "time of the fill with seconds"),
      text("utcdate-day", [](Ctx c) -> TagValue { return twoDigits(utcOf(c.instant).day); }, "day of the month in UTC"),
      text("utcdate-month", [](Ctx c) -> TagValue { return twoDigits(utcOf(c.instant).month); }, "month number in UTC"),
      text("utcdate-year", [](Ctx c) -> TagValue { return std::to_string(utcOf(c.instant).year); }, "year in UTC"),
      text("utcdate-yeartwo", [](Ctx c) -> TagValue { return twoDigits(utcOf(c.instant).year % 100); },
           "year in UTC, last two digits"),
      text("utctime-hour", [](Ctx c) -> TagValue { return twoDigits(utcOf(c.instant).hour); }, "hour in UTC, 00-23"),
      text("utctime-minute", [](Ctx c) -> TagValue { return twoDigits(utcOf(c.instant).minute); }, "minute in UTC"),
      text("utctime-second", [](Ctx c) -> TagValue { return twoDigits(utcOf(c.instant).second); }, "second in UTC"),
  };
}

}  // namespace nimbrel
