#include <gtest/gtest.h>

#include "app/run_command.h"

namespace nimbrel {
namespace {

// What `--speed` accepts: "max" for simulated time, or a factor above 0 and
// up to a million; anything else is refused (and the command line says why).
TEST(ClockSpeedText, TakesMaxOrAPositiveFactorAndRefusesTheRest) {
  ASSERT_TRUE(parseClockSpeed("max"));
  EXPECT_TRUE(parseClockSpeed("max")->simulated);
  for (const auto& [text, factor] : {std::pair{"1", 1.0}, {"60", 60.0}, {"0.5", 0.5}, {"1000000", 1e6}}) {
    const auto speed = parseClockSpeed(text);
    ASSERT_TRUE(speed) << text;
    EXPECT_FALSE(speed->simulated) << text;
    EXPECT_EQ(speed->factor, factor) << text;
  }
  for (const char* bad : {"0", "-5", "", "fast", "60x", "1e400", "nan", "inf", "1000001", "MAX"})
    EXPECT_FALSE(parseClockSpeed(bad)) << bad;
}

}  // namespace
}  // namespace nimbrel
