#include "processing/statistics/wind_average.h"

#include <gtest/gtest.h>

namespace nimbrel {
namespace {

MinuteWindSeries minutesOf(double knots, int count) {
  MinuteWindSeries series;
  for (int i = 0; i < count; ++i) series.push(knots);
  return series;
}

TEST(WindAverageTest, MainFormAddsElevenMinutesOverTen) {
  const MinuteWindSeries series = minutesOf(10, 11);
  EXPECT_DOUBLE_EQ(mainform::avgwind10min(series), 11.0);
  EXPECT_DOUBLE_EQ(formunits::avgwind10min(series), 10.0);
}

TEST(WindAverageTest, OnlyTheNewestMinutesCount) {
  MinuteWindSeries series = minutesOf(40, 30);
  for (int i = 0; i < 10; ++i) series.push(5);
  // The eleventh newest minute still holds 40 knots; the main form's average sees it.
  EXPECT_DOUBLE_EQ(formunits::avgwind10min(series), 5.0);
  EXPECT_DOUBLE_EQ(mainform::avgwind10min(series), 9.0);
}

TEST(WindAverageTest, MissingMinutesAfterStartCountAsCalm) {
  const MinuteWindSeries series = minutesOf(10, 5);
  EXPECT_DOUBLE_EQ(mainform::avgwind10min(series), 5.0);
  EXPECT_DOUBLE_EQ(formunits::avgwind10min(series), 5.0);
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
