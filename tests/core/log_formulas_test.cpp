#include "core/log_formulas.h"

#include <gtest/gtest.h>

// Expected values worked out with python3's math module from the published
// Magnus, Rothfusz and NWS wind-chill formulas.

namespace nimbrel {
namespace {

TEST(LogDewPoint, ComputedInsideTheRangeAndTheSentinelOutsideIt) {
  EXPECT_NEAR(logDewPoint(20.0, 65.0), 13.218114424815507, 1e-9);
  EXPECT_NEAR(logDewPoint(20.0, 109.0), 21.401059882894582, 1e-9);
  EXPECT_NEAR(logDewPoint(-60.0, 50.0), -65.27005582635537, 1e-9);
  EXPECT_NEAR(logDewPoint(59.9, 50.0), 45.73845629340536, 1e-9);
  for (const auto& [temp, hum] : {std::pair{20.0, 110.0}, {20.0, 0.0}, {20.0, -5.0}, {-60.01, 50.0}, {60.0, 50.0}})
    EXPECT_EQ(logDewPoint(temp, hum), 50.0) << temp << " C, " << hum << " %";
}

TEST(LogHeatIndex, TheTemperatureBelowTwentyAndTheRegressionFromTwenty) {
  EXPECT_EQ(logHeatIndex(19.9, 90), 19.9);
  EXPECT_NEAR(logHeatIndex(20.0, 50), 25.194912344444397, 1e-9);
  // Dry air: the regression comes out below the temperature and is kept.
  EXPECT_NEAR(logHeatIndex(20.0, 0), 18.51994984444446, 1e-9);
  EXPECT_NEAR(logHeatIndex(32.0, 70), 40.40927367955577, 1e-9);
  // The humidity's square wraps at sixteen bits: 300 * 300 = 90000 is taken
  // as 24464; without the wrap it would be 202.5.
  EXPECT_NEAR(logHeatIndex(30.0, 300), 63.91325885555539, 1e-9);
}

TEST(ClientrawWindChill, ConvertsKnotsToMph) {
  EXPECT_NEAR(clientrawWindChillUS(10.0, 30.0), 20.498945983447094, 1e-9);
  EXPECT_EQ(clientrawWindChillUS(10.0, 50.0), 50.0);
  EXPECT_EQ(clientrawWindChillUS(2.6, 30.0), 30.0);  // 2.99 mph: below the formula's range
}

}  // namespace
}  // namespace nimbrel
