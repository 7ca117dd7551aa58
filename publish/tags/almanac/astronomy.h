#pragma once
// Positions and events of the sun and the moon for the almanac tags.
//
// Moments are Julian days of Universal Time (JD 2451545.0 = 2000-01-01
// 12:00 UT); the positions are worked out in Terrestrial Time, a little over
// a minute later (deltaTSeconds). Angles are degrees; latitude north and
// longitude east are positive.
//
// Methods:
// - the sun: the low-precision solar coordinates of Meeus, "Astronomical
//   Algorithms" ch. 25, as the NOAA solar calculator uses them (about 0.01°);
// - the moon: Meeus ch. 47 with the larger periodic terms of its longitude,
//   latitude and distance tables (a few hundredths of a degree, some tens
//   of kilometres);
// - sidereal time: Meeus ch. 12;
// - rising, setting and transit: the altitude (or hour angle) followed
//   through the day in ten-minute steps, each crossing narrowed down by
//   bisection. Rising and setting are for the upper limb and standard
//   refraction: the sun's centre at -0.833°, the moon's at
//   0.7275 x parallax - 0.5667° (Meeus ch. 15). The station's height is not
//   taken into account;
// - phases, equinoxes and solstices: the moments at which the moon's
//   elongation, or the sun's longitude, reaches a multiple of 90°, found by
//   Newton steps from the mean phase (Meeus ch. 49) or a date in the season;
// - perigee and apogee: the least and greatest distance of the series,
//   searched around the mean perigee of Meeus ch. 50.

#include <map>
#include <optional>
#include <utility>

#include "core/clock.h"

namespace nimbrel::astro {

inline constexpr double kJ2000 = 2451545.0;
inline constexpr double kSynodicMonth = 29.530588861;  // days

double julianDay(SystemTime t);
SystemTime fromJulianDay(double jd);
// The Julian day of 0:00 UT of a Gregorian calendar date.
double julianDayOfDate(int year, int month, int day);

// Terrestrial minus Universal Time, seconds (a polynomial fit to the
// observed values of this century).
double deltaTSeconds(double jd);

// Greenwich mean sidereal time, degrees 0-360.
double siderealTime(double jd);

struct SkyPosition {
  double longitude = 0;    // apparent ecliptic longitude, 0-360
  double latitude = 0;     // ecliptic latitude
  double rightAscension = 0;  // 0-360
  double declination = 0;
  double distanceKm = 0;
};

// Positions at a moment of Terrestrial Time (jde = jd + deltaTSeconds / 86400).
SkyPosition sunPosition(double jde);
SkyPosition moonPosition(double jde);

struct Place {
  double latitude = 0;
  double longitude = 0;
};

// Altitude above the horizon (no refraction) and the local hour angle
// (-180 to 180, negative before the meridian).
double altitude(const SkyPosition& p, double jd, const Place& place);
double hourAngle(const SkyPosition& p, double jd, const Place& place);

// What a body does in the span [start, end): its first rising and setting
// (empty when it does not cross the horizon that way in the span), its
// transit and its altitude then, and the time it spends above the horizon.
struct DayEvents {
  std::optional<double> rise;
  std::optional<double> set;
  std::optional<double> transit;
  double transitAltitude = 0;
  double daysAbove = 0;
};

enum class SunHorizon { sunrise, civil, nautical, astronomical };

DayEvents sunEvents(double start, double end, const Place& place, SunHorizon horizon = SunHorizon::sunrise);
DayEvents moonEvents(double start, double end, const Place& place);

// The moon's elongation east of the sun, 0-360 (0 new, 180 full).
double moonElongation(double jd);
// The illuminated fraction of the moon's disc, 0-1.
double moonIlluminated(double jd);

enum class Phase { newMoon = 0, firstQuarter = 1, fullMoon = 2, lastQuarter = 3 };

struct Apsis {
  double jd = 0;
  double distanceKm = 0;
};

// The costly searches below depend on their arguments alone: a Memo keeps
// their results (a lunation's phases, the apsides near a mean one) for the
// next asks with the same arguments, which then get the very same numbers.
// Bounded: it forgets everything past a few dozen entries.
class Memo {
 public:
  double phase(long k, Phase phase);
  Apsis apsis(double meanK, int sign);

 private:
  std::map<std::pair<long, int>, double> phases_;
  std::map<std::pair<double, int>, Apsis> apsides_;
};

// The moment of `phase` of lunation k (k = 0: the new moon of 6 January
// 2000; negative before).
double phaseOfLunation(long k, Phase phase);
// The lunation whose new moon is the last at or before `jd`.
long lunationAt(double jd, Memo* memo = nullptr);
// The first `phase` after `jd`.
double nextPhase(double jd, Phase phase);
// Brown's lunation number (1 began with the new moon of 17 January 1923).
inline long brownLunation(long k) { return k + 953; }

// The next perigee (least distance) or apogee after `jd`.
Apsis nextPerigee(double jd, Memo* memo = nullptr);
Apsis nextApogee(double jd, Memo* memo = nullptr);

enum class Season { marchEquinox = 0, juneSolstice = 1, septemberEquinox = 2, decemberSolstice = 3 };
// The moment the sun's apparent longitude reaches 0, 90, 180 or 270° in `year`.
double seasonStart(int year, Season season);

}  // namespace nimbrel::astro
