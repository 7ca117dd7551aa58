#include "processing/statistics/time_text.h"

#include <gtest/gtest.h>

namespace nimbrel {
namespace {

LocalTime at(int hour, int minute) {
  LocalTime t;
  t.hour = hour;
  t.minute = minute;
  return t;
}

TEST(TimeTextTest, TwentyFourHourClockPadsBothFields) {
  EXPECT_EQ(timeconvert(at(7, 5), false), "07:05");
  EXPECT_EQ(timeconvert(at(0, 0), false), "00:00");
  EXPECT_EQ(timeconvert(at(23, 59), false), "23:59");
}

TEST(TimeTextTest, UsaClockHasNoLeadingZeroAndNamesMidnightAndNoon) {
  EXPECT_EQ(timeconvert(at(7, 5), true), "7:05 am");
  EXPECT_EQ(timeconvert(at(0, 0), true), "12:00 am");
  EXPECT_EQ(timeconvert(at(0, 59), true), "12:59 am");
  EXPECT_EQ(timeconvert(at(12, 0), true), "12:00 pm");
  EXPECT_EQ(timeconvert(at(12, 30), true), "12:30 pm");
  EXPECT_EQ(timeconvert(at(13, 0), true), "1:00 pm");
  EXPECT_EQ(timeconvert(at(23, 59), true), "11:59 pm");
}

}  // namespace
}  // namespace nimbrel
