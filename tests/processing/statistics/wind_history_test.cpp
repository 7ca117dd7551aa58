#include "processing/statistics/wind_history.h"

#include <gtest/gtest.h>

#include "processing/statistics/compass_words.h"
#include "support/memory_settings_store.h"

namespace nimbrel {
namespace {

using testsupport::MemorySettingsStore;

class LastHourWindTest : public ::testing::Test {
 protected:
  LastHourWindTest() { inputs_.now = LocalTime{.year = 2024, .month = 7, .day = 3, .hour = 14}; }
  // One minute of wind: the readings raise the minute's maxima, then the
  // per-minute pass runs at the next minute of the clock.
  LastHourMaximum minute(double average, double gust, double direction) {
    wind_.noteReading(average, gust);
    inputs_.directionDegrees = direction;
    inputs_.now.minute = (inputs_.now.minute + 1) % 60;
    return wind_.updatemaxgustreadings(inputs_, store_);
  }
  LastHourMaximum calmMinutes(int count) {
    LastHourMaximum last;
    for (int i = 0; i < count; ++i) last = minute(0, 0, 0);
    return last;
  }

  LastHourWind wind_;
  MinuteWindInputs inputs_;
  MemorySettingsStore store_;
};

TEST_F(LastHourWindTest, MinuteKeepsItsHighestReadingsAndStartsAgainAtZero) {
  wind_.noteReading(8, 12);
  wind_.noteReading(11, 9);
  minute(3, 4, 200);
  EXPECT_EQ(wind_.average(kNewestMinute), 11);
  EXPECT_EQ(wind_.gust(kNewestMinute), 12);
  EXPECT_EQ(wind_.direction(kNewestMinute), 200);
  minute(0, 0, 210);
  EXPECT_EQ(wind_.average(kNewestMinute), 0);
  EXPECT_EQ(wind_.gust(kNewestMinute), 0);
  EXPECT_EQ(wind_.gust(kNewestMinute - 1), 12);
}

TEST_F(LastHourWindTest, EqualMaximaGoToTheLaterMinute) {
  minute(20, 0, 90);
  const LastHourMaximum top = minute(20, 0, 180);
  EXPECT_EQ(top.sector, 8);
  EXPECT_EQ(top.compass, "  S");
  EXPECT_EQ(top.minute, kNewestMinute);
}

TEST_F(LastHourWindTest, GustEqualToTheTopAverageWinsEvenWhenEarlier) {
  minute(5, 20, 90);
  const LastHourMaximum top = minute(20, 0, 180);
  EXPECT_EQ(top.compass, "  E");
  EXPECT_EQ(top.minute, kNewestMinute - 1);
  EXPECT_FALSE(top.newHigh);
}

TEST_F(LastHourWindTest, MaximumAndItsTimeAndDirectionAreWritten) {
  const LastHourMaximum top = minute(10, 25.6, 247);
  EXPECT_TRUE(top.found);
  EXPECT_TRUE(top.newHigh);
  EXPECT_EQ(top.roundedKnots, 26);
  EXPECT_EQ(top.compass, "WSW");
  EXPECT_EQ(top.time, "14:01");
  calmMinutes(5);
  EXPECT_EQ(store_.ReadString("Extreme conditions times", "Max speed last hour"), "14:01");
  EXPECT_EQ(store_.ReadString("Max gust last hour dir", "dir"), "247");
}

TEST_F(LastHourWindTest, MinuteOlderThanAnHourLeavesTheScan) {
  minute(0, 30, 90);
  EXPECT_TRUE(calmMinutes(59).found);  // now in slot 1, the oldest scanned
  const LastHourMaximum top = calmMinutes(1);
  EXPECT_FALSE(top.found);
  EXPECT_EQ(top.compass, "---");
  EXPECT_EQ(store_.ReadString("Extreme conditions times", "Max speed last hour"), "14:01");
}

TEST_F(LastHourWindTest, CalmHourHasNoMaximumAndWritesNothing) {
  const LastHourMaximum top = calmMinutes(3);
  EXPECT_FALSE(top.found);
  EXPECT_FALSE(top.newHigh);
  EXPECT_EQ(top.compass, "---");
  EXPECT_EQ(store_.size(), 0u);
}

TEST_F(LastHourWindTest, CappedAtTodaysGustOutsideTheResetHourOnly) {
  inputs_.todaysHighGust = 15;
  inputs_.resetHour = extremesResetHour(DayResetTime::nineAm);
  EXPECT_DOUBLE_EQ(minute(0, 22, 0).knots, 15);
  inputs_.now.hour = 9;
  EXPECT_DOUBLE_EQ(minute(0, 0, 0).knots, 22);
  inputs_.resetHour = extremesResetHour(DayResetTime::midnight);
  EXPECT_DOUBLE_EQ(minute(0, 0, 0).knots, 15);
  inputs_.now.hour = 0;
  EXPECT_DOUBLE_EQ(minute(0, 0, 0).knots, 22);
}

TEST_F(LastHourWindTest, BelowTodaysGustIsNotCapped) {
  inputs_.todaysHighGust = 30;
  EXPECT_DOUBLE_EQ(minute(0, 22, 0).knots, 22);
  inputs_.todaysHighGust.reset();  // no gust yet today: nothing to cap at
  EXPECT_DOUBLE_EQ(minute(0, 0, 0).knots, 22);
}

TEST(CompassWordsTest, SectorsAndWords) {
  EXPECT_EQ(compassWord(compassSector(0), false), " N ");
  EXPECT_EQ(compassWord(compassSector(11), false), " N ");
  EXPECT_EQ(compassWord(compassSector(12), false), "NNE");
  EXPECT_EQ(compassWord(compassSector(270), false), " W");
  EXPECT_EQ(compassSector(355), 16);
  EXPECT_EQ(compassWord(16, false), "  N");
  EXPECT_EQ(compassWord(16, true), "  N");
  EXPECT_EQ(compassWord(compassSector(90), true), " O");
  EXPECT_EQ(compassWord(compassSector(135), true), " SO");
  EXPECT_EQ(compassWord(compassSector(112), true), "OSO");
  EXPECT_EQ(compassWord(-1, false), "---");
  EXPECT_EQ(compassWord(17, false), "---");
}

}  // namespace
}  // namespace nimbrel
