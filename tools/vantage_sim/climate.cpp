#include "tools/vantage_sim/climate.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace nimbrel::sim {
namespace {

using std::numbers::pi;

// One noise channel per independent quantity.
enum Channel : std::uint32_t {
  kSynopticTemperature = 1,
  kLocalTemperature,
  kHumidityDrift,
  kPressureSystems,
  kPressureLocal,
  kClouds,
  kWindSystems,
  kWindLocal,
  kGustShape,
  kGustBurst,
  kDirectionSystems,
  kDirectionLocal,
  kDirectionJitter,
  kInsideDrift,
  kInsideHumidity,
  kBattery,
  kShowerOccurs,
  kShowerStart,
  kShowerLength,
  kShowerRate,
  kShowerHeavy,
};

constexpr double kHour = 3600.0;
constexpr double kDay = 24 * kHour;
constexpr double kShowerChancePerHour = 0.1;  // about 2.4 showers a day

double secondsOf(SystemTime t) {
  return std::chrono::duration<double>(t.time_since_epoch()).count();
}

double hourOfDay(const LocalTime& local) {
  return local.hour + local.minute / 60.0 + (local.second + local.millisecond / 1000.0) / 3600.0;
}

// A cosine wave over the day peaking at `peakHour`.
double dailyWave(double hour, double peakHour) { return std::cos(2 * pi * (hour - peakHour) / 24.0); }

// A cosine wave over the year peaking on day `peakDay`.
double yearlyWave(int yearday, double peakDay) { return std::cos(2 * pi * (yearday - peakDay) / 365.0); }

}  // namespace

Climate::Climate(std::uint64_t seed, double latitudeDegrees)
    : noise_(seed), latitudeRadians_(latitudeDegrees * pi / 180.0) {}

WeatherConditions Climate::at(SystemTime t) const {
  const double seconds = secondsOf(t);
  const LocalTime local = toLocalTime(t);
  const double hour = hourOfDay(local);
  const Sun sun = sunAt(local);

  WeatherConditions c;
  c.rainRate = rainRateAt(t);
  c.sunriseHour = sun.sunriseHour;
  c.sunsetHour = sun.sunsetHour;
  fillSky(c, seconds, sun);
  fillTemperatures(c, seconds, local, hour);
  fillWind(c, seconds, hour);
  c.barometerInHg = barometerAt(t);
  c.barometerChange3h = c.barometerInHg - barometerAt(t - std::chrono::hours(3));
  c.consoleVolts = 4.68 + 0.03 * noise_.smooth(kBattery, seconds, kDay);
  return c;
}

double Climate::barometerAt(SystemTime t) const {
  const double seconds = secondsOf(t);
  const double semidiurnal = 0.015 * std::cos(4 * pi * (std::fmod(seconds, kDay) / kDay));
  return 29.95 + 0.38 * noise_.smooth(kPressureSystems, seconds, 3 * kDay) +
         0.06 * noise_.smooth(kPressureLocal, seconds, 9 * kHour) + semidiurnal;
}

double Climate::rainRateAt(SystemTime t) const {
  // Each hour may hold one shower, starting somewhere in that hour and
  // lasting 10 to 50 minutes; so a shower may still run two hours later.
  const double seconds = secondsOf(t);
  const auto thisHour = static_cast<std::int64_t>(std::floor(seconds / kHour));
  double rate = 0;
  for (std::int64_t slot = thisHour - 2; slot <= thisHour; ++slot) {
    if (noise_.uniform(kShowerOccurs, slot) >= kShowerChancePerHour) continue;
    const double start = slot * kHour + noise_.uniform(kShowerStart, slot) * kHour;
    const double length = 600 + noise_.uniform(kShowerLength, slot) * 2400;
    if (seconds < start || seconds >= start + length) continue;
    const double shape = noise_.uniform(kShowerRate, slot);
    double slotRate = 6 + 60 * shape * shape;  // 0.06 to 0.66 in/h
    if (noise_.uniform(kShowerHeavy, slot) < 0.1) slotRate *= 4;  // now and then a downpour
    rate = std::max(rate, slotRate);
  }
  return rate;
}

Climate::Sun Climate::sunAt(const LocalTime& local) const {
  const double declination = 23.44 * pi / 180.0 * std::sin(2 * pi * (local.yearday - 80) / 365.0);
  const double hourAngle = (hourOfDay(local) - 12.5) * 15.0 * pi / 180.0;
  Sun sun;
  sun.elevationSine = std::sin(latitudeRadians_) * std::sin(declination) +
                      std::cos(latitudeRadians_) * std::cos(declination) * std::cos(hourAngle);
  const double cosHalfDay = std::clamp(-std::tan(latitudeRadians_) * std::tan(declination), -1.0, 1.0);
  const double halfDayHours = std::acos(cosHalfDay) * 180.0 / pi / 15.0;
  sun.sunriseHour = 12.5 - halfDayHours;
  sun.sunsetHour = 12.5 + halfDayHours;
  return sun;
}

void Climate::fillSky(WeatherConditions& c, double seconds, const Sun& sun) const {
  c.cloudiness = 0.5 + 0.5 * noise_.smooth(kClouds, seconds, 4 * kHour);
  if (c.rainRate > 0) c.cloudiness = std::max(c.cloudiness, 0.9);
  const double height = std::max(0.0, sun.elevationSine);
  const double clearSky = 1050.0 * std::pow(height, 1.2);
  c.solarRadiation = clearSky * (1.0 - 0.75 * c.cloudiness * c.cloudiness);
  c.uvIndex = 11.0 * std::pow(height, 2.2) * (1.0 - 0.6 * c.cloudiness);
}

void Climate::fillTemperatures(WeatherConditions& c, double seconds, const LocalTime& local,
                               double hour) const {
  const bool raining = c.rainRate > 0;
  const double seasonalMean = 50.0 + 15.0 * yearlyWave(local.yearday, 200);
  const double daySwing = (7.0 + 4.0 * (1.0 - c.cloudiness)) * dailyWave(hour, 15);
  const double weather = 9.0 * noise_.smooth(kSynopticTemperature, seconds, 2.5 * kDay) +
                         1.5 * noise_.smooth(kLocalTemperature, seconds, 5 * kHour);
  c.outsideF = seasonalMean + daySwing + weather - (raining ? 3.0 : 0.0);
  // Relative humidity falls as the air warms through the day.
  const double humidity = 72.0 - 2.4 * daySwing + 10.0 * noise_.smooth(kHumidityDrift, seconds, kDay);
  c.outsideHumidity = std::clamp(raining ? std::max(humidity, 93.0) : humidity, 12.0, 99.0);

  c.insideF = 70.0 + 1.5 * dailyWave(hour, 18) + 0.8 * noise_.smooth(kInsideDrift, seconds, 6 * kHour);
  c.insideHumidity = 42.0 + 6.0 * noise_.smooth(kInsideHumidity, seconds, kDay) + (raining ? 3.0 : 0.0);
  const double sunOnShed = c.solarRadiation / 1000.0;
  c.extraF = c.outsideF + 3.0 + 8.0 * sunOnShed;
  c.extraHumidity = std::clamp(c.outsideHumidity - 6.0 - 10.0 * sunOnShed, 10.0, 99.0);
  // A foot down the soil lags the air by hours and swings far less.
  c.soilF = seasonalMean + 2.5 * dailyWave(hour, 19) + 0.3 * weather;
}

void Climate::fillWind(WeatherConditions& c, double seconds, double hour) const {
  const double afternoonStir = 2.0 * std::max(0.0, dailyWave(hour, 14));
  const double average = 7.0 + 5.0 * noise_.smooth(kWindSystems, seconds, 8 * kHour) +
                         2.5 * noise_.smooth(kWindLocal, seconds, 50 * 60) + afternoonStir +
                         (c.rainRate > 0 ? 3.0 : 0.0);
  c.windAverageMph = std::max(0.0, average);
  const double gustFactor = 0.45 * std::abs(noise_.smooth(kGustShape, seconds, 6)) +
                            0.25 * std::max(0.0, noise_.smooth(kGustBurst, seconds, 23));
  c.windSpeedMph = c.windAverageMph * (1.0 + gustFactor);
  const double direction = 230.0 + 80.0 * noise_.smooth(kDirectionSystems, seconds, 30 * kHour) +
                           25.0 * noise_.smooth(kDirectionLocal, seconds, 40 * 60) +
                           12.0 * noise_.smooth(kDirectionJitter, seconds, 5);
  c.windDirection = std::fmod(direction + 360.0, 360.0);
}

}  // namespace nimbrel::sim
