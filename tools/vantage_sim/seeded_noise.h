#pragma once
// Reproducible randomness as a pure function of (seed, channel, position):
// the same seed gives the same weather whatever the order or spacing of the
// questions asked, which keeps the simulator deterministic.

#include <cstdint>

namespace nimbrel::sim {

class SeededNoise {
 public:
  explicit SeededNoise(std::uint64_t seed) : seed_(seed) {}

  // A value in [0, 1) fixed by the channel and an integer position.
  double uniform(std::uint32_t channel, std::int64_t index) const;
  // A value in [-1, 1] that drifts smoothly: a new random target every
  // `period` seconds, blended with a cosine curve in between.
  double smooth(std::uint32_t channel, double seconds, double period) const;

 private:
  std::uint64_t seed_;
};

}  // namespace nimbrel::sim
