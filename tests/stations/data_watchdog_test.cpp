#include "stations/data_watchdog.h"

#include <gtest/gtest.h>

namespace nimbrel {
namespace {

// Held data: nothing but the watchdog marks it complete.
ReceiveState heldWith(std::array<bool, 5> groups = {}, std::uint16_t noDataTicks = 0) {
  ReceiveState s;
  s.hold = true;
  s.groupFlags = groups;
  s.noDataTicks = noDataTicks;
  return s;
}

TEST(DataWatchdog, AWm918SetIsTakenWhenCompleteOrWithAMissingGroupAfter151Ticks) {
  ReceiveState missing = heldWith({true, true, false, true, true});
  int ticks = 0;
  while (!missing.processData && ticks < 1000) {
    Timer2Timer(missing, {.stationType = 1});
    ++ticks;
  }
  EXPECT_EQ(ticks, 151);
  EXPECT_TRUE(missing.groupFlags[2]);
  EXPECT_EQ(missing.noDataTicks, 0);

  ReceiveState complete = heldWith({true, true, true, true, true}, 40);
  Timer2Timer(complete, {.stationType = 1});
  EXPECT_TRUE(complete.processData);
  EXPECT_EQ(complete.groupFlags, (std::array<bool, 5>{false, false, false, false, true}));
  EXPECT_EQ(complete.noDataTicks, 1);  // waiting for the next set counts from the same tick on
}

TEST(DataWatchdog, WmrStationsWaitForFourGroupsAndResetOnlyOnce) {
  ReceiveState s = heldWith();
  Timer2Timer(s, {.stationType = 8});
  EXPECT_FALSE(s.processData);
  // Settings that say two groups are not fitted mark them present.
  Timer2Timer(s, {.stationType = 8, .wmrFirstCheck = false, .wmrSecondCheck = false});
  s.groupFlags[2] = true;
  Timer2Timer(s, {.stationType = 8});
  EXPECT_TRUE(s.processData);
  EXPECT_FALSE(s.hold);

  ReceiveState silent = heldWith({}, 151);
  Timer2Timer(silent, {.stationType = 3});
  EXPECT_TRUE(silent.onceOnlyReset);
  EXPECT_EQ(silent.noDataTicks, 0);
  silent.processData = false;
  silent.hold = true;
  silent.noDataTicks = 151;
  Timer2Timer(silent, {.stationType = 3});
  EXPECT_FALSE(silent.processData);    // once only
  EXPECT_EQ(silent.noDataTicks, 201);  // bounded to 200 at the start of each tick
}

TEST(DataWatchdog, CountersAreBounded) {
  ReceiveState s = heldWith({}, 160);
  s.slowCounter = 9000;
  s.busy = true;
  Timer2Timer(s, {.stationType = 31});
  EXPECT_EQ(s.noDataTicks, 200);
  EXPECT_EQ(s.slowCounter, 5000);
  Timer2Timer(s, {.stationType = 10});
  EXPECT_TRUE(s.processData);
  EXPECT_EQ(s.slowCounter, 70);
}

}  // namespace
}  // namespace nimbrel
