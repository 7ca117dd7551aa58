#pragma once
// The sun and moon figures of one fill, worked out from the moment of the
// fill and the station's position, for the almanac tags to share. Each part
// is worked out when a tag first needs it and kept in the fill's TagCaches.
//
// The day is the local calendar day of the fill (from local midnight to the
// next, 23 or 25 hours on the days the clocks change).

#include <optional>
#include <string>

#include "core/clock.h"
#include "publish/tags/almanac/astronomy.h"

namespace nimbrel {
struct TagContext;
struct StationPosition;
}  // namespace nimbrel

namespace nimbrel::almanac {

// The local day's span as Julian days; `daysLater` counts from today.
struct DaySpan {
  double start = 0;
  double end = 0;
};
DaySpan localDay(const LocalTime& now, int daysLater = 0);

struct SunDay {
  astro::DayEvents sun;            // sunrise, sunset, transit
  astro::DayEvents civil;          // the sun at -6°
  astro::DayEvents astronomical;   // the sun at -18°
  double yesterdayDaylight = 0;    // days
  bool upNow = false;              // the upper limb above the horizon at the fill
};

struct MoonDay {
  astro::DayEvents today;
  std::optional<double> nextRise;  // the first rising and setting after the fill
  std::optional<double> nextSet;
};

// The lunation the fill falls in and the phases around it.
struct MoonMonth {
  long lunation = 0;  // Meeus's k: 0 began on 6 January 2000
  double newMoon = 0;
  double firstQuarter = 0;
  double fullMoon = 0;
  double lastQuarter = 0;
  double nextNewMoon = 0;
  double nextFullMoon = 0;
  double ageDays = 0;
  double illuminated = 0;  // 0-1
  std::string phaseName;
  astro::Apsis perigee;  // the next after the fill
  astro::Apsis apogee;
};

// The sun's events of one local day at one place, which a fill's moment
// does not change: kept across fills (TagMemory).
struct SunDayEvents {
  int year = 0, month = 0, day = 0;
  double latitude = 0, longitude = 0;
  astro::DayEvents sun, civil, astronomical;
  double yesterdayDaylight = 0;
};
SunDayEvents workOutSunDayEvents(const LocalTime& now, const astro::Place& place);

// The moon's rising, transit and setting of one local day at one place.
struct MoonDayEvents {
  int year = 0, month = 0, day = 0;
  double latitude = 0, longitude = 0;
  astro::DayEvents today;
};

std::optional<astro::Place> placeOf(const StationPosition& position);

SunDay workOutSunDay(double nowJd, const LocalTime& now, const astro::Place& place);
MoonDay workOutMoonDay(double nowJd, const LocalTime& now, const astro::Place& place);
MoonMonth workOutMoonMonth(double nowJd, const LocalTime& now, astro::Memo* memo = nullptr);

// The fill's figures, from its cache: nullptr when the station's position
// is not set.
const SunDay* sunDay(const TagContext& context);
const MoonDay* moonDay(const TagContext& context);
const MoonMonth& moonMonth(const TagContext& context);

}  // namespace nimbrel::almanac
