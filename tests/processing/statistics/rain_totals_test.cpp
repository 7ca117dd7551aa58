#include "processing/statistics/rain_totals.h"

#include <gtest/gtest.h>

#include "support/expect_stored.h"
#include "support/memory_settings_store.h"
#include "support/settings_test_folder.h"

namespace nimbrel {
namespace {

using testsupport::expectStored;

class RainTotalsTest : public ::testing::Test {
 protected:
  RainTotalsTest() {
    record_.dailyrain = 1;
    record_.monthlyrain = 10;
    record_.yearlyrain = 100;
  }
  void expectTotals(double day, double month, double year) const {
    EXPECT_NEAR(record_.dailyrain, day, 1e-9);
    EXPECT_NEAR(record_.monthlyrain, month, 1e-9);
    EXPECT_NEAR(record_.yearlyrain, year, 1e-9);
  }
  void rateAt(double rate, int hour, int minute, bool usaTimes = false) {
    record_.rainrate = rate;
    rain_.updateRainRate(record_, LocalTime{.hour = hour, .minute = minute}, usaTimes, store_);
  }

  testsupport::SettingsTestFolder folder_;
  RainTotals rain_{folder_.log()};
  LiveRecord record_;
  testsupport::MemorySettingsStore store_;
};

TEST_F(RainTotalsTest, CounterRisesAddUpWhileADropIsAResetAndAJumpIsRefused) {
  EXPECT_EQ(rain_.addCounterReading(512.4, record_), 0);  // the first reading only sets the baseline
  EXPECT_EQ(rain_.counterBaseline(), 512.4);
  expectTotals(1, 10, 100);
  EXPECT_NEAR(rain_.addCounterReading(512.6, record_), 0.2, 1e-9);
  rain_.addCounterReading(513.6, record_);
  expectTotals(2.2, 11.2, 101.2);

  EXPECT_EQ(rain_.addCounterReading(1, record_), 0);  // the station reset its counter
  expectTotals(2.2, 11.2, 101.2);
  rain_.addCounterReading(1.5, record_);
  expectTotals(2.7, 11.7, 101.7);

  EXPECT_EQ(rain_.addCounterReading(51.5, record_), 0);  // exactly the default limit of 50 mm
  expectTotals(2.7, 11.7, 101.7);
  EXPECT_NE(folder_.logText().find("rain counter jump refused: 50.0 mm"), std::string::npos);
  EXPECT_EQ(rain_.addCounterReading(52.5, record_), 1);  // counted from the new level
  EXPECT_EQ(rain_.addCounterReading(57.5, record_, 5), 0);
  EXPECT_NEAR(rain_.addCounterReading(62.4, record_, 5), 4.9, 1e-9);
}

TEST_F(RainTotalsTest, TotalsAndBaselineSurviveARestart) {
  rain_.addCounterReading(200, record_);
  rain_.addCounterReading(202.5, record_);
  rateAt(0.4, 16, 20);
  rain_.save(record_, store_);
  expectStored(store_, {{"new rain storage", "dailyrain new", "3.5"}, {"new rain storage", "monthlyrain new", "12.5"},
                        {"new rain storage", "yearlyrain new", "102.5"},
                        {"new rain storage", "rain counter baseline", "202.5"}, {"Last max rain rate", "value", "0.4"}});

  LiveRecord restartedRecord;
  RainTotals restarted(folder_.log());
  restarted.load(store_, restartedRecord);
  EXPECT_EQ(restartedRecord.monthlyrain, 12.5);
  EXPECT_EQ(restarted.maxRainRate(), 0.4);
  EXPECT_EQ(restarted.maxRainRateTime(), "16:20");
  // Rain that fell while the program was stopped is counted from the stored baseline.
  EXPECT_EQ(restarted.addCounterReading(203.5, restartedRecord), 1);
  EXPECT_EQ(restartedRecord.dailyrain, 4.5);
}

TEST_F(RainTotalsTest, UnreadableStoredValuesLeaveTheTotalsAndNoBaseline) {
  store_.WriteString("new rain storage", "dailyrain new", "");
  store_.WriteString("new rain storage", "monthlyrain new", "12,5");
  store_.WriteString("new rain storage", "rain counter baseline", "lots");
  rain_.load(store_, record_);
  expectTotals(1, 10, 100);
  EXPECT_FALSE(rain_.counterBaseline());
  EXPECT_EQ(rain_.addCounterReading(5, record_), 0);
}

TEST_F(RainTotalsTest, HighestRainRateMovesOnlyWhenBeaten) {
  rateAt(0.3, 6, 0, true);
  rateAt(0.3, 7, 0, true);
  EXPECT_EQ(store_.ReadString("Extreme conditions times", "Max rainrate"), "6:00 am");
  rateAt(0.1, 8, 0, true);
  EXPECT_EQ(rain_.maxRainRate(), 0.3);
  EXPECT_EQ(rain_.maxRainRateTime(), "6:00 am");
}

}  // namespace
}  // namespace nimbrel
