#include "core/clock.h"

#include <gtest/gtest.h>

#include <thread>

#include "support/time_zone.h"

namespace nimbrel {
namespace {

using namespace std::chrono_literals;

SystemTime parsed(const char* text) {
  const auto time = parseLocalTime(text);
  EXPECT_TRUE(time) << text;
  return time.value_or(SystemTime{});
}

TEST(LocalTimeText, ParsesAndFormatsTheCommandLineForm) {
  testsupport::ScopedTimeZone zone;
  const LocalTime lt = toLocalTime(parsed("2026-07-04 13:05:09"));
  EXPECT_EQ(formatLocalTime(lt), "2026-07-04 13:05:09");
  EXPECT_EQ(lt.weekday, 6);  // a Saturday
  EXPECT_EQ(formatLocalTime(toLocalTime(parsed("2026-07-04 13:05"))), "2026-07-04 13:05:00");
  // A day the month does not have is refused, not carried into the next month.
  EXPECT_EQ(formatLocalTime(toLocalTime(parsed("2028-02-29 10:00:00"))), "2028-02-29 10:00:00");
  for (const char* bad : {"", "2026-13-01 00:00:00", "2026-07-04", "2026-07-04 24:00:00", "tomorrow",
                          "2026-07-04 13:05:09x", "2026-02-30 10:00:00", "2026-02-29 10:00:00", "2026-04-31 00:00"})
    EXPECT_FALSE(parseLocalTime(bad)) << bad;
}

TEST(LocalTimeText, FollowsTheDaylightSavingChange) {
  testsupport::ScopedTimeZone zone;
  // 29 March 2026: clocks jump from 01:00 to 02:00, so that day has 23 hours.
  const auto midnight = parsed("2026-03-29 00:00:00");
  EXPECT_EQ(parsed("2026-03-30 00:00:00") - midnight, 23h);
  EXPECT_EQ(toLocalTime(midnight + 1h).hour, 2);
  EXPECT_EQ(parsed("2026-10-26 00:00:00") - parsed("2026-10-25 00:00:00"), 25h);  // 25 October has 25
}

TEST(ScaledClockTest, RunsFasterFromTheChosenTimeAndANonPositiveSpeedIsRealTime) {
  const auto start = fromLocalTime(2026, 12, 30, 23, 0, 0);
  ScaledClock clock(start, 1000.0);
  const auto first = clock.now();
  EXPECT_GE(first, start);
  std::this_thread::sleep_for(20ms);
  EXPECT_GE(clock.now() - first, 20s);  // 20 ms of real time are at least 20 s of program time
  EXPECT_EQ(clock.realDuration(1000s), std::chrono::nanoseconds(1s));
  EXPECT_EQ(ScaledClock(start, 0.0).speed(), 1.0);
}

TEST(ManualClockTest, MovesOnlyWhenTold) {
  testsupport::ScopedTimeZone zone;
  ManualClock clock(fromLocalTime(2028, 2, 28, 23, 59, 59));
  EXPECT_EQ(clock.local().day, 28);
  clock.advance(1s);
  EXPECT_EQ(clock.local().day, 29);  // 2028 is a leap year
  EXPECT_EQ(clock.local().month, 2);
}

}  // namespace
}  // namespace nimbrel
