#include "processing/statistics/wind_average.h"

#include <algorithm>
#include <cmath>

namespace nimbrel {
namespace {

int sumOfNewest(const MinuteWindSeries& series, std::size_t minutes) {
  int sum = 0;
  for (std::size_t age = 0; age < minutes; ++age) sum += series.minutesAgo(age);
  return sum;
}

}  // namespace

void MinuteWindSeries::push(double knots) {
  const double whole = std::isfinite(knots) ? std::clamp(std::round(knots), 0.0, 255.0) : 0.0;
  std::shift_left(values_.begin(), values_.end(), 1);
  values_.back() = static_cast<std::uint8_t>(whole);
}

namespace mainform {
double avgwind10min(const MinuteWindSeries& series) { return sumOfNewest(series, 11) / 10.0; }
}  // namespace mainform

namespace formunits {
// The values are whole knots already; the sum is exact.
double avgwind10min(const MinuteWindSeries& series) { return sumOfNewest(series, 10) / 10.0; }
}  // namespace formunits

}  // namespace nimbrel
