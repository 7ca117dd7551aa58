#include "publish/tags/unit_conversion.h"

#include <array>

namespace nimbrel {

double knotsTo(WindUnit unit, double knots) {
  switch (unit) {
    case WindUnit::knots: return knots;
    case WindUnit::mph: return knots * kMphPerKnot;
    case WindUnit::kmh: return knots * kKmhPerKnot;
    case WindUnit::metresPerSecond: return knots * kMetresPerSecondPerKnot;
    case WindUnit::beaufort: return beaufortForce(knots);
  }
  return knots;
}

int beaufortForce(double knots) {
  // The first speed (knots, rounded to a whole knot) of forces 1 to 12.
  static constexpr std::array<double, 12> kForceStarts = {1, 4, 7, 11, 17, 22, 28, 34, 41, 48, 56, 64};
  const double rounded = static_cast<double>(static_cast<long long>(knots + 0.5));
  int force = 0;
  while (force < 12 && rounded >= kForceStarts[static_cast<std::size_t>(force)]) ++force;
  return force;
}

}  // namespace nimbrel
