#include "tools/vantage_sim/seeded_noise.h"

#include <cmath>
#include <numbers>

namespace nimbrel::sim {
namespace {

// The splitmix64 finaliser: a cheap hash whose output bits all depend on
// every input bit.
std::uint64_t mix(std::uint64_t x) {
  x += 0x9E3779B97F4A7C15ULL;
  x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9ULL;
  x = (x ^ (x >> 27)) * 0x94D049BB133111EBULL;
  return x ^ (x >> 31);
}

}  // namespace

double SeededNoise::uniform(std::uint32_t channel, std::int64_t index) const {
  const std::uint64_t key = mix(seed_ ^ mix(channel + 0x5151ULL)) ^ static_cast<std::uint64_t>(index);
  return static_cast<double>(mix(key) >> 11) * 0x1.0p-53;
}

double SeededNoise::smooth(std::uint32_t channel, double seconds, double period) const {
  const double position = seconds / period;
  const double cell = std::floor(position);
  const double within = position - cell;
  const auto index = static_cast<std::int64_t>(cell);
  const double from = 2.0 * uniform(channel, index) - 1.0;
  const double to = 2.0 * uniform(channel, index + 1) - 1.0;
  const double blend = (1.0 - std::cos(std::numbers::pi * within)) / 2.0;
  return from + (to - from) * blend;
}

}  // namespace nimbrel::sim
