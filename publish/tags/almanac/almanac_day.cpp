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

namespace {

template <class Events>
bool sameDayAndPlace(const std::optional<Events>& e, const LocalTime& now, const astro::Place& place) {
  return e && e->year == now.year && e->month == now.month && e->day == now.day && e->latitude == place.latitude &&
         e->longitude == place.longitude;
}

MoonDay moonDayOf(const astro::DayEvents& today, double nowJd, const astro::Place& place) {
  MoonDay m;
  m.today = today;
  // The moon rises and sets about 50 minutes later each day: within two
  // days of any moment there is a rising and a setting, but at high latitudes.
  const astro::DayEvents ahead = astro::moonEvents(nowJd, nowJd + 2.0, place);
  m.nextRise = ahead.rise;
  m.nextSet = ahead.set;
  return m;
}

}  // namespace

MoonDay workOutMoonDay(double nowJd, const LocalTime& now, const astro::Place& place) {
  const DaySpan today = localDay(now);
  return moonDayOf(astro::moonEvents(today.start, today.end, place), nowJd, place);
}

MoonMonth workOutMoonMonth(double nowJd, const LocalTime& now, astro::Memo* memo) {
  auto phase = [memo](long k, astro::Phase p) {
    return memo != nullptr ? memo->phase(k, p) : astro::phaseOfLunation(k, p);
  };
  MoonMonth m;
  m.lunation = astro::lunationAt(nowJd, memo);
  m.newMoon = phase(m.lunation, astro::Phase::newMoon);
  m.firstQuarter = phase(m.lunation, astro::Phase::firstQuarter);
  m.fullMoon = phase(m.lunation, astro::Phase::fullMoon);
  m.lastQuarter = phase(m.lunation, astro::Phase::lastQuarter);
  m.nextNewMoon = phase(m.lunation + 1, astro::Phase::newMoon);
  m.nextFullMoon = nowJd < m.fullMoon ? m.fullMoon : phase(m.lunation + 1, astro::Phase::fullMoon);
  m.ageDays = nowJd - m.newMoon;
  m.illuminated = astro::moonIlluminated(nowJd);
  m.phaseName = phaseName(m, now, nowJd);
  m.perigee = astro::nextPerigee(nowJd, memo);
  m.apogee = astro::nextApogee(nowJd, memo);
  return m;
}

const SunDay* sunDay(const TagContext& context) {
  const auto place = placeOf(context.options.position);
  if (!place) return nullptr;
  auto& cached = context.caches.sunDay;
  if (!cached) {
    auto& events = context.memory.sunEvents;
    const LocalTime& now = context.now;
    if (!sameDayAndPlace(events, now, *place)) events = workOutSunDayEvents(now, *place);
    cached = sunDayOf(*events, astro::julianDay(context.instant), *place);
  }
  return &*cached;
}

const MoonDay* moonDay(const TagContext& context) {
  const auto place = placeOf(context.options.position);
  if (!place) return nullptr;
  auto& cached = context.caches.moonDay;
  if (!cached) {
    auto& events = context.memory.moonEvents;
    const LocalTime& now = context.now;
    if (!sameDayAndPlace(events, now, *place)) {
      const DaySpan today = localDay(now);
      events = MoonDayEvents{now.year, now.month, now.day, place->latitude, place->longitude,
                             astro::moonEvents(today.start, today.end, *place)};
    }
    cached = moonDayOf(events->today, astro::julianDay(context.instant), *place);
  }
  return &*cached;
}

const MoonMonth& moonMonth(const TagContext& context) {
  auto& cached = context.caches.moonMonth;
  if (!cached) cached = workOutMoonMonth(astro::julianDay(context.instant), context.now, &context.memory.astro);
  return *cached;
}

}  // namespace nimbrel::almanac
