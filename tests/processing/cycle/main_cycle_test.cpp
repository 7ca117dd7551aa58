#include "processing/cycle/main_cycle.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/file_io.h"
#include "core/text_log.h"
#include "processing/cycle/schedule.h"
#include "support/memory_settings_store.h"
#include "support/temp_folder.h"

namespace nimbrel {
namespace {

class CycleTest : public ::testing::Test {
 protected:
  explicit CycleTest(std::uint16_t stationType = 31)
      : log(dir / "programerrorlog.txt", clock), cycle(state, receive, log, stationType) {
    state.reading_received = true;
  }
  // Ticks once a second from hh:mm:ss for `seconds` seconds.
  void tickFrom(int hour, int minute, int second, int seconds) {
    for (int i = 0; i < seconds; ++i) {
      LocalTime t;
      const int total = hour * 3600 + minute * 60 + second + i;
      t.hour = total / 3600 % 24;
      t.minute = total / 60 % 60;
      t.second = total % 60;
      cycle.updatetimernewnow(t);
    }
  }
  std::string errors() const { return readWholeFile(log.path()).value_or(""); }

  testsupport::TempFolder dir;
  ManualClock clock;
  TextLog log;
  CycleState state;
  ReceiveState receive;
  MainCycle cycle;
};

TEST_F(CycleTest, MinutePassRunsOnceEvenWhenTheFirstTickComesAtSecondEleven) {
  tickFrom(10, 0, 11, 60);  // 10:00:11 ... 10:01:10
  EXPECT_EQ(cycle.minutePasses(), 2u);  // 10:00 late but caught, and 10:01
}

TEST_F(CycleTest, MinutePassIsSkippedWhenTheFirstTickComesAtSecondTwelve) {
  tickFrom(10, 0, 12, 48);  // up to 10:00:59
  EXPECT_EQ(cycle.minutePasses(), 0u);
  tickFrom(10, 1, 0, 60);
  EXPECT_EQ(cycle.minutePasses(), 1u);
}

TEST_F(CycleTest, UploadPassRunsOnceAMinuteInItsWindow) {
  std::vector<int> seconds;
  cycle.uploadPass = [&] { seconds.push_back(state.current_second); };
  tickFrom(10, 0, 0, 180);
  EXPECT_EQ(seconds, (std::vector<int>{31, 31, 31}));
  // A tick that misses seconds 31-44 loses that minute's upload pass.
  seconds.clear();
  tickFrom(10, 3, 0, 31);
  tickFrom(10, 3, 45, 15);
  EXPECT_TRUE(seconds.empty());
}

TEST_F(CycleTest, NothingRunsBeforeTheFirstReadingOrWhileHeld) {
  state.reading_received = false;
  tickFrom(10, 0, 0, 120);
  EXPECT_EQ(cycle.minutePasses(), 0u);
  EXPECT_EQ(cycle.uploadPasses(), 0u);
  state.reading_received = true;
  state.cycle_held = true;
  tickFrom(10, 2, 0, 60);
  EXPECT_EQ(cycle.minutePasses(), 0u);
  state.cycle_held = false;
  tickFrom(10, 3, 0, 60);
  EXPECT_EQ(cycle.minutePasses(), 1u);
}

TEST_F(CycleTest, AFiveSecondRealtimeIntervalPostsEverySixTicks) {
  std::vector<int> at;
  auto& wu = cycle.realtime[0];
  wu.on = true;
  wu.intervalSeconds = 5;
  wu.post = [&] { at.push_back(state.current_second); };
  tickFrom(10, 0, 0, 18);
  EXPECT_EQ(at, (std::vector<int>{5, 11, 17}));
  wu.postRunning = true;  // a post still running is not started again
  tickFrom(10, 0, 18, 6);
  EXPECT_EQ(at.size(), 3u);
}

TEST_F(CycleTest, AFailingDutyIsLoggedAndTheRestOfThePassGoesOn) {
  std::vector<std::string> ran;
  cycle.minutePass.maxGustReadings.run = [&] { throw std::runtime_error("series broken"); };
  cycle.minutePass.housekeeping.run = [&] { ran.push_back("housekeeping"); };
  cycle.minutePass.logfile.run = [&] { ran.push_back("logfile"); };
  cycle.minutePass.records.run = [&] { ran.push_back("records"); };
  cycle.minutePass.flushSettings.run = [&] { ran.push_back("flush"); };
  cycle.firstHalf.onesecondTimer.run = [] { throw std::runtime_error("bad reading"); };
  tickFrom(10, 0, 0, 1);
  EXPECT_EQ(ran, (std::vector<std::string>{"housekeeping", "logfile", "records", "flush"}));
  const std::string text = errors();
  EXPECT_NE(text.find("error with update max gust readings series broken"), std::string::npos) << text;
  EXPECT_NE(text.find("error with onesecondtimer via units bad reading"), std::string::npos) << text;
}

TEST_F(CycleTest, ClimateReportsRunOnTheTickAfterTheyAreRequested) {
  int reports = 0;
  cycle.firstHalf.climateReports.run = [&] {
    EXPECT_TRUE(state.report_busy);
    ++reports;
  };
  cycle.minutePass.housekeeping.run = [&] { state.noaa_request = true; };
  tickFrom(0, 0, 0, 1);
  EXPECT_EQ(reports, 1);  // the same tick: the first half asks after the minute pass
  EXPECT_FALSE(state.noaa_request);
  EXPECT_FALSE(state.report_busy);
}

TEST_F(CycleTest, TheWatchdogSkipsTicksThatBroughtDataAndClientrawNeedsAReading) {
  int watchdog = 0, clientraw = 0;
  cycle.secondHalf.dataWatchdog.run = [&] { ++watchdog; };
  cycle.secondHalf.clientraw.run = [&] { ++clientraw; };
  receive.indicatorLime = true;
  tickFrom(10, 0, 0, 1);
  EXPECT_EQ(watchdog, 0);
  tickFrom(10, 0, 1, 1);
  EXPECT_EQ(watchdog, 1);
  EXPECT_EQ(clientraw, 2);
  state.reading_received = false;
  tickFrom(10, 0, 2, 1);
  EXPECT_EQ(clientraw, 2);
}

class SelfDrivenStation : public CycleTest, public ::testing::WithParamInterface<int> {
 protected:
  SelfDrivenStation() : CycleTest(static_cast<std::uint16_t>(GetParam())) {}
};

TEST_P(SelfDrivenStation, NeverRunsThePasses) {
  tickFrom(10, 0, 0, 180);
  EXPECT_EQ(cycle.minutePasses(), 0u);
  EXPECT_EQ(cycle.uploadPasses(), 0u);
}
INSTANTIATE_TEST_SUITE_P(Types, SelfDrivenStation, ::testing::Values(100, 120));

TEST(Schedule, AJobIsDueWhenThePresentTimeIsAKeyOfItsSection) {
  testsupport::MemorySettingsStore store;
  store.WriteString("Weather Wunderground Times", "07:05", "");
  store.WriteString("Weather Wunderground Times", "23:50", "yes");
  EXPECT_TRUE(isScheduledNow(store, "Weather Wunderground Times", 7, 5));
  EXPECT_TRUE(isScheduledNow(store, "Weather Wunderground Times", 23, 50));
  EXPECT_FALSE(isScheduledNow(store, "Weather Wunderground Times", 7, 6));
  EXPECT_FALSE(isScheduledNow(store, "Other Times", 7, 5));
  EXPECT_EQ(scheduleKey(0, 0), "00:00");
}

}  // namespace
}  // namespace nimbrel
