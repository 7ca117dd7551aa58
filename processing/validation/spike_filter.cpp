#include "processing/validation/spike_filter.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "core/settings_fields.h"

namespace nimbrel {
namespace {

constexpr std::string_view kLimitsSection = "New readings limits";

// Plausibility bounds of the series: samples outside them are neither filed
// nor counted, so a sensor that reports a fault value (0 % humidity, a
// pressure of 0) cannot push the filter into its timeout.
constexpr double kWindCeiling = 150;  // knots; this and more is never filed
constexpr double kTempFloor = -60;    // degrees C, exclusive
constexpr double kTempCeiling = 60;
constexpr int kHumFloor = 1;  // percent, inclusive
constexpr int kHumCeiling = 100;
constexpr double kBaroFloor = 920;  // hPa, exclusive
constexpr double kBaroCeiling = 1080;
constexpr double kRainCeiling = 20;  // mm; this and more is not filed

constexpr std::size_t kPrevious = ShortTermSeries::kNewest - 1;
// A timeout writes the present wind into the three newest slots, and the
// present temperature, humidity or pressure into the two newest; the
// difference is deliberate and kept.
constexpr std::size_t kWindReseedSlots = 3;
constexpr std::size_t kOtherReseedSlots = 2;

std::int16_t readLimit(FieldLoader& loader, std::string_view key, std::int16_t fallback) {
  int value = fallback;
  loader.integer(kLimitsSection, key, value, 0, INT16_MAX);
  return static_cast<std::int16_t>(value);
}

template <class T>
void shiftTowardsOldest(ShortTermSeries::Series<T>& series) {
  // The newest slot keeps its value: a refused sample repeats the last
  // accepted one.
  std::copy(series.begin() + 1, series.end(), series.begin());
}

template <class T>
void fillNewest(ShortTermSeries::Series<T>& series, double value, std::size_t slots) {
  std::fill(series.end() - static_cast<std::ptrdiff_t>(slots), series.end(), static_cast<T>(value));
}

// A change equal to the limit is already a spike, so a limit of 0 refuses
// every sample, even an unchanged one.
bool isSpike(double sample, double previous, int limit) { return std::fabs(sample - previous) >= limit; }

// Files `sample` in the newest slot, or counts it when it is a spike.
template <class T>
void fileOrCount(ShortTermSeries::Series<T>& series, double sample, int limit, std::uint16_t& count) {
  if (isSpike(sample, static_cast<double>(series[kPrevious]), limit))
    ++count;
  else
    series[ShortTermSeries::kNewest] = static_cast<T>(sample);
}

void fileWind(ShortTermSeries::Series<double>& series, double sample, int limit, std::uint16_t& count,
              std::string_view spikeMessage, TextLog& stationLog) {
  if (sample >= kWindCeiling) return;
  if (isSpike(sample, series[kPrevious], limit)) {
    stationLog.write(fmt::format("{}{}", spikeMessage, count));
    ++count;
    return;
  }
  series[ShortTermSeries::kNewest] = sample;
}

// True (and the counter cleared) when the refusals have gone on for longer
// than the timeout.
bool timedOut(std::uint16_t& count, int timeout) {
  if (count <= timeout) return false;
  count = 0;
  return true;
}

}  // namespace

SpikeLimits readSpikeLimits(const SettingsStore& settings) {
  FieldLoader loader(settings);
  const SpikeLimits defaults;
  SpikeLimits limits;
  limits.speed = readLimit(loader, "speed spike", defaults.speed);
  limits.gust = readLimit(loader, "gust spike", defaults.gust);
  limits.temp = readLimit(loader, "temp spike", defaults.temp);
  limits.hum = readLimit(loader, "hum spike", defaults.hum);
  limits.baro = readLimit(loader, "baro spike", defaults.baro);
  limits.timeout = readLimit(loader, "timeout spike", defaults.timeout);
  return limits;
}

void ShortTermSeries::rollthedata(const LiveRecord& record, double shortTermRain, TextLog& stationLog) {
  if (!seeded_) {
    seed(record, shortTermRain);
    return;
  }
  shiftAll();
  fileSamples(record, shortTermRain, stationLog);
  applyTimeouts(record, stationLog);
}

void ShortTermSeries::seed(const LiveRecord& record, double shortTermRain) {
  speed_.fill(record.windspeed);
  gust_.fill(record.windgust);
  direction_.fill(record.winddir);
  temperature_.fill(record.outtemp);
  humidity_.fill(static_cast<std::int16_t>(record.outhum));
  barometer_.fill(record.barometer);
  rain_.fill(shortTermRain);
  seeded_ = true;
}

void ShortTermSeries::shiftAll() {
  shiftTowardsOldest(speed_);
  shiftTowardsOldest(gust_);
  shiftTowardsOldest(direction_);
  shiftTowardsOldest(temperature_);
  shiftTowardsOldest(humidity_);
  shiftTowardsOldest(barometer_);
  shiftTowardsOldest(rain_);
}

void ShortTermSeries::fileSamples(const LiveRecord& record, double shortTermRain, TextLog& stationLog) {
  fileWind(speed_, record.windspeed, limits_.speed, counts_.speed, "inc speed spike count ", stationLog);
  fileWind(gust_, record.windgust, limits_.gust, counts_.gust, "inc gust spike count ", stationLog);
  direction_[kNewest] = record.winddir;
  if (record.outtemp > kTempFloor && record.outtemp < kTempCeiling)
    fileOrCount(temperature_, record.outtemp, limits_.temp, counts_.temperature);
  if (record.outhum >= kHumFloor && record.outhum <= kHumCeiling)
    fileOrCount(humidity_, record.outhum, limits_.hum, counts_.humidity);
  if (record.barometer > kBaroFloor && record.barometer < kBaroCeiling)
    fileOrCount(barometer_, record.barometer, limits_.baro, counts_.barometer);
  if (shortTermRain < kRainCeiling) rain_[kNewest] = shortTermRain;
}

void ShortTermSeries::applyTimeouts(const LiveRecord& record, TextLog& stationLog) {
  if (timedOut(counts_.speed, limits_.timeout)) {
    stationLog.write(fmt::format("resetting speed spike count, current speed {}", std::lround(record.windspeed)));
    fillNewest(speed_, record.windspeed, kWindReseedSlots);
  }
  if (timedOut(counts_.gust, limits_.timeout)) {
    stationLog.write(fmt::format("resetting gust spike count, current gust {}", std::lround(record.windgust)));
    fillNewest(gust_, record.windgust, kWindReseedSlots);
  }
  if (timedOut(counts_.temperature, limits_.timeout)) fillNewest(temperature_, record.outtemp, kOtherReseedSlots);
  if (timedOut(counts_.humidity, limits_.timeout)) fillNewest(humidity_, record.outhum, kOtherReseedSlots);
  if (timedOut(counts_.barometer, limits_.timeout)) fillNewest(barometer_, record.barometer, kOtherReseedSlots);
}

}  // namespace nimbrel
