#include "processing/statistics/wind_history.h"

#include <gtest/gtest.h>

#include "processing/statistics/compass_words.h"
#include "support/memory_settings_store.h"

namespace nimbrel {
namespace {

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
  std::string storedTime() const { return store_.ReadString("Extreme conditions times", "Max speed last hour"); }

  LastHourWind wind_;
  MinuteWindInputs inputs_;
  testsupport::MemorySettingsStore store_;
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

TEST_F(LastHourWindTest, EqualMaximaGoToTheLaterMinuteButAGustEqualToTheTopAverageWinsEvenWhenEarlier) {
  minute(20, 0, 90);
  const LastHourMaximum laterAverage = minute(20, 0, 180);
  EXPECT_EQ(laterAverage.sector, 8);
  EXPECT_EQ(laterAverage.compass, "  S");
  EXPECT_EQ(laterAverage.minute, kNewestMinute);

  wind_ = LastHourWind{};  // a fresh hour
  minute(5, 20, 90);
  const LastHourMaximum earlierGust = minute(20, 0, 180);
  EXPECT_EQ(earlierGust.compass, "  E");
  EXPECT_EQ(earlierGust.minute, kNewestMinute - 1);
  EXPECT_FALSE(earlierGust.newHigh);
}

TEST_F(LastHourWindTest, ACalmHourWritesNothingAndTheMaximumIsWrittenUntilItLeavesTheHour) {
  LastHourMaximum top = calmMinutes(3);
  EXPECT_FALSE(top.found);
  EXPECT_FALSE(top.newHigh);
  EXPECT_EQ(top.compass, "---");
  EXPECT_EQ(store_.size(), 0u);

  top = minute(10, 25.6, 247);
  EXPECT_TRUE(top.found);
  EXPECT_TRUE(top.newHigh);
  EXPECT_EQ(top.roundedKnots, 26);
  EXPECT_EQ(top.compass, "WSW");
  EXPECT_EQ(top.time, "14:04");
  calmMinutes(5);
  EXPECT_EQ(storedTime(), "14:04");
  EXPECT_EQ(store_.ReadString("Max gust last hour dir", "dir"), "247");

  EXPECT_TRUE(calmMinutes(54).found);  // now in slot 1, the oldest scanned
  top = calmMinutes(1);
  EXPECT_FALSE(top.found);
  EXPECT_EQ(top.compass, "---");
  EXPECT_EQ(storedTime(), "14:04");
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

  inputs_.now.hour = 14;
  inputs_.todaysHighGust = 30;  // below today's gust: not capped
  EXPECT_DOUBLE_EQ(minute(0, 0, 0).knots, 22);
  inputs_.todaysHighGust.reset();  // no gust yet today: nothing to cap at
  EXPECT_DOUBLE_EQ(minute(0, 0, 0).knots, 22);
}

TEST(CompassWordsTest, SectorsAndWords) {
  for (const auto& [degrees, word] : {std::pair{0, " N "}, {11, " N "}, {12, "NNE"}, {270, " W"}})
    EXPECT_EQ(compassWord(compassSector(degrees), false), word) << degrees;
  for (const auto& [degrees, word] : {std::pair{90, " O"}, {135, " SO"}, {112, "OSO"}})
    EXPECT_EQ(compassWord(compassSector(degrees), true), word) << degrees;
  EXPECT_EQ(compassSector(355), 16);
  EXPECT_EQ(compassWord(16, false), "  N");
  EXPECT_EQ(compassWord(16, true), "  N");
  EXPECT_EQ(compassWord(-1, false), "---");
  EXPECT_EQ(compassWord(17, false), "---");
}

}  // namespace
}  // namespace nimbrel
