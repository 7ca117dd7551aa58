#include "stations/data_watchdog.h"

#include <gtest/gtest.h>

namespace nimbrel {
namespace {

TEST(DataWatchdog, AWm918WithAMissingGroupIsCompleteAfter151Ticks) {
  ReceiveState s;
  s.hold = true;  // nothing else marks the data complete
  s.groupFlags = {true, true, false, true, true};
  int ticks = 0;
  while (!s.processData && ticks < 1000) {
    Timer2Timer(s, {.stationType = 1});
    ++ticks;
  }
  EXPECT_EQ(ticks, 151);
  EXPECT_TRUE(s.groupFlags[2]);
  EXPECT_EQ(s.noDataTicks, 0);
}

TEST(DataWatchdog, AWm918CompleteSetIsTakenAndStartsTheNextSet) {
  ReceiveState s;
  s.hold = true;
  s.groupFlags = {true, true, true, true, true};
  s.noDataTicks = 40;
  Timer2Timer(s, {.stationType = 1});
  EXPECT_TRUE(s.processData);
  EXPECT_EQ(s.groupFlags, (std::array<bool, 5>{false, false, false, false, true}));
  // Waiting for the next set counts from the same tick on.
  EXPECT_EQ(s.noDataTicks, 1);
}

TEST(DataWatchdog, WmrStationsWaitForFourGroupsAndResetOnlyOnce) {
  ReceiveState s;
  s.hold = true;
  Timer2Timer(s, {.stationType = 8});
  EXPECT_FALSE(s.processData);
  // Settings that say two groups are not fitted mark them present.
  Timer2Timer(s, {.stationType = 8, .wmrFirstCheck = false, .wmrSecondCheck = false});
  s.groupFlags[2] = true;
  Timer2Timer(s, {.stationType = 8});
  EXPECT_TRUE(s.processData);
  EXPECT_FALSE(s.hold);

  ReceiveState silent;
  silent.hold = true;
  silent.noDataTicks = 151;
  Timer2Timer(silent, {.stationType = 3});
  EXPECT_TRUE(silent.onceOnlyReset);
  EXPECT_EQ(silent.noDataTicks, 0);
  silent.processData = false;
  silent.hold = true;
  silent.noDataTicks = 151;
  Timer2Timer(silent, {.stationType = 3});
  EXPECT_FALSE(silent.processData);  // once only
  EXPECT_EQ(silent.noDataTicks, 201);  // bounded to 200 at the start of each tick
}

TEST(DataWatchdog, CountersAreBounded) {
  ReceiveState s;
  s.noDataTicks = 160;
  s.slowCounter = 9000;
  s.busy = true;
  s.hold = true;
  Timer2Timer(s, {.stationType = 31});
  EXPECT_EQ(s.noDataTicks, 200);
  EXPECT_EQ(s.slowCounter, 5000);
  Timer2Timer(s, {.stationType = 10});
  EXPECT_TRUE(s.processData);
  EXPECT_EQ(s.slowCounter, 70);
}

}  // namespace
}  // namespace nimbrel
