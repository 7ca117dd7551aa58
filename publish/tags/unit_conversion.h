#pragma once
// Conversions from the internal units to the units tags are shown in, the
// symbols the display-units flag appends, and the Beaufort force.

#include <string_view>

#include "core/unit_choices.h"

namespace nimbrel {

inline constexpr double kKmhPerKnot = 1.852;
inline constexpr double kMphPerKnot = 1.150779;
inline constexpr double kMetresPerSecondPerKnot = 0.514444;

double knotsTo(WindUnit unit, double knots);
// Force 0-12 on the Beaufort scale (upper limits in knots 1, 3, 6, 10, 16,
// 21, 27, 33, 40, 47, 55, 63).
int beaufortForce(double knots);

}  // namespace nimbrel
