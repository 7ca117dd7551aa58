#include "tools/vantage_sim/weather_model.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace nimbrel::sim {
namespace {

using namespace std::chrono_literals;

constexpr auto kGridStep = 10s;
constexpr double kGridStepHours = 10.0 / 3600.0;
constexpr auto kStormEndsAfter = 24h;

bool sameDay(const LocalTime& a, const LocalTime& b) {
  return a.year == b.year && a.month == b.month && a.day == b.day;
}

std::uint16_t clockTime(const LocalTime& t) { return static_cast<std::uint16_t>(t.hour * 100 + t.minute); }

std::uint16_t clockTime(double hours) {
  const int minutes = static_cast<int>(std::lround(hours * 60.0));
  return static_cast<std::uint16_t>((minutes / 60) * 100 + minutes % 60);
}

template <class T>
T roundTo(double value) {
  const double low = static_cast<double>(std::numeric_limits<T>::min());
  const double high = static_cast<double>(std::numeric_limits<T>::max());
  return static_cast<T>(std::lround(std::clamp(value, low, high)));
}

std::uint16_t thousandths(double inches) { return roundTo<std::uint16_t>(inches * 1000.0); }
std::int16_t tenths(double degreesF) { return roundTo<std::int16_t>(degreesF * 10.0); }
std::uint8_t percent(double value) { return roundTo<std::uint8_t>(std::clamp(value, 0.0, 100.0)); }
// Extra, soil and leaf temperatures travel as whole deg F + 90 in one byte
// (255 is the "no sensor" mark).
std::uint8_t offsetDegrees(double degreesF) { return roundTo<std::uint8_t>(std::clamp(degreesF + 90, 0.0, 254.0)); }
std::uint16_t counter(std::uint32_t value) { return static_cast<std::uint16_t>(std::min<std::uint32_t>(value, 0xFFFF)); }

// The console's trend byte: change in thousandths of inHg over 3 hours.
std::int8_t barometerTrend(double change3h) {
  if (change3h >= 0.060) return 60;
  if (change3h >= 0.020) return 20;
  if (change3h <= -0.060) return -60;
  if (change3h <= -0.020) return -20;
  return 0;
}

// A crude console forecast from pressure, its trend and the humidity.
void fillForecast(ConsoleReading& r, const WeatherConditions& c) {
  const double falling = -c.barometerChange3h;
  if (c.rainRate > 0 || (falling >= 0.020 && c.barometerInHg < 29.80)) {
    r.forecastIcons = kIconRain | kIconCloud;
    r.forecastRule = 45;
  } else if (c.barometerInHg >= 30.10 && falling <= 0) {
    r.forecastIcons = kIconSun;
    r.forecastRule = 2;
  } else if (falling >= 0.020 || c.outsideHumidity > 85) {
    r.forecastIcons = kIconCloud;
    r.forecastRule = 23;
  } else {
    r.forecastIcons = kIconCloud | kIconPartlyCloudy;
    r.forecastRule = 11;
  }
}

SystemTime firstGridPointAfter(SystemTime t) {
  const auto sinceEpoch = std::chrono::floor<std::chrono::seconds>(t.time_since_epoch());
  const auto steps = sinceEpoch / kGridStep + 1;
  return SystemTime(std::chrono::duration_cast<SystemTime::duration>(steps * kGridStep));
}

}  // namespace

WeatherModel::WeatherModel(SystemTime start, WeatherModelOptions options)
    : options_(options),
      climate_(options.seed, options.latitudeDegrees),
      time_(start),
      date_(toLocalTime(start)),
      current_(climate_.at(start)) {
  resetDayHighsLows(current_, date_);
  highsLows_.monthLowBarometer = highsLows_.yearLowBarometer = highsLows_.dayLowBarometer;
  highsLows_.monthHighBarometer = highsLows_.yearHighBarometer = highsLows_.dayHighBarometer;
  highsLows_.monthHighWindSpeed = highsLows_.yearHighWindSpeed = highsLows_.dayHighWindSpeed;
}

void WeatherModel::advanceTo(SystemTime t) {
  if (t <= time_) return;
  for (SystemTime g = firstGridPointAfter(time_); g <= t; g += kGridStep) stepTo(g);
  time_ = t;
  current_ = climate_.at(t);
  // The exact instant counts for the highs too: the console's high is the
  // highest value it ever showed.
  updateHighsLows(current_, toLocalTime(t));
}

void WeatherModel::stepTo(SystemTime gridPoint) {
  const WeatherConditions c = climate_.at(gridPoint);
  const LocalTime local = toLocalTime(gridPoint);
  // The interval that ends here belongs to the day it ran in: count first,
  // then roll over when this point starts a new day.
  addRain(c, gridPoint, date_);
  addEvaporation(c);
  updateGround(c);
  if (!sameDay(local, date_)) rollOver(date_, local, c);
  date_ = local;
  if (rain_.lastTip && gridPoint - *rain_.lastTip >= kStormEndsAfter) {
    rain_.storm = 0;
    rain_.stormStart.reset();
  }
  updateHighsLows(c, local);
}

void WeatherModel::addRain(const WeatherConditions& c, SystemTime at, const LocalTime& local) {
  rain_.pendingClicks += c.rainRate * kGridStepHours;
  while (rain_.pendingClicks >= 1.0) {
    rain_.pendingClicks -= 1.0;
    ++rain_.totalClicks;
    ++rain_.day;
    ++rain_.month;
    ++rain_.year;
    ++rain_.storm;
    if (!rain_.stormStart) rain_.stormStart = CalendarDate{local.year, local.month, local.day};
    rain_.lastTip = at;
  }
}

void WeatherModel::addEvaporation(const WeatherConditions& c) {
  const double warmth = 1.0 + std::max(0.0, c.outsideF - 60.0) / 50.0;
  const double dryness = 1.2 - c.outsideHumidity / 100.0;
  const double perHour = c.solarRadiation * 0.028 * warmth * dryness;  // thousandths of an inch
  const double step = perHour * kGridStepHours;
  et_.day += step;
  et_.month += step;
  et_.year += step;
}

void WeatherModel::updateGround(const WeatherConditions& c) {
  // Soil suction rises as the ground dries by day and drops when it rains.
  const double dryingPerHour = c.solarRadiation * 0.004;
  const double wettingPerHour = c.rainRate * 1.0;
  soilMoisture_ = std::clamp(soilMoisture_ + (dryingPerHour - wettingPerHour) * kGridStepHours, 0.0, 200.0);
  if (c.rainRate > 0) {
    leafWetness_ = 15;
  } else if (c.outsideHumidity >= 95 && c.solarRadiation < 50) {
    leafWetness_ = std::min(10.0, leafWetness_ + 2.0 * kGridStepHours);  // dew
  } else {
    leafWetness_ = std::max(0.0, leafWetness_ - 3.0 * kGridStepHours);
  }
}

void WeatherModel::rollOver(const LocalTime& previous, const LocalTime& next, const WeatherConditions& c) {
  rain_.day = 0;
  et_.day = 0;
  const bool newYear = next.year != previous.year;
  const bool newMonth = newYear || next.month != previous.month;
  if (newMonth) {
    rain_.month = 0;
    et_.month = 0;
  }
  if (newYear) {
    rain_.year = 0;
    et_.year = 0;
  }
  resetDayHighsLows(c, next);
  if (newMonth) {
    highsLows_.monthLowBarometer = highsLows_.dayLowBarometer;
    highsLows_.monthHighBarometer = highsLows_.dayHighBarometer;
    highsLows_.monthHighWindSpeed = highsLows_.dayHighWindSpeed;
  }
  if (newYear) {
    highsLows_.yearLowBarometer = highsLows_.dayLowBarometer;
    highsLows_.yearHighBarometer = highsLows_.dayHighBarometer;
    highsLows_.yearHighWindSpeed = highsLows_.dayHighWindSpeed;
  }
}

void WeatherModel::resetDayHighsLows(const WeatherConditions& c, const LocalTime& local) {
  const std::uint16_t barometer = thousandths(c.barometerInHg);
  highsLows_.dayLowBarometer = highsLows_.dayHighBarometer = barometer;
  highsLows_.dayLowBarometerTime = highsLows_.dayHighBarometerTime = clockTime(local);
  highsLows_.dayHighWindSpeed = roundTo<std::uint8_t>(c.windSpeedMph);
  highsLows_.dayHighWindTime = clockTime(local);
}

void WeatherModel::updateHighsLows(const WeatherConditions& c, const LocalTime& local) {
  ConsoleHighsLows& h = highsLows_;
  const std::uint16_t barometer = thousandths(c.barometerInHg);
  if (barometer < h.dayLowBarometer) h.dayLowBarometer = barometer, h.dayLowBarometerTime = clockTime(local);
  if (barometer > h.dayHighBarometer) h.dayHighBarometer = barometer, h.dayHighBarometerTime = clockTime(local);
  h.monthLowBarometer = std::min(h.monthLowBarometer, barometer);
  h.monthHighBarometer = std::max(h.monthHighBarometer, barometer);
  h.yearLowBarometer = std::min(h.yearLowBarometer, barometer);
  h.yearHighBarometer = std::max(h.yearHighBarometer, barometer);
  const auto wind = roundTo<std::uint8_t>(c.windSpeedMph);
  if (wind > h.dayHighWindSpeed) h.dayHighWindSpeed = wind, h.dayHighWindTime = clockTime(local);
  h.monthHighWindSpeed = std::max(h.monthHighWindSpeed, wind);
  h.yearHighWindSpeed = std::max(h.yearHighWindSpeed, wind);
}

ConsoleReading WeatherModel::reading() const {
  const WeatherConditions& c = current_;
  ConsoleReading r;
  r.barometerTrend = barometerTrend(c.barometerChange3h);
  r.barometer = thousandths(c.barometerInHg);
  r.insideTemperature = tenths(c.insideF);
  r.insideHumidity = percent(c.insideHumidity);
  r.outsideTemperature = tenths(c.outsideF);
  r.outsideHumidity = percent(c.outsideHumidity);
  r.windSpeed = roundTo<std::uint8_t>(c.windSpeedMph);
  r.windAverage10 = roundTo<std::uint8_t>(c.windAverageMph);
  const int direction = static_cast<int>(std::lround(c.windDirection)) % 360;
  r.windDirection = static_cast<std::uint16_t>(direction == 0 ? 360 : direction);  // 0 means no reading
  r.rainRate = roundTo<std::uint16_t>(c.rainRate);
  r.consoleBattery = roundTo<std::uint16_t>(c.consoleVolts * 100.0 * 512.0 / 300.0);
  r.sunrise = clockTime(c.sunriseHour);
  r.sunset = clockTime(c.sunsetHour);
  fillForecast(r, c);
  fillSensors(r);
  fillTotals(r);
  return r;
}

void WeatherModel::fillSensors(ConsoleReading& r) const {
  const WeatherConditions& c = current_;
  if (options_.solarSensors) {
    r.solarRadiation = roundTo<std::uint16_t>(c.solarRadiation);
    r.uvIndex = roundTo<std::uint8_t>(c.uvIndex * 10.0);
  }
  if (options_.extraSensor) {
    r.extraTemperatures[0] = offsetDegrees(c.extraF);
    r.extraHumidities[0] = percent(c.extraHumidity);
  }
  if (options_.soilAndLeafSensors) {
    r.soilTemperatures[0] = offsetDegrees(c.soilF);
    r.soilMoistures[0] = roundTo<std::uint8_t>(soilMoisture_);
    r.leafWetnesses[0] = roundTo<std::uint8_t>(leafWetness_);
  }
}

void WeatherModel::fillTotals(ConsoleReading& r) const {
  r.stormRain = counter(rain_.storm);
  r.stormStart = rain_.stormStart;
  r.dayRain = counter(rain_.day);
  r.monthRain = counter(rain_.month);
  r.yearRain = counter(rain_.year);
  r.dayEt = roundTo<std::uint16_t>(et_.day);
  r.monthEt = roundTo<std::uint16_t>(et_.month / 10.0);
  r.yearEt = roundTo<std::uint16_t>(et_.year / 10.0);
}

}  // namespace nimbrel::sim
