#include <gtest/gtest.h>

#include <fmt/format.h>

#include <fstream>
#include <string>

#include "support/tag_world.h"

namespace nimbrel {
namespace {

using testsupport::TagWorld;

struct Stamp {
  int year, month, day, hour, minute;
};

struct Minute {
  Stamp at;
  double temp = 15, hum = 60, dew = 7, baro = 1015, wind = 5, gust = 8, dir = 180, rain = 0;
};

// Appends one line to the minute log of its month, in metric units.
void logMinute(TagWorld& world, const Minute& m) {
  std::ofstream out(world.folder.path() / fmt::format("{}{}lg.txt", m.at.month, m.at.year), std::ios::app);
  out << fmt::format("{:02} {:02} {} {:02} {:02} {:.1f} {:.0f} {:.1f} {:.3f} {:.1f} {:.1f} {:.0f} {:.2f} 0.0 0.0 0.0 "
                     "{:.1f}\r\n",
                     m.at.day, m.at.month, m.at.year, m.at.hour, m.at.minute, m.temp, m.hum, m.dew, m.baro, m.wind, m.gust, m.dir,
                     m.rain, m.temp);
}

TEST(TodayTags, TodaysExtremesAndTimesOnlyOnceSeen) {
  TagWorld world;  // 15 June 2026, 14:30
  EXPECT_EQ(world.text("maxtemp"), "---");
  EXPECT_EQ(world.text("maxtempt"), "---");
  world.record.outtemp = 21.5;
  world.record.outhum = 40;
  world.record.windgust = 20;
  world.reading();
  world.clock.advance(std::chrono::minutes(5));
  world.record.outtemp = 18.0;
  world.reading();
  EXPECT_EQ(world.text("maxtemp"), "21.5");
  EXPECT_EQ(world.text("maxtempt"), "14:30");
  EXPECT_EQ(world.text("mintemp"), "18.0");
  EXPECT_EQ(world.text("mintempt"), "14:35");
  EXPECT_EQ(world.text("hightempinusa"), "70.7");
  EXPECT_EQ(world.text("maxtempnodp"), "22");
  EXPECT_EQ(world.text("lowhum"), "40");
  EXPECT_EQ(world.text("maxdailygustinkts"), "20.0");
  EXPECT_EQ(world.text("bftmaxgusttodaynum"), "5");
  EXPECT_EQ(world.text("maxgstwords"), "Fresh breeze");
}

TEST(TodayTags, YesterdaysValuesFromTheResetSectionsButNotTheirSentinels) {
  TagWorld world;
  world.settings.WriteString("Daily high temperature yest", "number2", "25.5");
  world.settings.WriteString("Daily high temperature yest", "number2time", "15:10");
  world.settings.WriteString("Daily low temperature yest", "number2", "100");
  world.settings.WriteString("Daily low humidity yest", "number2", "100");
  world.settings.WriteString("Daily high humidity yest", "number2", "-100");
  world.settings.WriteString("Daily high average yest", "prevdayrain", "12.7");
  EXPECT_EQ(world.text("maxtempyest"), "25.5");
  EXPECT_EQ(world.text("maxtempyestt"), "15:10");
  EXPECT_EQ(world.text("mintempyest"), "---");   // the low's sentinel: nothing seen
  EXPECT_EQ(world.text("minhumyest"), "100");    // a real 100 %: the percentage low starts at 101
  EXPECT_EQ(world.text("maxhumyest"), "---");
  EXPECT_EQ(world.text("ystdyrainusa"), "0.50");
  EXPECT_EQ(world.text("yesterdayrain,"), "12,7");
  EXPECT_EQ(world.text("mintempyestt"), "---");
}

TEST(TodayTags, PastValuesAndChangesFromTheMinuteLogs) {
  TagWorld world;  // Monday 15 June 2026, 14:30
  world.units.units.wind = WindUnit::knots;
  logMinute(world, {.at = {2026, 5, 15, 14, 30}, .temp = 10.0, .baro = 1000.0});  // a month ago
  logMinute(world, {.at = {2026, 6, 12, 15, 0}, .temp = 30.0, .gust = 40.0, .dir = 270});  // Friday
  logMinute(world, {.at = {2026, 6, 14, 14, 28}, .temp = 18.0, .baro = 1010.0});  // 24 hours ago, two minutes off
  logMinute(world, {.at = {2026, 6, 15, 11, 0}, .rain = 0.4});                     // 3.5 hours ago
  logMinute(world, {.at = {2026, 6, 15, 13, 30}, .temp = 20.0, .rain = 0.2});
  logMinute(world, {.at = {2026, 6, 15, 14, 22}, .gust = 12.0, .dir = 45, .rain = 0.6});
  logMinute(world, {.at = {2026, 6, 15, 14, 29}, .gust = 10.0, .dir = 90});
  world.record.outtemp = 21.0;
  world.record.barometer = 1012.0;
  world.reading();

  EXPECT_EQ(world.text("temp24hoursago"), "18.0");
  EXPECT_EQ(world.text("tempchange24hour"), "3.0");
  EXPECT_EQ(world.text("tempchangelasthour"), "1.0");
  EXPECT_EQ(world.text("tempchangelasthourfaren"), "1.8");
  EXPECT_EQ(world.text("barochangemonth"), "12.0");
  EXPECT_EQ(world.text("tempchangeyear"), "---");  // no log of 2025
  EXPECT_EQ(world.text("maxtempweek"), "30.0");
  EXPECT_EQ(world.text("maxtempweekday"), "Friday");
  EXPECT_EQ(world.text("maxgustweek"), "40.0");
  EXPECT_EQ(world.text("totalrainlast3hours"), "0.8");
  EXPECT_EQ(world.text("totalrainlast6hours"), "1.2");
  EXPECT_EQ(world.text("maxgustlastimediate10"), "12.0");
  EXPECT_EQ(world.text("maxgustlastimediate10dir"), "45");
  EXPECT_EQ(world.text("maxgustlastimediatehourdirwords"), "North East");
  EXPECT_EQ(world.text("minutessincelastrain"), "8");
  EXPECT_EQ(world.text("maxhourrn"), "0.8");  // 13:30 and 14:22 lie within one hour
  EXPECT_EQ(world.text("maxhourrnt"), "14:22");
  EXPECT_EQ(world.text("maxtempmtago"), "10.0");
  EXPECT_EQ(world.text("maxtempyrago"), "---");
}

TEST(TodayTags, MinuteLogsInUsUnitsComeBackInTheInternalUnits) {
  TagWorld world;
  world.units.units.logFile = UnitSystem::usa;
  world.units.units.wind = WindUnit::knots;
  logMinute(world, {.at = {2026, 6, 14, 14, 30}, .temp = 68.0, .baro = 29.92, .gust = 23.0, .rain = 0.1});
  logMinute(world, {.at = {2026, 6, 14, 14, 31}, .rain = 0.1});  // 24 hours ago is the last minute outside
  EXPECT_EQ(world.text("temp24hoursago"), "20.0");
  EXPECT_EQ(world.text("baro24hoursago"), "1013.2");
  EXPECT_EQ(world.text("gust24hoursago"), "20.0");
  EXPECT_EQ(world.text("totalrainlast24hours"), "2.5");
}

TEST(TodayTags, DayLengthChangesFollowTheHemisphere) {
  TagWorld world;  // mid June: days near their longest in the north
  EXPECT_EQ(world.text("changeindaydec"), "---");  // no position set
  world.options.position.latitude = 52.0;
  const std::string north = world.text("changeindaydec");
  world.options.position.latitude = -35.0;
  const std::string south = world.text("changeindaydec");
  EXPECT_EQ(north.front(), '+') << north;
  EXPECT_EQ(south.front(), '-') << south;
  // About 16:30 against 7:40 of daylight at 52 degrees north.
  EXPECT_GE(std::stoi(north.substr(1)), 8);
  EXPECT_LE(std::stoi(north.substr(1)), 9);
  world.options.position.latitude = 52.0;
  EXPECT_EQ(world.text("changeinday").substr(0, 3), "+0:");  // seconds a day a week before the solstice
}

}  // namespace
}  // namespace nimbrel
