#include "publish/tags/almanac/almanac_day.h"

#include <array>

#include "publish/tags/tag_context.h"

namespace nimbrel::almanac {
namespace {

bool sameLocalDay(double jd, const LocalTime& now) {
  const LocalTime t = toLocalTime(astro::fromJulianDay(jd));
  return t.year == now.year && t.month == now.month && t.day == now.day;
}

// A principal phase on the fill's local day names the day; between them
// the moon is a crescent or gibbous, waxing or waning.
std::string phaseName(const MoonMonth& m, const LocalTime& now, double nowJd) {
  const std::array<std::pair<double, const char*>, 5> named = {{
      {m.newMoon, "New Moon"},
      {m.firstQuarter, "First Quarter"},
      {m.fullMoon, "Full Moon"},
      {m.lastQuarter, "Last Quarter"},
      {m.nextNewMoon, "New Moon"},
  }};
  for (const auto& [jd, name] : named)
    if (sameLocalDay(jd, now)) return name;
  if (nowJd < m.firstQuarter) return "Waxing Crescent";
  if (nowJd < m.fullMoon) return "Waxing Gibbous";
  if (nowJd < m.lastQuarter) return "Waning Gibbous";
  return "Waning Crescent";
}

}  // namespace

DaySpan localDay(const LocalTime& now, int daysLater) {
  const int day = now.day + daysLater;
  return {astro::julianDay(fromLocalTime(now.year, now.month, day, 0, 0, 0)),
          astro::julianDay(fromLocalTime(now.year, now.month, day + 1, 0, 0, 0))};
}

std::optional<astro::Place> placeOf(const StationPosition& position) {
  if (!position.latitude || !position.longitude) return std::nullopt;
  return astro::Place{*position.latitude, *position.longitude};
}

SunDayEvents workOutSunDayEvents(const LocalTime& now, const astro::Place& place) {
  const DaySpan today = localDay(now);
  const DaySpan yesterday = localDay(now, -1);
  SunDayEvents e;
  e.year = now.year;
  e.month = now.month;
  e.day = now.day;
  e.latitude = place.latitude;
  e.longitude = place.longitude;
  e.sun = astro::sunEvents(today.start, today.end, place);
  e.civil = astro::sunEvents(today.start, today.end, place, astro::SunHorizon::civil);
  e.astronomical = astro::sunEvents(today.start, today.end, place, astro::SunHorizon::astronomical);
  e.yesterdayDaylight = astro::sunEvents(yesterday.start, yesterday.end, place).daysAbove;
  return e;
}

namespace {

SunDay sunDayOf(const SunDayEvents& e, double nowJd, const astro::Place& place) {
  SunDay s;
  s.sun = e.sun;
  s.civil = e.civil;
  s.astronomical = e.astronomical;
  s.yesterdayDaylight = e.yesterdayDaylight;
  const double sunAltitude = astro::altitude(astro::sunPosition(nowJd + astro::deltaTSeconds(nowJd) / 86400.0),
                                             nowJd, place);
  s.upNow = sunAltitude > -0.8333;
  return s;
}

}  // namespace

SunDay workOutSunDay(double nowJd, const LocalTime& now, const astro::Place& place) {
  return sunDayOf(workOutSunDayEvents(now, place), nowJd, place);
}

MoonDay workOutMoonDay(double nowJd, const LocalTime& now, const astro::Place& place) {
  const DaySpan today = localDay(now);
  MoonDay m;
  m.today = astro::moonEvents(today.start, today.end, place);
  // The moon rises and sets about 50 minutes later each day: within two
  // days of any moment there is a rising and a setting, but at high latitudes.
  const astro::DayEvents ahead = astro::moonEvents(nowJd, nowJd + 2.0, place);
  m.nextRise = ahead.rise;
  m.nextSet = ahead.set;
  return m;
}

MoonMonth workOutMoonMonth(double nowJd, const LocalTime& now) {
  MoonMonth m;
  m.lunation = astro::lunationAt(nowJd);
  m.newMoon = astro::phaseOfLunation(m.lunation, astro::Phase::newMoon);
  m.firstQuarter = astro::phaseOfLunation(m.lunation, astro::Phase::firstQuarter);
  m.fullMoon = astro::phaseOfLunation(m.lunation, astro::Phase::fullMoon);
  m.lastQuarter = astro::phaseOfLunation(m.lunation, astro::Phase::lastQuarter);
  m.nextNewMoon = astro::phaseOfLunation(m.lunation + 1, astro::Phase::newMoon);
  m.nextFullMoon = nowJd < m.fullMoon ? m.fullMoon : astro::phaseOfLunation(m.lunation + 1, astro::Phase::fullMoon);
  m.ageDays = nowJd - m.newMoon;
  m.illuminated = astro::moonIlluminated(nowJd);
  m.phaseName = phaseName(m, now, nowJd);
  m.perigee = astro::nextPerigee(nowJd);
  m.apogee = astro::nextApogee(nowJd);
  return m;
}

const SunDay* sunDay(const TagContext& context) {
  const auto place = placeOf(context.options.position);
  if (!place) return nullptr;
  auto& cached = context.caches.sunDay;
  if (!cached) {
    auto& events = context.memory.sunEvents;
    const LocalTime& now = context.now;
    if (!events || events->year != now.year || events->month != now.month || events->day != now.day ||
        events->latitude != place->latitude || events->longitude != place->longitude)
      events = workOutSunDayEvents(now, *place);
    cached = sunDayOf(*events, astro::julianDay(context.instant), *place);
  }
  return &*cached;
}

const MoonDay* moonDay(const TagContext& context) {
  const auto place = placeOf(context.options.position);
  if (!place) return nullptr;
  auto& cached = context.caches.moonDay;
  if (!cached) cached = workOutMoonDay(astro::julianDay(context.instant), context.now, *place);
  return &*cached;
}

const MoonMonth& moonMonth(const TagContext& context) {
  auto& cached = context.caches.moonMonth;
  if (!cached) cached = workOutMoonMonth(astro::julianDay(context.instant), context.now);
  return *cached;
}

}  // namespace nimbrel::almanac
