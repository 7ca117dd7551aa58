#include "processing/validation/absolute_limits.h"

#include <string_view>

#include "core/settings_fields.h"

namespace nimbrel {
namespace {

constexpr std::string_view kLimitsSection = "New readings limits";
constexpr std::uint16_t kMaxDirection = 360;  // degrees; 360 is north as well as 0

std::int16_t readLimit(FieldLoader& loader, std::string_view key, std::int16_t fallback) {
  int value = fallback;
  loader.integer(kLimitsSection, key, value, INT16_MIN, INT16_MAX);
  return static_cast<std::int16_t>(value);
}

void keepOrderedPair(std::int16_t& min, std::int16_t& max, std::int16_t defaultMin, std::int16_t defaultMax) {
  if (min <= max) return;
  min = defaultMin;
  max = defaultMax;
}

// Written as "inside" so that a value that is not a number fails it.
bool inside(double value, double min, double max) { return value >= min && value <= max; }

template <class T>
void restoreUnless(bool plausible, T& field, const T& previous) {
  if (!plausible) field = previous;
}

}  // namespace

AbsoluteLimits readAbsoluteLimits(const SettingsStore& settings) {
  FieldLoader loader(settings);
  const AbsoluteLimits d;
  AbsoluteLimits limits;
  limits.maxRainSpike = readLimit(loader, "max rain spike", d.maxRainSpike);
  limits.maxHum = readLimit(loader, "max hum", d.maxHum);
  limits.minHum = readLimit(loader, "min hum", d.minHum);
  limits.maxTemp = readLimit(loader, "max temp", d.maxTemp);
  limits.minTemp = readLimit(loader, "min temp", d.minTemp);
  limits.maxIndoorTemp = readLimit(loader, "max indoor temp", d.maxIndoorTemp);
  limits.minIndoorTemp = readLimit(loader, "min indoor temp", d.minIndoorTemp);
  limits.minBaro = readLimit(loader, "min baro", d.minBaro);
  limits.maxBaro = readLimit(loader, "max baro", d.maxBaro);
  limits.maxSpeed = readLimit(loader, "max speed", d.maxSpeed);
  keepOrderedPair(limits.minHum, limits.maxHum, d.minHum, d.maxHum);
  keepOrderedPair(limits.minTemp, limits.maxTemp, d.minTemp, d.maxTemp);
  keepOrderedPair(limits.minIndoorTemp, limits.maxIndoorTemp, d.minIndoorTemp, d.maxIndoorTemp);
  keepOrderedPair(limits.minBaro, limits.maxBaro, d.minBaro, d.maxBaro);
  return limits;
}

void applyAbsoluteLimits(LiveRecord& incoming, const LiveRecord& previous, const AbsoluteLimits& limits) {
  restoreUnless(inside(incoming.outtemp, limits.minTemp, limits.maxTemp), incoming.outtemp, previous.outtemp);
  restoreUnless(inside(incoming.intemp, limits.minIndoorTemp, limits.maxIndoorTemp), incoming.intemp,
                previous.intemp);
  restoreUnless(inside(incoming.outhum, limits.minHum, limits.maxHum), incoming.outhum, previous.outhum);
  restoreUnless(inside(incoming.barometer, limits.minBaro, limits.maxBaro), incoming.barometer, previous.barometer);
  restoreUnless(incoming.windspeed <= limits.maxSpeed, incoming.windspeed, previous.windspeed);
  restoreUnless(incoming.windgust <= limits.maxSpeed, incoming.windgust, previous.windgust);
  restoreUnless(incoming.winddir <= kMaxDirection, incoming.winddir, previous.winddir);
}

}  // namespace nimbrel
