#include "processing/validation/spike_filter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "core/ini_store.h"
#include "support/settings_test_folder.h"

namespace nimbrel {
namespace {

using testsupport::SettingsTestFolder;
constexpr std::size_t kNewest = ShortTermSeries::kNewest;

LiveRecord steadyReading() {
  LiveRecord r;
  r.windspeed = 10;
  r.windgust = 15;
  r.winddir = 180;
  r.outtemp = 12.5;
  r.outhum = 70;
  r.barometer = 1013.2;
  return r;
}

// Limits wide enough that only the plausibility bounds decide.
SpikeLimits wideLimits() { return {.speed = 1000, .gust = 1000, .temp = 1000, .hum = 1000, .baro = 1000, .timeout = 10}; }

template <class T>
bool allSlotsAre(const ShortTermSeries::Series<T>& series, T value) {
  return std::all_of(series.begin(), series.end(), [value](T v) { return v == value; });
}

class SpikeFilterTest : public ::testing::Test {
 protected:
  void roll(const LiveRecord& r, double rain = 0) { series_.rollthedata(r, rain, folder_.log()); }
  void seedWith(const SpikeLimits& limits) {
    series_.setLimits(limits);
    roll(steadyReading());
  }
  // The station log's messages, without the time stamp in front of each.
  std::vector<std::string> logMessages() const {
    std::vector<std::string> messages;
    std::istringstream lines(folder_.logText());
    for (std::string line; std::getline(lines, line);) messages.push_back(line.substr(line.find(' ', 11) + 1));
    return messages;
  }

  SettingsTestFolder folder_;
  ShortTermSeries series_;
};

TEST_F(SpikeFilterTest, FirstCallFillsEverySlotWithThePresentValues) {
  EXPECT_FALSE(series_.seeded());
  // A wild jump on the first call has nothing to be compared with: it is taken.
  LiveRecord first = steadyReading();
  first.windspeed = 99;
  series_.rollthedata(first, 3.5, folder_.log());
  EXPECT_TRUE(series_.seeded());
  EXPECT_TRUE(allSlotsAre(series_.speed(), 99.0));
  EXPECT_TRUE(allSlotsAre(series_.gust(), 15.0));
  EXPECT_TRUE(allSlotsAre<std::uint16_t>(series_.direction(), 180));
  EXPECT_TRUE(allSlotsAre(series_.temperature(), 12.5));
  EXPECT_TRUE(allSlotsAre<std::int16_t>(series_.humidity(), 70));
  EXPECT_TRUE(allSlotsAre(series_.barometer(), 1013.2));
  EXPECT_TRUE(allSlotsAre(series_.rain(), 3.5));
  EXPECT_EQ(series_.spikeCounts(), SpikeCounts{});
  EXPECT_TRUE(logMessages().empty());
}

TEST_F(SpikeFilterTest, LaterCallsShiftAndFileSmallChangesInTheNewestSlot) {
  seedWith(SpikeLimits{});
  LiveRecord next = steadyReading();
  next.windspeed = 29.9;  // 19.9 knots up: just under the default 20
  next.winddir = 0;       // direction is never filtered
  next.outtemp = 8;
  next.outhum = 75;
  next.barometer = 1012;
  roll(next, 0.4);
  EXPECT_DOUBLE_EQ(series_.latestSpeed(), 29.9);
  EXPECT_DOUBLE_EQ(series_.speed()[kNewest - 1], 10);
  EXPECT_EQ(series_.latestDirection(), 0);
  EXPECT_DOUBLE_EQ(series_.latestTemperature(), 8);
  EXPECT_EQ(series_.latestHumidity(), 75);
  EXPECT_DOUBLE_EQ(series_.latestBarometer(), 1012);
  EXPECT_DOUBLE_EQ(series_.latestRain(), 0.4);
  roll(steadyReading(), 0.5);
  EXPECT_DOUBLE_EQ(series_.speed()[kNewest - 1], 29.9);
  EXPECT_DOUBLE_EQ(series_.speed()[kNewest - 2], 10);
}

TEST_F(SpikeFilterTest, WindSpikesRepeatTheLastValueAndAreLogged) {
  seedWith(SpikeLimits{});
  LiveRecord jump = steadyReading();
  jump.windspeed = 30;  // exactly the limit of 20 away: a spike
  jump.windgust = 45;   // exactly the limit of 30 away
  roll(jump);
  roll(jump);
  EXPECT_DOUBLE_EQ(series_.latestSpeed(), 10);
  EXPECT_DOUBLE_EQ(series_.latestGust(), 15);
  EXPECT_EQ(series_.spikeCounts().speed, 2);
  EXPECT_EQ(series_.spikeCounts().gust, 2);
  const std::vector<std::string> expected = {"inc speed spike count 0", "inc gust spike count 0",
                                             "inc speed spike count 1", "inc gust spike count 1"};
  EXPECT_EQ(logMessages(), expected);
}

TEST_F(SpikeFilterTest, CountersAreClearedOnlyByTheTimeout) {
  seedWith(SpikeLimits{});
  LiveRecord jump = steadyReading();
  jump.outtemp = 20;
  roll(jump);
  roll(steadyReading());
  roll(jump);
  EXPECT_EQ(series_.spikeCounts().temperature, 2);
  EXPECT_DOUBLE_EQ(series_.latestTemperature(), 12.5);
}

TEST_F(SpikeFilterTest, PlausibilityBoundsDecideWhatIsFiled) {
  seedWith(wideLimits());
  const auto fileOne = [this](double temp, std::uint16_t hum, double baro, double wind = 10) {
    LiveRecord r = steadyReading();
    r.windspeed = wind;
    r.windgust = wind;
    r.outtemp = temp;
    r.outhum = hum;
    r.barometer = baro;
    roll(r);
  };
  fileOne(-60, 0, 920, 150);  // all just outside
  EXPECT_DOUBLE_EQ(series_.latestSpeed(), 10);
  EXPECT_DOUBLE_EQ(series_.latestGust(), 15);
  EXPECT_DOUBLE_EQ(series_.latestTemperature(), 12.5);
  EXPECT_EQ(series_.latestHumidity(), 70);
  EXPECT_DOUBLE_EQ(series_.latestBarometer(), 1013.2);
  fileOne(60, 101, 1080);
  EXPECT_DOUBLE_EQ(series_.latestTemperature(), 12.5);
  EXPECT_EQ(series_.latestHumidity(), 70);
  EXPECT_DOUBLE_EQ(series_.latestBarometer(), 1013.2);
  EXPECT_EQ(series_.spikeCounts(), SpikeCounts{});
  EXPECT_TRUE(logMessages().empty());

  fileOne(-59.9, 1, 920.1, 149.9);  // all just inside
  EXPECT_DOUBLE_EQ(series_.latestSpeed(), 149.9);
  EXPECT_DOUBLE_EQ(series_.latestTemperature(), -59.9);
  EXPECT_EQ(series_.latestHumidity(), 1);
  EXPECT_DOUBLE_EQ(series_.latestBarometer(), 920.1);
  fileOne(59.9, 100, 1079.9);
  EXPECT_DOUBLE_EQ(series_.latestTemperature(), 59.9);
  EXPECT_EQ(series_.latestHumidity(), 100);
  EXPECT_DOUBLE_EQ(series_.latestBarometer(), 1079.9);
}

TEST_F(SpikeFilterTest, WindTimeoutTakesTheNewLevelOverThreeSlotsOnTheFourthRefusal) {
  seedWith({.speed = 20, .gust = 30, .temp = 5, .hum = 20, .baro = 10, .timeout = 3});
  LiveRecord jump = steadyReading();
  jump.windspeed = 40.6;
  for (int refused = 1; refused <= 3; ++refused) roll(jump);
  EXPECT_DOUBLE_EQ(series_.latestSpeed(), 10);
  EXPECT_EQ(series_.spikeCounts().speed, 3);
  roll(jump);
  EXPECT_EQ(series_.spikeCounts().speed, 0);
  EXPECT_DOUBLE_EQ(series_.speed()[kNewest], 40.6);
  EXPECT_DOUBLE_EQ(series_.speed()[kNewest - 1], 40.6);
  EXPECT_DOUBLE_EQ(series_.speed()[kNewest - 2], 40.6);
  EXPECT_DOUBLE_EQ(series_.speed()[kNewest - 3], 10);
  const std::vector<std::string> expected = {"inc speed spike count 0", "inc speed spike count 1",
                                             "inc speed spike count 2", "inc speed spike count 3",
                                             "resetting speed spike count, current speed 41"};
  EXPECT_EQ(logMessages(), expected);
  // The new level is now the reference: the same value again is filed.
  roll(jump);
  EXPECT_EQ(series_.spikeCounts().speed, 0);
}

TEST_F(SpikeFilterTest, GustTimeoutIsLoggedWithTheRoundedGust) {
  seedWith({.speed = 20, .gust = 30, .temp = 5, .hum = 20, .baro = 10, .timeout = 0});
  LiveRecord jump = steadyReading();
  jump.windgust = 52.4;
  roll(jump);
  EXPECT_DOUBLE_EQ(series_.gust()[kNewest - 2], 52.4);
  const std::vector<std::string> expected = {"inc gust spike count 0",
                                             "resetting gust spike count, current gust 52"};
  EXPECT_EQ(logMessages(), expected);
}

TEST_F(SpikeFilterTest, OtherTimeoutsReseedTwoSlotsSilently) {
  seedWith({.speed = 20, .gust = 30, .temp = 5, .hum = 20, .baro = 10, .timeout = 3});
  LiveRecord jump = steadyReading();
  jump.outtemp = 25;
  jump.outhum = 20;
  jump.barometer = 990;
  for (int refused = 1; refused <= 3; ++refused) roll(jump);
  EXPECT_DOUBLE_EQ(series_.latestTemperature(), 12.5);
  EXPECT_EQ(series_.latestHumidity(), 70);
  EXPECT_DOUBLE_EQ(series_.latestBarometer(), 1013.2);
  roll(jump);
  EXPECT_EQ(series_.spikeCounts(), SpikeCounts{});
  for (std::size_t slot : {kNewest, kNewest - 1}) {
    EXPECT_DOUBLE_EQ(series_.temperature()[slot], 25);
    EXPECT_EQ(series_.humidity()[slot], 20);
    EXPECT_DOUBLE_EQ(series_.barometer()[slot], 990);
  }
  EXPECT_DOUBLE_EQ(series_.temperature()[kNewest - 2], 12.5);
  EXPECT_EQ(series_.humidity()[kNewest - 2], 70);
  EXPECT_DOUBLE_EQ(series_.barometer()[kNewest - 2], 1013.2);
  EXPECT_TRUE(logMessages().empty());
}

TEST_F(SpikeFilterTest, ALimitOfZeroFreezesTheSeriesUntilTheTimeout) {
  seedWith({.speed = 20, .gust = 30, .temp = 0, .hum = 20, .baro = 10, .timeout = 2});
  roll(steadyReading());  // even an unchanged temperature is refused
  EXPECT_EQ(series_.spikeCounts().temperature, 1);
  LiveRecord warmer = steadyReading();
  warmer.outtemp = 12.6;
  roll(warmer);
  EXPECT_DOUBLE_EQ(series_.latestTemperature(), 12.5);
  EXPECT_EQ(series_.spikeCounts().temperature, 2);
  roll(warmer);  // third refusal with a timeout of 2
  EXPECT_DOUBLE_EQ(series_.latestTemperature(), 12.6);
  EXPECT_EQ(series_.spikeCounts().temperature, 0);
}

TEST_F(SpikeFilterTest, RainIsFiledOnlyBelowTwenty) {
  seedWith(SpikeLimits{});
  roll(steadyReading(), 19.9);
  EXPECT_DOUBLE_EQ(series_.latestRain(), 19.9);
  roll(steadyReading(), 20);
  EXPECT_DOUBLE_EQ(series_.latestRain(), 19.9);
}

class SpikeLimitsReadTest : public ::testing::Test {
 protected:
  SpikeLimits readFrom(std::string_view iniText) {
    folder_.write("NIMBREL.INI", iniText);
    IniStore store(folder_ / "NIMBREL.INI", folder_.log());
    return readSpikeLimits(store);
  }
  SettingsTestFolder folder_;
};

TEST_F(SpikeLimitsReadTest, ReadsEveryKeyOfTheSection) {
  const SpikeLimits read = readFrom(
      "[New readings limits]\nspeed spike=15\ngust spike=25\ntemp spike=3\nhum spike=10\n"
      "baro spike=4\ntimeout spike=0\n");
  EXPECT_EQ(read, (SpikeLimits{.speed = 15, .gust = 25, .temp = 3, .hum = 10, .baro = 4, .timeout = 0}));
}

TEST_F(SpikeLimitsReadTest, UnusableValuesKeepTheDefaults) {
  EXPECT_EQ(readFrom(""), SpikeLimits{});
  const SpikeLimits read = readFrom(
      "[New readings limits]\nspeed spike=\ngust spike=lots\ntemp spike=-2\nhum spike=2.5\n"
      "baro spike=40000\ntimeout spike=-1\n");
  EXPECT_EQ(read, SpikeLimits{});
}

}  // namespace
}  // namespace nimbrel
