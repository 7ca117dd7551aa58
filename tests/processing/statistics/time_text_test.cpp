#include "processing/statistics/time_text.h"

#include <gtest/gtest.h>

namespace nimbrel {
namespace {

// The 24-hour clock pads both fields; the USA clock has no leading zero and
// names midnight and noon as 12 am and 12 pm.
TEST(TimeTextTest, BothClocksAroundMidnightAndNoon) {
  struct Row {
    int hour, minute;
    const char *metric, *usa;
  };
  for (const Row& row : {Row{7, 5, "07:05", "7:05 am"}, {0, 0, "00:00", "12:00 am"}, {0, 59, "00:59", "12:59 am"},
                         {12, 0, "12:00", "12:00 pm"}, {12, 30, "12:30", "12:30 pm"}, {13, 0, "13:00", "1:00 pm"},
                         {23, 59, "23:59", "11:59 pm"}}) {
    const LocalTime t{.hour = row.hour, .minute = row.minute};
    EXPECT_EQ(timeconvert(t, false), row.metric);
    EXPECT_EQ(timeconvert(t, true), row.usa);
  }
}

}  // namespace
}  // namespace nimbrel
