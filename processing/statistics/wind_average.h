#pragma once
// The 10-minute average wind, from a rolling series of per-minute wind
// values kept as bytes (whole knots), one pushed by each per-minute pass.
//
// Two averages are computed from the same series, and both are kept on
// purpose:
// - mainform::avgwind10min adds the eleven newest minutes and divides by
//   ten, so eleven minutes of 10 knots give 11. This is the average that the
//   main screen shows and the logs write when the 10-minute average is
//   switched on; years of logged figures were made this way, and changing it
//   would put a step into every owner's records.
// - formunits::avgwind10min is the true mean of the ten newest minutes, each
//   taken as a whole number of knots, for the outputs of the units form that
//   want the real ten-minute figure.
// Until ten (or eleven) minutes have been pushed, the missing minutes count
// as calm.

#include <array>
#include <cstddef>
#include <cstdint>

namespace nimbrel {

class MinuteWindSeries {
 public:
  static constexpr std::size_t kSlots = 60;

  // The minute's wind in knots, rounded to a whole knot and held to 0-255.
  void push(double knots);
  // 0 is the newest minute, 1 the one before, up to kSlots - 1.
  std::uint8_t minutesAgo(std::size_t age) const { return values_[kSlots - 1 - age]; }

 private:
  std::array<std::uint8_t, kSlots> values_{};
};

namespace mainform {
double avgwind10min(const MinuteWindSeries& series);
}

namespace formunits {
double avgwind10min(const MinuteWindSeries& series);
}

}  // namespace nimbrel
