#include "publish/tags/almanac/astronomy.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numbers>

namespace nimbrel::astro {
namespace {

constexpr double kRad = std::numbers::pi / 180.0;
constexpr double kUnixEpochJd = 2440587.5;
constexpr double kEarthRadiusKm = 6378.14;

double sind(double deg) { return std::sin(deg * kRad); }
double cosd(double deg) { return std::cos(deg * kRad); }
double degrees(double rad) { return rad / kRad; }

double normalized(double deg) {
  const double r = std::fmod(deg, 360.0);
  return r < 0 ? r + 360.0 : r;
}

// -180 to 180.
double signedAngle(double deg) {
  const double r = normalized(deg);
  return r > 180.0 ? r - 360.0 : r;
}

double centuries(double jde) { return (jde - kJ2000) / 36525.0; }

// The moon's longitude of the ascending node: the argument of the main
// term of nutation, which both bodies' apparent longitudes carry.
double nodeLongitude(double t) { return 125.04 - 1934.136 * t; }

double trueObliquity(double t) {
  const double seconds = 21.448 - t * (46.8150 + t * (0.00059 - t * 0.001813));
  return 23.0 + (26.0 + seconds / 60.0) / 60.0 + 0.00256 * cosd(nodeLongitude(t));
}

void toEquatorial(SkyPosition& p, double t) {
  const double eps = trueObliquity(t);
  p.rightAscension = normalized(degrees(std::atan2(sind(p.longitude) * cosd(eps) - std::tan(p.latitude * kRad) * sind(eps),
                                                   cosd(p.longitude))));
  p.declination = degrees(std::asin(sind(p.latitude) * cosd(eps) + cosd(p.latitude) * sind(eps) * sind(p.longitude)));
}

// Periodic terms of the moon's longitude (1e-6 degree) and distance
// (metres) by multiples of the arguments D, M, M', F (Meeus table 47.A,
// the larger terms).
struct LongitudeTerm {
  int d, m, mp, f;
  double sinL, cosR;
};
constexpr std::array<LongitudeTerm, 30> kLongitudeTerms = {{
    {0, 0, 1, 0, 6288774, -20905355}, {2, 0, -1, 0, 1274027, -3699111}, {2, 0, 0, 0, 658314, -2955968},
    {0, 0, 2, 0, 213618, -569925},    {0, 1, 0, 0, -185116, 48888},     {0, 0, 0, 2, -114332, -3149},
    {2, 0, -2, 0, 58793, 246158},     {2, -1, -1, 0, 57066, -152138},   {2, 0, 1, 0, 53322, -170733},
    {2, -1, 0, 0, 45758, -204586},    {0, 1, -1, 0, -40923, -129620},   {1, 0, 0, 0, -34720, 108743},
    {0, 1, 1, 0, -30383, 104755},     {2, 0, 0, -2, 15327, 10321},      {0, 0, 1, 2, -12528, 0},
    {0, 0, 1, -2, 10980, 79661},      {4, 0, -1, 0, 10675, -34782},     {0, 0, 3, 0, 10034, -23210},
    {4, 0, -2, 0, 8548, -21636},      {2, 1, -1, 0, -7888, 24208},      {2, 1, 0, 0, -6766, 30824},
    {1, 0, -1, 0, -5163, -8379},      {1, 1, 0, 0, 4987, -16675},       {2, -1, 1, 0, 4036, -12831},
    {2, 0, 2, 0, 3994, -10445},       {4, 0, 0, 0, 3861, -11650},       {2, 0, -3, 0, 3665, 14403},
    {0, 1, -2, 0, -2689, -7003},      {2, 0, -1, 2, -2602, 0},          {2, -1, -2, 0, 2390, 10056},
}};

// Periodic terms of the moon's latitude (1e-6 degree), Meeus table 47.B.
struct LatitudeTerm {
  int d, m, mp, f;
  double sinB;
};
constexpr std::array<LatitudeTerm, 14> kLatitudeTerms = {{
    {0, 0, 0, 1, 5128122}, {0, 0, 1, 1, 280602}, {0, 0, 1, -1, 277693}, {2, 0, 0, -1, 173237},
    {2, 0, -1, 1, 55413},  {2, 0, -1, -1, 46271}, {2, 0, 0, 1, 32573},   {0, 0, 2, 1, 17198},
    {2, 0, 1, -1, 9266},   {0, 0, 2, -1, 8822},   {2, -1, 0, -1, 8216},  {2, 0, -2, -1, 4324},
    {2, 0, 1, 1, 4200},    {2, 1, 0, -1, -3359},
}};

// Terms with the sun's anomaly M shrink as the earth's orbit grows rounder.
double eccentricityFactor(int m, double e) { return m == 0 ? 1.0 : (m == 1 || m == -1 ? e : e * e); }

// Where `f` changes sign between a (value fa) and b: bisection down to a
// fraction of a second.
double narrowDown(const std::function<double(double)>& f, double a, double b, double fa) {
  for (int i = 0; i < 16; ++i) {
    const double mid = (a + b) / 2;
    const double fm = f(mid);
    if ((fm > 0) == (fa > 0)) {
      a = mid;
      fa = fm;
    } else {
      b = mid;
    }
  }
  return (a + b) / 2;
}

// A body's position at a moment of Universal Time, and the altitude of its
// centre at which its upper limb touches the horizon.
using Body = std::function<SkyPosition(double jd)>;
using Horizon = std::function<double(const SkyPosition&)>;

DayEvents followThroughSpan(const Body& body, const Horizon& horizon, double start, double end, const Place& place) {
  DayEvents events;
  constexpr double kStep = 10.0 / 1440.0;
  const int steps = std::max(1, static_cast<int>(std::ceil((end - start) / kStep)));
  const double step = (end - start) / steps;
  auto height = [&](double jd) {
    const SkyPosition p = body(jd);
    return altitude(p, jd, place) - horizon(p);
  };
  auto angle = [&](double jd) { return hourAngle(body(jd), jd, place); };

  SkyPosition p = body(start);
  double h0 = altitude(p, start, place) - horizon(p);
  double a0 = hourAngle(p, start, place);
  for (int i = 1; i <= steps; ++i) {
    const double t0 = start + (i - 1) * step;
    const double t1 = start + i * step;
    p = body(t1);
    const double h1 = altitude(p, t1, place) - horizon(p);
    const double a1 = hourAngle(p, t1, place);
    if ((h0 > 0) != (h1 > 0)) {
      const double crossing = narrowDown(height, t0, t1, h0);
      if (h1 > 0) {
        if (!events.rise) events.rise = crossing;
        events.daysAbove += t1 - crossing;
      } else {
        if (!events.set) events.set = crossing;
        events.daysAbove += crossing - t0;
      }
    } else if (h0 > 0) {
      events.daysAbove += step;
    }
    // The hour angle passes 0 going up; its jump from +180 to -180 is no transit.
    if (!events.transit && a0 < 0 && a1 >= 0 && a1 - a0 < 90) {
      const double transit = narrowDown(angle, t0, t1, a0);
      events.transit = transit;
      events.transitAltitude = altitude(body(transit), transit, place);
    }
    h0 = h1;
    a0 = a1;
  }
  return events;
}

double toTerrestrial(double jd) { return jd + deltaTSeconds(jd) / 86400.0; }
double toUniversal(double jde) { return jde - deltaTSeconds(jde) / 86400.0; }

// Newton steps on an angle that grows by about `ratePerDay`: the moment it
// reaches `target`.
double whenAngleReaches(const std::function<double(double)>& angle, double target, double jde, double ratePerDay) {
  for (int i = 0; i < 30; ++i) {
    const double miss = signedAngle(target - angle(jde));
    jde += miss / ratePerDay;
    if (std::fabs(miss) < 1e-7) break;
  }
  return jde;
}

// The least (sign +1) or greatest (sign -1) distance within four days of
// `mean`: hourly samples, then a golden-section search around the best.
Apsis extremeDistance(double meanJde, int sign) {
  auto cost = [sign](double jde) { return sign * moonPosition(jde).distanceKm; };
  double best = meanJde - 4.0;
  double bestCost = cost(best);
  for (double t = meanJde - 4.0; t <= meanJde + 4.0; t += 1.0 / 24.0) {
    const double c = cost(t);
    if (c < bestCost) {
      best = t;
      bestCost = c;
    }
  }
  double a = best - 1.0 / 24.0;
  double b = best + 1.0 / 24.0;
  const double g = (std::sqrt(5.0) - 1.0) / 2.0;
  for (int i = 0; i < 40; ++i) {
    const double x1 = b - g * (b - a);
    const double x2 = a + g * (b - a);
    if (cost(x1) < cost(x2))
      b = x2;
    else
      a = x1;
  }
  const double at = (a + b) / 2;
  return {toUniversal(at), moonPosition(at).distanceKm};
}

// Meeus ch. 50: the mean perigee (k whole) or apogee (k + 0.5).
double meanApsis(double k) {
  const double t = k / 1325.55;
  return 2451534.6698 + 27.55454989 * k - 0.0006691 * t * t;
}

Apsis apsisNear(double k, int sign, Memo* memo) {
  return memo != nullptr ? memo->apsis(k, sign) : extremeDistance(meanApsis(k), sign);
}

Apsis nextApsis(double jd, double offset, int sign, Memo* memo) {
  const double k0 = std::floor((toTerrestrial(jd) - 2451534.6698) / 27.55454989) - 1;
  for (int i = 0; i < 4; ++i) {
    const Apsis a = apsisNear(k0 + i + offset, sign, memo);
    if (a.jd > jd) return a;
  }
  return apsisNear(k0 + 4 + offset, sign, memo);
}

constexpr std::size_t kMemoEntries = 48;

}  // namespace

double julianDay(SystemTime t) {
  const double seconds = std::chrono::duration<double>(t.time_since_epoch()).count();
  return kUnixEpochJd + seconds / 86400.0;
}

SystemTime fromJulianDay(double jd) {
  const auto seconds = std::chrono::duration<double>((jd - kUnixEpochJd) * 86400.0);
  return SystemTime(std::chrono::duration_cast<SystemTime::duration>(std::chrono::round<std::chrono::seconds>(seconds)));
}

// Meeus ch. 7, Gregorian calendar.
double julianDayOfDate(int year, int month, int day) {
  if (month <= 2) {
    year -= 1;
    month += 12;
  }
  const int a = year / 100;
  const int b = 2 - a + a / 4;
  return std::floor(365.25 * (year + 4716)) + std::floor(30.6001 * (month + 1)) + day + b - 1524.5;
}

// The fit of Espenak and Meeus for 2005-2050, good to a second or two in
// this century and to a few seconds in the neighbouring decades.
double deltaTSeconds(double jd) {
  const double t = (jd - kJ2000) / 365.25;
  return 62.92 + 0.32217 * t + 0.005589 * t * t;
}

// Meeus (12.4).
double siderealTime(double jd) {
  const double t = centuries(jd);
  return normalized(280.46061837 + 360.98564736629 * (jd - kJ2000) + t * t * (0.000387933 - t / 38710000.0));
}

// Meeus ch. 25, the low-precision method (also the NOAA solar calculator's).
SkyPosition sunPosition(double jde) {
  const double t = centuries(jde);
  const double meanLongitude = 280.46646 + t * (36000.76983 + t * 0.0003032);
  const double anomaly = 357.52911 + t * (35999.05029 - t * 0.0001537);
  const double e = 0.016708634 - t * (0.000042037 + t * 0.0000001267);
  const double centre = sind(anomaly) * (1.914602 - t * (0.004817 + t * 0.000014)) +
                        sind(2 * anomaly) * (0.019993 - t * 0.000101) + sind(3 * anomaly) * 0.000289;
  const double trueAnomaly = anomaly + centre;
  SkyPosition p;
  p.longitude = normalized(meanLongitude + centre - 0.00569 - 0.00478 * sind(nodeLongitude(t)));
  p.distanceKm = 149597870.7 * 1.000001018 * (1 - e * e) / (1 + e * cosd(trueAnomaly));
  toEquatorial(p, t);
  return p;
}

// Meeus ch. 47 with the larger terms.
SkyPosition moonPosition(double jde) {
  const double t = centuries(jde);
  const double meanLongitude = 218.3164477 + t * (481267.88123421 - t * 0.0015786);
  const double d = 297.8501921 + t * (445267.1114034 - t * 0.0018819);
  const double m = 357.5291092 + t * (35999.0502909 - t * 0.0001536);
  const double mp = 134.9633964 + t * (477198.8675055 + t * 0.0087414);
  const double f = 93.2720950 + t * (483202.0175233 - t * 0.0036539);
  const double a1 = 119.75 + 131.849 * t;
  const double a2 = 53.09 + 479264.290 * t;
  const double a3 = 313.45 + 481266.484 * t;
  const double e = 1 - t * (0.002516 + t * 0.0000074);

  double sumL = 3958 * sind(a1) + 1962 * sind(meanLongitude - f) + 318 * sind(a2);
  double sumR = 0;
  for (const auto& term : kLongitudeTerms) {
    const double arg = term.d * d + term.m * m + term.mp * mp + term.f * f;
    const double factor = eccentricityFactor(term.m, e);
    sumL += term.sinL * factor * sind(arg);
    sumR += term.cosR * factor * cosd(arg);
  }
  double sumB = -2235 * sind(meanLongitude) + 382 * sind(a3) + 175 * sind(a1 - f) + 175 * sind(a1 + f) +
                127 * sind(meanLongitude - mp) - 115 * sind(meanLongitude + mp);
  for (const auto& term : kLatitudeTerms)
    sumB += term.sinB * eccentricityFactor(term.m, e) * sind(term.d * d + term.m * m + term.mp * mp + term.f * f);

  SkyPosition p;
  p.longitude = normalized(meanLongitude + sumL / 1e6 - 0.00478 * sind(nodeLongitude(t)));
  p.latitude = sumB / 1e6;
  p.distanceKm = 385000.56 + sumR / 1000.0;
  toEquatorial(p, t);
  return p;
}

double altitude(const SkyPosition& p, double jd, const Place& place) {
  const double h = hourAngle(p, jd, place);
  return degrees(std::asin(sind(place.latitude) * sind(p.declination) +
                           cosd(place.latitude) * cosd(p.declination) * cosd(h)));
}

double hourAngle(const SkyPosition& p, double jd, const Place& place) {
  return signedAngle(siderealTime(jd) + place.longitude - p.rightAscension);
}

DayEvents sunEvents(double start, double end, const Place& place, SunHorizon horizon) {
  static constexpr std::array<double, 4> kDepression = {-0.8333, -6.0, -12.0, -18.0};
  const double limit = kDepression[static_cast<int>(horizon)];
  return followThroughSpan([](double jd) { return sunPosition(toTerrestrial(jd)); },
                           [limit](const SkyPosition&) { return limit; }, start, end, place);
}

DayEvents moonEvents(double start, double end, const Place& place) {
  return followThroughSpan([](double jd) { return moonPosition(toTerrestrial(jd)); },
                           [](const SkyPosition& p) {
                             const double parallax = degrees(std::asin(kEarthRadiusKm / p.distanceKm));
                             return 0.7275 * parallax - 0.5667;
                           },
                           start, end, place);
}

double moonElongation(double jd) {
  const double jde = toTerrestrial(jd);
  return normalized(moonPosition(jde).longitude - sunPosition(jde).longitude);
}

// The phase angle taken as 180° less the elongation measured on the sky
// (the moon's latitude included): good to a fraction of a percent.
double moonIlluminated(double jd) {
  const double jde = toTerrestrial(jd);
  const SkyPosition moon = moonPosition(jde);
  const double cosElongation = cosd(moon.latitude) * cosd(moon.longitude - sunPosition(jde).longitude);
  return (1 - cosElongation) / 2;
}

double phaseOfLunation(long k, Phase phase) {
  const double kk = static_cast<double>(k) + static_cast<int>(phase) / 4.0;
  const double meanJde = 2451550.09766 + kSynodicMonth * kk;
  auto elongation = [](double jde) { return moonPosition(jde).longitude - sunPosition(jde).longitude; };
  return toUniversal(whenAngleReaches(elongation, 90.0 * static_cast<int>(phase), meanJde, 12.1907));
}

double Memo::phase(long k, Phase phase) {
  const std::pair<long, int> key{k, static_cast<int>(phase)};
  if (const auto it = phases_.find(key); it != phases_.end()) return it->second;
  if (phases_.size() >= kMemoEntries) phases_.clear();
  return phases_[key] = phaseOfLunation(k, phase);
}

Apsis Memo::apsis(double meanK, int sign) {
  const std::pair<double, int> key{meanK, sign};
  if (const auto it = apsides_.find(key); it != apsides_.end()) return it->second;
  if (apsides_.size() >= kMemoEntries) apsides_.clear();
  return apsides_[key] = extremeDistance(meanApsis(meanK), sign);
}

long lunationAt(double jd, Memo* memo) {
  auto newMoon = [memo](long k) {
    return memo != nullptr ? memo->phase(k, Phase::newMoon) : phaseOfLunation(k, Phase::newMoon);
  };
  long k = static_cast<long>(std::floor((jd - 2451550.09766) / kSynodicMonth));
  while (newMoon(k + 1) <= jd) ++k;
  while (newMoon(k) > jd) --k;
  return k;
}

double nextPhase(double jd, Phase phase) {
  const long k = lunationAt(jd);
  for (long i = k;; ++i) {
    const double at = phaseOfLunation(i, phase);
    if (at > jd) return at;
  }
}

Apsis nextPerigee(double jd, Memo* memo) { return nextApsis(jd, 0.0, +1, memo); }
Apsis nextApogee(double jd, Memo* memo) { return nextApsis(jd, 0.5, -1, memo); }

double seasonStart(int year, Season season) {
  static constexpr std::array<int, 4> kMonth = {3, 6, 9, 12};
  const int index = static_cast<int>(season);
  const double guess = julianDayOfDate(year, kMonth[index], 21);
  auto longitude = [](double jde) { return sunPosition(jde).longitude; };
  return toUniversal(whenAngleReaches(longitude, 90.0 * index, guess, 0.9856));
}

}  // namespace nimbrel::astro
