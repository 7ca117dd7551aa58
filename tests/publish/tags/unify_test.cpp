#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "publish/tags/log_minutes.h"
#include "publish/tags/vocabulary.h"
#include "support/tag_world.h"

namespace nimbrel {
namespace {

using testsupport::TagWorld;

// A June 2026 log in US units: 68 °F, 29.92 inHg, 11.5 mph, 0.01 in of rain
// a minute; the clock set back once, so 14:05 is logged twice.
void writeUsaLog(const TagWorld& world) {
  std::ofstream out(world.folder.path() / "62026lg.txt", std::ios::binary);
  out << "day month year hour minute temperature humidity dewpoint barometer windspeed gustspeed direction "
         "rainlastmin dailyrain monthlyrain yearlyrain heatindex\r\n";
  for (int minute : {0, 5, 10, 5, 15})
    out << "15 6 2026 14 " << minute << " 68.0 50 48.0 29.92 11.5 15.0 " << 90 + minute
        << " 0.01 0.05 0.50 5.00 68.0\r\n";
}

TEST(LogMinutes, OneParseInInternalUnitsAndRepeatedMinutesAsEachViewWants) {
  TagWorld world;
  writeUsaLog(world);
  LogMinutes logs(world.folder.path(), LogReading{UnitSystem::usa, false});
  const auto& june = logs.month({6, 2026});
  ASSERT_EQ(june.size(), 5u);
  EXPECT_NEAR(june[0].temperature(), 20.0, 1e-9);
  EXPECT_NEAR(june[0].barometer(), 1013.2, 0.1);
  EXPECT_NEAR(june[0].wind(), 10.0, 0.01);
  EXPECT_NEAR(june[0].rain(), 0.254, 1e-4);
  EXPECT_NEAR(june[0].yearRain(), 127.0, 0.01);
  EXPECT_EQ(june[0].minute, civilMinute(2026, 6, 15, 14, 0));
  EXPECT_TRUE(logs.month({7, 2026}).empty());

  const LogMonth months[] = {{6, 2026}};
  const auto first = MinuteHistory::gather(logs, months, MinuteHistory::Repeats::first);
  const auto all = MinuteHistory::gather(logs, months, MinuteHistory::Repeats::all, civilMinute(2026, 6, 15, 14, 5),
                                         civilMinute(2026, 6, 15, 14, 10));
  EXPECT_EQ(first.minutes().size(), 4u);
  EXPECT_EQ(first.near(civilMinute(2026, 6, 15, 14, 6), 1)->direction(), 95.0);
  ASSERT_EQ(all.minutes().size(), 3u);  // 14:15 and 14:00 lie outside
  const LoggedMinute* latest = all.latestUpTo(civilMinute(2026, 6, 15, 14, 9));
  ASSERT_NE(latest, nullptr);
  EXPECT_EQ(latest, &all.minutes()[1]);  // the second line of 14:05
  EXPECT_EQ(all.latestUpTo(civilMinute(2026, 6, 15, 14, 4)), nullptr);
}

TEST(CivilCalendar, MonthsBackAndDayStarts) {
  EXPECT_EQ(monthsBefore({2024, 3, 31}, 1), (CivilDate{2024, 2, 29}));
  EXPECT_EQ(monthsBefore({2024, 2, 29}, 12), (CivilDate{2023, 2, 28}));
  EXPECT_EQ(monthsBefore({2026, 1, 15}, 1), (CivilDate{2025, 12, 15}));
  const long long nine = civilMinute(2026, 6, 15, 9, 0);
  EXPECT_EQ(lastTimeAtHour(nine, 9), nine);
  EXPECT_EQ(lastTimeAtHour(nine - 1, 9), nine - kMinutesPerDay);
  EXPECT_EQ(lastTimeAtHour(civilMinute(1969, 12, 31, 23, 0), 0), civilMinute(1969, 12, 31, 0, 0));
  EXPECT_EQ(civilTime(civilMinute(2026, 6, 15, 14, 30)).weekday, 1);  // a Monday
}

// Every family reads the minutes of one fill from its cache: with the log
// gone after the first tag, the others of that fill still see its minutes.
TEST(LogMinutes, FamiliesOfOneFillShareEachMonthRead) {
  TagWorld world;  // 15 June 2026, 14:30
  world.units.units.logFile = UnitSystem::usa;
  world.record.barometer = 1013.2;
  world.reading();
  writeUsaLog(world);
  const TagContext fill = world.context();
  auto tag = [&](const char* name) { return tagText(*vocabulary().find(name), fill, false); };
  EXPECT_EQ(tag("hourrn"), "1.3");  // the current readings: five minutes of 0.254 mm
  std::filesystem::remove(world.folder.path() / "62026lg.txt");
  EXPECT_EQ(tag("totalrainlast3hours"), "1.0");  // today's family keeps one line of 14:05
  EXPECT_EQ(tag("rainlasthourmm"), "1.3");       // climate
  EXPECT_EQ(tag("dateoflastrainalways"), "15/06/2026");
  EXPECT_EQ(world.text("hourrn"), "---");  // a new fill reads the logs again
}

}  // namespace
}  // namespace nimbrel
