#include "processing/validation/absolute_limits.h"

#include <gtest/gtest.h>

#include <limits>
#include <tuple>

#include "core/ini_store.h"
#include "support/settings_test_folder.h"

namespace nimbrel {
namespace {

using testsupport::SettingsTestFolder;

LiveRecord previousReading() {
  LiveRecord r;
  r.outtemp = 11;
  r.intemp = 21;
  r.outhum = 80;
  r.inhum = 45;
  r.barometer = 1005;
  r.windspeed = 8;
  r.windgust = 12;
  return r;
}

// The fields the limits guard.
auto guarded(const LiveRecord& r) {
  return std::tuple(r.outtemp, r.intemp, r.outhum, r.barometer, r.windspeed, r.windgust);
}

TEST(AbsoluteLimitsApply, ValuesOnTheLimitsAreTaken) {
  const AbsoluteLimits limits;
  LiveRecord incoming;
  incoming.outtemp = -60;
  incoming.intemp = 50;
  incoming.outhum = 100;
  incoming.barometer = 900;
  incoming.windspeed = 150;
  incoming.windgust = 150;
  const LiveRecord expected = incoming;
  applyAbsoluteLimits(incoming, previousReading(), limits);
  EXPECT_EQ(guarded(incoming), guarded(expected));
}

TEST(AbsoluteLimitsApply, ValuesBeyondTheLimitsGetThePreviousValueBack) {
  AbsoluteLimits limits;
  limits.minHum = 5;
  const LiveRecord previous = previousReading();
  LiveRecord incoming;
  incoming.outtemp = 60.1;
  incoming.intemp = -20.1;
  incoming.outhum = 4;
  incoming.inhum = 300;  // indoor humidity has no limits
  incoming.barometer = 899.9;
  incoming.windspeed = 150.1;
  incoming.windgust = 255;
  incoming.dewpoint = 99;  // nor have the fields the limits do not name
  applyAbsoluteLimits(incoming, previous, limits);
  EXPECT_EQ(guarded(incoming), guarded(previous));
  EXPECT_EQ(incoming.inhum, 300);
  EXPECT_DOUBLE_EQ(incoming.dewpoint, 99);
}

TEST(AbsoluteLimitsApply, NonNumbersGetThePreviousValueBack) {
  const LiveRecord previous = previousReading();
  LiveRecord incoming = previous;
  incoming.outtemp = std::numeric_limits<double>::quiet_NaN();
  incoming.windspeed = std::numeric_limits<double>::quiet_NaN();
  applyAbsoluteLimits(incoming, previous, AbsoluteLimits{});
  EXPECT_DOUBLE_EQ(incoming.outtemp, previous.outtemp);
  EXPECT_DOUBLE_EQ(incoming.windspeed, previous.windspeed);
}

class AbsoluteLimitsReadTest : public ::testing::Test {
 protected:
  AbsoluteLimits readFrom(std::string_view iniText) {
    folder_.write("NIMBREL.INI", iniText);
    IniStore store(folder_ / "NIMBREL.INI", folder_.log());
    return readAbsoluteLimits(store);
  }
  SettingsTestFolder folder_;
};

TEST_F(AbsoluteLimitsReadTest, ReadsEveryKeyNegativesIncluded) {
  const AbsoluteLimits read = readFrom(
      "[New readings limits]\nmax rain spike=20\nmax hum=99\nmin hum=2\nmax temp=45\nmin temp=-40\n"
      "max indoor temp=35\nmin indoor temp=-5\nmin baro=950\nmax speed=100\n");
  const AbsoluteLimits expected{.maxRainSpike = 20, .maxHum = 99, .minHum = 2, .maxTemp = 45, .minTemp = -40,
                                .maxIndoorTemp = 35, .minIndoorTemp = -5, .minBaro = 950, .maxSpeed = 100};
  EXPECT_EQ(read, expected);
}

TEST_F(AbsoluteLimitsReadTest, UnusableValuesKeepTheDefaults) {
  EXPECT_EQ(readFrom(""), AbsoluteLimits{});
  const AbsoluteLimits read = readFrom(
      "[New readings limits]\nmax rain spike=\nmax hum=full\nmax temp=45.5\nmin baro=-40000\nmax speed=99999\n");
  EXPECT_EQ(read, AbsoluteLimits{});
}

TEST_F(AbsoluteLimitsReadTest, AReversedPairKeepsBothDefaults) {
  const AbsoluteLimits read =
      readFrom("[New readings limits]\nmax temp=-10\nmin temp=10\nmax indoor temp=40\nmin indoor temp=5\n");
  EXPECT_EQ(read.maxTemp, 60);
  EXPECT_EQ(read.minTemp, -60);
  EXPECT_EQ(read.maxIndoorTemp, 40);  // the other pairs are unaffected
  EXPECT_EQ(read.minIndoorTemp, 5);
}

}  // namespace
}  // namespace nimbrel
