#include "processing/statistics/wind_average.h"

#include <gtest/gtest.h>

namespace nimbrel {
namespace {

MinuteWindSeries minutesOf(double knots, int count, MinuteWindSeries series = {}) {
  for (int i = 0; i < count; ++i) series.push(knots);
  return series;
}

// The main form's average adds eleven minutes and divides by ten; minutes
// missing after the start count as calm.
TEST(WindAverageTest, OnlyTheNewestMinutesCountAndTheMainFormAddsEleven) {
  struct Row {
    const char* minutes;
    MinuteWindSeries series;
    double mainForm, unitsForm;
  };
  // Thirty minutes of 40 knots and then ten of 5: the eleventh newest minute
  // still holds 40 knots, which only the main form's average sees.
  for (const auto& [minutes, series, mainForm, unitsForm] :
       {Row{"11 x 10", minutesOf(10, 11), 11.0, 10.0}, {"5 x 10", minutesOf(10, 5), 5.0, 5.0},
        {"30 x 40, 10 x 5", minutesOf(5, 10, minutesOf(40, 30)), 9.0, 5.0}}) {
    EXPECT_DOUBLE_EQ(mainform::avgwind10min(series), mainForm) << minutes;
    EXPECT_DOUBLE_EQ(formunits::avgwind10min(series), unitsForm) << minutes;
  }
}

TEST(WindAverageTest, MinuteValuesAreWholeKnotsWithinAByte) {
  MinuteWindSeries series;
  for (double knots : {10.4, 10.5, 300.0, -3.0}) series.push(knots);
  EXPECT_EQ(series.minutesAgo(3), 10);
  EXPECT_EQ(series.minutesAgo(2), 11);
  EXPECT_EQ(series.minutesAgo(1), 255);
  EXPECT_EQ(series.minutesAgo(0), 0);
}

}  // namespace
}  // namespace nimbrel
