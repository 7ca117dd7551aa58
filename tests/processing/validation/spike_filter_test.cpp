#include "processing/validation/spike_filter.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "support/settings_test_folder.h"

namespace nimbrel {
namespace {

constexpr std::size_t kNewest = ShortTermSeries::kNewest;
using Messages = std::vector<std::string>;
// One slot of every series: speed, gust, direction, temperature, humidity, barometer, rain.
using Slot = std::tuple<double, double, std::uint16_t, double, std::int16_t, double, double>;

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
const Slot kSteady{10, 15, 180, 12.5, 70, 1013.2, 0};

template <class Change>
LiveRecord steadyWith(Change change) {
  LiveRecord r = steadyReading();
  change(r);
  return r;
}

class SpikeFilterTest : public ::testing::Test {
 protected:
  void roll(const LiveRecord& r, double rain = 0) { series_.rollthedata(r, rain, folder_.log()); }
  void seedWith(const SpikeLimits& limits) {
    series_.setLimits(limits);
    roll(steadyReading());
  }
  Slot slot(std::size_t i) const {
    return {series_.speed()[i],       series_.gust()[i],      series_.direction()[i], series_.temperature()[i],
            series_.humidity()[i], series_.barometer()[i], series_.rain()[i]};
  }
  Slot latest() const { return slot(kNewest); }
  // The station log's messages, without the time stamp in front of each.
  Messages logMessages() const {
    Messages messages;
    std::istringstream lines(folder_.logText());
    for (std::string line; std::getline(lines, line);) messages.push_back(line.substr(line.find(' ', 11) + 1));
    return messages;
  }

  testsupport::SettingsTestFolder folder_;
  ShortTermSeries series_;
};

TEST_F(SpikeFilterTest, FirstCallFillsEverySlotWithThePresentValues) {
  EXPECT_FALSE(series_.seeded());
  // A wild jump on the first call has nothing to be compared with: it is taken.
  roll(steadyWith([](LiveRecord& r) { r.windspeed = 99; }), 3.5);
  EXPECT_TRUE(series_.seeded());
  for (std::size_t i = 0; i <= kNewest; ++i) EXPECT_EQ(slot(i), (Slot{99, 15, 180, 12.5, 70, 1013.2, 3.5})) << i;
  EXPECT_EQ(series_.spikeCounts(), SpikeCounts{});
  EXPECT_TRUE(logMessages().empty());
}

TEST_F(SpikeFilterTest, LaterCallsShiftAndFileSmallChangesInTheNewestSlotAndRainOnlyBelowTwenty) {
  seedWith(SpikeLimits{});
  roll(steadyWith([](LiveRecord& r) {
         r.windspeed = 29.9;  // 19.9 knots up: just under the default 20
         r.winddir = 0;       // direction is never filtered
         r.outtemp = 8;
         r.outhum = 75;
         r.barometer = 1012;
       }),
       0.4);
  EXPECT_EQ(latest(), (Slot{29.9, 15, 0, 8, 75, 1012, 0.4}));
  EXPECT_EQ(slot(kNewest - 1), kSteady);
  roll(steadyReading(), 19.9);
  EXPECT_EQ(std::get<0>(slot(kNewest - 1)), 29.9);
  EXPECT_EQ(std::get<0>(slot(kNewest - 2)), 10);
  EXPECT_EQ(series_.latestRain(), 19.9);
  roll(steadyReading(), 20);
  EXPECT_EQ(series_.latestRain(), 19.9);
}

TEST_F(SpikeFilterTest, WindSpikesRepeatTheLastValueAndAreLogged) {
  seedWith(SpikeLimits{});
  // Exactly the limits of 20 and 30 away: spikes.
  const LiveRecord jump = steadyWith([](LiveRecord& r) {
    r.windspeed = 30;
    r.windgust = 45;
  });
  roll(jump);
  roll(jump);
  EXPECT_EQ(latest(), kSteady);
  EXPECT_EQ(series_.spikeCounts(), (SpikeCounts{.speed = 2, .gust = 2}));
  EXPECT_EQ(logMessages(), (Messages{"inc speed spike count 0", "inc gust spike count 0", "inc speed spike count 1",
                                     "inc gust spike count 1"}));
}

TEST_F(SpikeFilterTest, CountersAreClearedOnlyByTheTimeout) {
  seedWith(SpikeLimits{});
  const LiveRecord jump = steadyWith([](LiveRecord& r) { r.outtemp = 20; });
  roll(jump);
  roll(steadyReading());
  roll(jump);
  EXPECT_EQ(series_.spikeCounts().temperature, 2);
  EXPECT_EQ(series_.latestTemperature(), 12.5);
}

TEST_F(SpikeFilterTest, PlausibilityBoundsDecideWhatIsFiled) {
  // Limits wide enough that only the plausibility bounds decide.
  seedWith({.speed = 1000, .gust = 1000, .temp = 1000, .hum = 1000, .baro = 1000, .timeout = 10});
  const auto fileOne = [this](double temp, std::uint16_t hum, double baro, double wind = 10) {
    roll(steadyWith([&](LiveRecord& r) {
      r.windspeed = r.windgust = wind;
      r.outtemp = temp;
      r.outhum = hum;
      r.barometer = baro;
    }));
  };
  fileOne(-60, 0, 920, 150);  // all just outside
  EXPECT_EQ(latest(), kSteady);
  fileOne(60, 101, 1080);
  EXPECT_EQ(latest(), (Slot{10, 10, 180, 12.5, 70, 1013.2, 0}));
  EXPECT_EQ(series_.spikeCounts(), SpikeCounts{});
  EXPECT_TRUE(logMessages().empty());

  fileOne(-59.9, 1, 920.1, 149.9);  // all just inside
  EXPECT_EQ(latest(), (Slot{149.9, 149.9, 180, -59.9, 1, 920.1, 0}));
  fileOne(59.9, 100, 1079.9);
  EXPECT_EQ(latest(), (Slot{10, 10, 180, 59.9, 100, 1079.9, 0}));
}

TEST_F(SpikeFilterTest, WindTimeoutTakesTheNewLevelOverThreeSlotsOnTheFourthRefusal) {
  seedWith({.speed = 20, .gust = 30, .temp = 5, .hum = 20, .baro = 10, .timeout = 3});
  const LiveRecord jump = steadyWith([](LiveRecord& r) { r.windspeed = 40.6; });
  for (int refused = 1; refused <= 3; ++refused) roll(jump);
  EXPECT_EQ(series_.latestSpeed(), 10);
  EXPECT_EQ(series_.spikeCounts().speed, 3);
  roll(jump);
  EXPECT_EQ(series_.spikeCounts().speed, 0);
  for (std::size_t back = 0; back <= 3; ++back)
    EXPECT_EQ(series_.speed()[kNewest - back], back < 3 ? 40.6 : 10) << back << " slots back";
  EXPECT_EQ(logMessages(), (Messages{"inc speed spike count 0", "inc speed spike count 1", "inc speed spike count 2",
                                     "inc speed spike count 3", "resetting speed spike count, current speed 41"}));
  // The new level is now the reference: the same value again is filed.
  roll(jump);
  EXPECT_EQ(series_.spikeCounts().speed, 0);
}

TEST_F(SpikeFilterTest, GustTimeoutIsLoggedWithTheRoundedGust) {
  seedWith({.speed = 20, .gust = 30, .temp = 5, .hum = 20, .baro = 10, .timeout = 0});
  roll(steadyWith([](LiveRecord& r) { r.windgust = 52.4; }));
  EXPECT_EQ(series_.gust()[kNewest - 2], 52.4);
  EXPECT_EQ(logMessages(), (Messages{"inc gust spike count 0", "resetting gust spike count, current gust 52"}));
}

TEST_F(SpikeFilterTest, OtherTimeoutsReseedTwoSlotsSilently) {
  seedWith({.speed = 20, .gust = 30, .temp = 5, .hum = 20, .baro = 10, .timeout = 3});
  const LiveRecord jump = steadyWith([](LiveRecord& r) {
    r.outtemp = 25;
    r.outhum = 20;
    r.barometer = 990;
  });
  for (int refused = 1; refused <= 3; ++refused) roll(jump);
  EXPECT_EQ(latest(), kSteady);
  roll(jump);
  EXPECT_EQ(series_.spikeCounts(), SpikeCounts{});
  const Slot reseeded{10, 15, 180, 25, 20, 990, 0};
  EXPECT_EQ(slot(kNewest), reseeded);
  EXPECT_EQ(slot(kNewest - 1), reseeded);
  EXPECT_EQ(slot(kNewest - 2), kSteady);
  EXPECT_TRUE(logMessages().empty());
}

SpikeLimits readFrom(std::string_view iniText) {
  return testsupport::SettingsTestFolder().readMainSettings(iniText, readSpikeLimits);
}

TEST(SpikeLimitsRead, ReadsEveryKeyOfTheSectionAndUnusableValuesKeepTheDefaults) {
  EXPECT_EQ(readFrom("[New readings limits]\nspeed spike=15\ngust spike=25\ntemp spike=3\nhum spike=10\n"
                     "baro spike=4\ntimeout spike=0\n"),
            (SpikeLimits{.speed = 15, .gust = 25, .temp = 3, .hum = 10, .baro = 4, .timeout = 0}));
  EXPECT_EQ(readFrom(""), SpikeLimits{});
  EXPECT_EQ(readFrom("[New readings limits]\nspeed spike=\ngust spike=lots\ntemp spike=-2\nhum spike=2.5\n"
                     "baro spike=40000\ntimeout spike=-1\n"),
            SpikeLimits{});
}

}  // namespace
}  // namespace nimbrel
