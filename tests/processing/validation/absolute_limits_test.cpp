#include "processing/validation/absolute_limits.h"

#include <gtest/gtest.h>

#include <limits>
#include <tuple>

#include "support/settings_test_folder.h"

namespace nimbrel {
namespace {

// The fields the limits guard.
using Guarded = std::tuple<double, double, std::uint16_t, double, double, double>;
Guarded guarded(const LiveRecord& r) {
  return {r.outtemp, r.intemp, r.outhum, r.barometer, r.windspeed, r.windgust};
}
LiveRecord withGuarded(const Guarded& values) {
  LiveRecord r;
  std::tie(r.outtemp, r.intemp, r.outhum, r.barometer, r.windspeed, r.windgust) = values;
  return r;
}
const LiveRecord kPrevious = withGuarded({11, 21, 80, 1005, 8, 12});

TEST(AbsoluteLimitsApply, ValuesOnTheLimitsAreTakenAndValuesBeyondThemGetThePreviousValueBack) {
  LiveRecord onTheLimits = withGuarded({-60, 50, 100, 900, 150, 150});
  applyAbsoluteLimits(onTheLimits, kPrevious, AbsoluteLimits{});
  EXPECT_EQ(guarded(onTheLimits), (Guarded{-60, 50, 100, 900, 150, 150}));

  AbsoluteLimits limits;
  limits.minHum = 5;
  LiveRecord beyond = withGuarded({60.1, -20.1, 4, 899.9, 150.1, 255});
  beyond.inhum = 300;    // indoor humidity has no limits
  beyond.dewpoint = 99;  // nor have the fields the limits do not name
  applyAbsoluteLimits(beyond, kPrevious, limits);
  EXPECT_EQ(guarded(beyond), guarded(kPrevious));
  EXPECT_EQ(beyond.inhum, 300);
  EXPECT_EQ(beyond.dewpoint, 99);

  LiveRecord notNumbers = kPrevious;
  notNumbers.outtemp = notNumbers.windspeed = std::numeric_limits<double>::quiet_NaN();
  applyAbsoluteLimits(notNumbers, kPrevious, AbsoluteLimits{});
  EXPECT_EQ(guarded(notNumbers), guarded(kPrevious));
}

AbsoluteLimits readFrom(std::string_view iniText) {
  return testsupport::SettingsTestFolder().readMainSettings(iniText, readAbsoluteLimits);
}

TEST(AbsoluteLimitsRead, ReadsEveryKeyAndKeepsTheDefaultsForUnusableValuesOrAReversedPair) {
  EXPECT_EQ(readFrom("[New readings limits]\nmax rain spike=20\nmax hum=99\nmin hum=2\nmax temp=45\nmin temp=-40\n"
                     "max indoor temp=35\nmin indoor temp=-5\nmin baro=950\nmax speed=100\n"),
            (AbsoluteLimits{.maxRainSpike = 20, .maxHum = 99, .minHum = 2, .maxTemp = 45, .minTemp = -40,
                            .maxIndoorTemp = 35, .minIndoorTemp = -5, .minBaro = 950, .maxSpeed = 100}));
  EXPECT_EQ(readFrom(""), AbsoluteLimits{});
  EXPECT_EQ(readFrom("[New readings limits]\nmax rain spike=\nmax hum=full\nmax temp=45.5\nmin baro=-40000\n"
                     "max speed=99999\n"),
            AbsoluteLimits{});
  // A reversed outdoor pair keeps both its defaults; the indoor pair is unaffected.
  AbsoluteLimits indoorOnly;
  indoorOnly.maxIndoorTemp = 40;
  indoorOnly.minIndoorTemp = 5;
  EXPECT_EQ(readFrom("[New readings limits]\nmax temp=-10\nmin temp=10\nmax indoor temp=40\nmin indoor temp=5\n"),
            indoorOnly);
}

}  // namespace
}  // namespace nimbrel
