#include <gtest/gtest.h>

#include <fmt/format.h>

#include <fstream>
#include <string>

#include "publish/tags/almanac/astronomy.h"
#include "publish/tags/almanac/feast_dates.h"
#include "support/tag_world.h"
#include "support/time_zone.h"

namespace nimbrel {
namespace {

using namespace astro;

constexpr double kMinute = 1.0 / 1440.0;
constexpr Place kLondon{51.5074, -0.1278};
constexpr Place kNewYork{40.7128, -74.0060};
constexpr Place kTromso{69.6496, 18.9560};

double utc(int year, int month, int day, int hour = 0, int minute = 0) {
  return julianDayOfDate(year, month, day) + (hour + minute / 60.0) / 24.0;
}

// Minutes after midnight of a "hh:mm" text.
int minutesOf(const std::string& text) { return std::stoi(text.substr(0, 2)) * 60 + std::stoi(text.substr(3, 2)); }

TEST(Astronomy, PositionsAgreeWithTheWorkedExamplesOfMeeus) {
  EXPECT_DOUBLE_EQ(julianDayOfDate(2000, 1, 1) + 0.5, kJ2000);
  EXPECT_NEAR(julianDayOfDate(1957, 10, 4) + 0.81, 2436116.31, 1e-9);
  EXPECT_NEAR(siderealTime(julianDayOfDate(1987, 4, 10)), 197.693195, 1e-5);  // 13h 10m 46.3668s

  const SkyPosition sun = sunPosition(2448908.5);  // 1992 October 13, 0h TT
  EXPECT_NEAR(sun.longitude, 199.90988, 0.001);
  EXPECT_NEAR(sun.rightAscension, 198.38083, 0.001);
  EXPECT_NEAR(sun.declination, -7.78507, 0.001);

  const SkyPosition moon = moonPosition(2448724.5);  // 1992 April 12, 0h TT
  EXPECT_NEAR(moon.longitude, 133.167265, 0.01);
  EXPECT_NEAR(moon.latitude, -3.229126, 0.01);
  EXPECT_NEAR(moon.distanceKm, 368409.7, 30.0);
  EXPECT_NEAR(moon.rightAscension, 134.688470, 0.01);
  EXPECT_NEAR(moon.declination, 13.768368, 0.01);
}

TEST(Astronomy, SunTimesMatchPublishedTables) {
  // London at midsummer and midwinter (times UT; BST is an hour on).
  const DayEvents june = sunEvents(utc(2024, 6, 21), utc(2024, 6, 22), kLondon);
  ASSERT_TRUE(june.rise && june.set && june.transit);
  EXPECT_NEAR(*june.rise, utc(2024, 6, 21, 3, 43), 2 * kMinute);
  EXPECT_NEAR(*june.set, utc(2024, 6, 21, 20, 21), 2 * kMinute);
  EXPECT_NEAR(june.transitAltitude, 90 - 51.5074 + 23.44, 0.05);
  const DayEvents december = sunEvents(utc(2024, 12, 21), utc(2024, 12, 22), kLondon);
  ASSERT_TRUE(december.rise && december.set && december.transit);
  EXPECT_NEAR(*december.rise, utc(2024, 12, 21, 8, 4), 2 * kMinute);
  EXPECT_NEAR(*december.set, utc(2024, 12, 21, 15, 54), 2 * kMinute);
  EXPECT_NEAR(*december.transit, utc(2024, 12, 21, 11, 58), 2 * kMinute);
  EXPECT_NEAR(december.daysAbove, *december.set - *december.rise, 1e-6);

  // New York in local days of EDT (UTC-4): the sunset falls on the next UTC day.
  const DayEvents ny = sunEvents(utc(2024, 6, 20, 4), utc(2024, 6, 21, 4), kNewYork);
  ASSERT_TRUE(ny.rise && ny.set);
  EXPECT_NEAR(*ny.rise, utc(2024, 6, 20, 9, 25), 2 * kMinute);
  EXPECT_NEAR(*ny.set, utc(2024, 6, 21, 0, 31), 2 * kMinute);

  // Twilights come in order; a London midsummer night never gets dark enough
  // for astronomical twilight to end.
  const DayEvents civil = sunEvents(utc(2024, 6, 21), utc(2024, 6, 22), kLondon, SunHorizon::civil);
  ASSERT_TRUE(civil.rise && civil.set);
  EXPECT_LT(*civil.rise, *june.rise - 30 * kMinute);
  EXPECT_GT(*civil.set, *june.set + 30 * kMinute);
  const DayEvents astronomical = sunEvents(utc(2024, 6, 21), utc(2024, 6, 22), kLondon, SunHorizon::astronomical);
  EXPECT_FALSE(astronomical.rise);
  EXPECT_FALSE(astronomical.set);

  // Midnight sun and polar night in Tromsø.
  const DayEvents midnightSun = sunEvents(utc(2024, 6, 21), utc(2024, 6, 22), kTromso);
  EXPECT_FALSE(midnightSun.rise || midnightSun.set);
  EXPECT_NEAR(midnightSun.daysAbove, 1.0, 1e-9);
  const DayEvents polarNight = sunEvents(utc(2024, 12, 21), utc(2024, 12, 22), kTromso);
  EXPECT_FALSE(polarNight.rise || polarNight.set);
  EXPECT_EQ(polarNight.daysAbove, 0.0);
}

TEST(Astronomy, SeasonsPhasesAndApsidesMatchPublishedMoments) {
  EXPECT_NEAR(seasonStart(2024, Season::marchEquinox), utc(2024, 3, 20, 3, 6), 10 * kMinute);
  EXPECT_NEAR(seasonStart(2024, Season::juneSolstice), utc(2024, 6, 20, 20, 51), 10 * kMinute);
  EXPECT_NEAR(seasonStart(2024, Season::septemberEquinox), utc(2024, 9, 22, 12, 44), 10 * kMinute);
  EXPECT_NEAR(seasonStart(2024, Season::decemberSolstice), utc(2024, 12, 21, 9, 20), 10 * kMinute);

  EXPECT_NEAR(nextPhase(utc(2024, 4, 1), Phase::newMoon), utc(2024, 4, 8, 18, 21), 5 * kMinute);
  EXPECT_NEAR(nextPhase(utc(2024, 1, 20), Phase::fullMoon), utc(2024, 1, 25, 17, 54), 5 * kMinute);
  const double full2016 = nextPhase(utc(2016, 11, 1), Phase::fullMoon);
  EXPECT_NEAR(full2016, utc(2016, 11, 14, 13, 52), 5 * kMinute);
  EXPECT_GT(moonIlluminated(full2016), 0.99);
  EXPECT_LT(moonIlluminated(utc(2024, 4, 8, 18, 21)), 0.01);
  EXPECT_NEAR(moonIlluminated(nextPhase(utc(2024, 4, 9), Phase::firstQuarter)), 0.5, 0.02);
  EXPECT_NEAR(moonElongation(full2016), 180.0, 0.01);

  // The eclipse new moon of April 2024 began Brown's lunation 1253; a moment
  // just before it still belongs to lunation 1252.
  EXPECT_EQ(brownLunation(lunationAt(utc(2024, 4, 9))), 1253);
  EXPECT_EQ(brownLunation(lunationAt(utc(2024, 4, 8, 18, 0))), 1252);

  // The closest perigee of its decade, at the full moon of November 2016.
  const Apsis perigee = nextPerigee(utc(2016, 11, 5));
  EXPECT_NEAR(perigee.jd, utc(2016, 11, 14, 11, 23), 3.0 / 24.0);
  EXPECT_NEAR(perigee.distanceKm, 356509, 100);
  const Apsis apogee = nextApogee(perigee.jd);
  EXPECT_GT(apogee.jd - perigee.jd, 12.0);
  EXPECT_LT(apogee.jd - perigee.jd, 16.0);
  EXPECT_GT(apogee.distanceKm, 404000);
  EXPECT_LT(apogee.distanceKm, 406800);
}

TEST(Astronomy, FullMoonRisesAtSunsetAndSetsAtSunrise) {
  const double start = utc(2016, 11, 14);
  const DayEvents sun = sunEvents(start, start + 1, kLondon);
  const DayEvents moon = moonEvents(start, start + 1, kLondon);
  ASSERT_TRUE(sun.rise && sun.set && moon.rise && moon.set);
  EXPECT_NEAR(*moon.rise, *sun.set, 1.0 / 24.0);
  EXPECT_NEAR(*moon.set, *sun.rise, 1.0 / 24.0);
  // Due south just before this day began and just after it ended: a day
  // without a transit of the moon.
  EXPECT_FALSE(moon.transit);
  const DayEvents next = moonEvents(start + 1, start + 2, kLondon);
  ASSERT_TRUE(next.transit);
  EXPECT_NEAR(*next.transit, start + 1, 2.0 / 24.0);
  EXPECT_GT(next.transitAltitude, 90 - 51.5 + 10);  // high in the sky, as a winter full moon is
}

TEST(Almanac, FeastDatesOfSeveralYears) {
  using almanac::CalendarDate;
  for (const CalendarDate& d : {CalendarDate{1818, 3, 22}, CalendarDate{2000, 4, 23}, CalendarDate{2008, 3, 23},
                                CalendarDate{2019, 4, 21}, CalendarDate{2024, 3, 31}, CalendarDate{2025, 4, 20},
                                CalendarDate{2038, 4, 25}})
    EXPECT_EQ(almanac::easterSunday(d.year), d) << d.year;
  for (const CalendarDate& d : {CalendarDate{2019, 4, 20}, CalendarDate{2022, 4, 16}, CalendarDate{2023, 4, 6},
                                CalendarDate{2024, 4, 23}, CalendarDate{2025, 4, 13}, CalendarDate{2026, 4, 2}})
    EXPECT_EQ(almanac::pesach(d.year), d) << d.year;
  for (const CalendarDate& d : {CalendarDate{2020, 1, 25}, CalendarDate{2021, 2, 12}, CalendarDate{2023, 1, 22},
                                CalendarDate{2024, 2, 10}, CalendarDate{2025, 1, 29}, CalendarDate{2026, 2, 17}})
    EXPECT_EQ(almanac::chineseNewYear(d.year), d) << d.year;
}

TEST(AlmanacTags, DateAndTimeForms) {
  testsupport::ScopedTimeZone zone;
  testsupport::TagWorld world;
  world.clock.set(fromLocalTime(2026, 6, 15, 0, 30, 7));  // BST: 23:30 UTC the day before
  EXPECT_EQ(world.text("date"), "15/06/2026");
  EXPECT_EQ(world.text("datefmt"), "2026-06-15");
  EXPECT_EQ(world.text("formateddate"), "Monday 15 June 2026");
  EXPECT_EQ(world.text("date-week"), "25");
  EXPECT_EQ(world.text("time"), "00:30");
  EXPECT_EQ(world.text("timesec"), "00:30:07");
  EXPECT_EQ(world.text("utcdate-day"), "14");
  EXPECT_EQ(world.text("utctime-hour"), "23");
  EXPECT_EQ(world.text("utcdate-yeartwo"), "26");
  EXPECT_EQ(world.text("timeofdaygreeting"), "Night");
  EXPECT_EQ(world.text("easterdate"), "05/04/2026");

  world.units.units.date = UnitSystem::usa;
  world.clock.set(fromLocalTime(2026, 6, 15, 14, 5, 9));
  EXPECT_EQ(world.text("date"), "06/15/2026");
  EXPECT_EQ(world.text("formateddate"), "Monday, June 15, 2026");
  EXPECT_EQ(world.text("timesec"), "2:05:09 pm");
  EXPECT_EQ(world.text("timeofdaygreeting"), "Afternoon");

  // ISO weeks at the turn of the year: 2026 has 53, 30 December 2024 is in week 1 of 2025.
  world.clock.set(fromLocalTime(2027, 1, 1, 12, 0, 0));
  EXPECT_EQ(world.text("date-week"), "53");
  world.clock.set(fromLocalTime(2024, 12, 30, 12, 0, 0));
  EXPECT_EQ(world.text("date-week"), "1");
  for (const auto& [hour, word] : {std::pair{4, "Night"}, std::pair{5, "Early Morning"}, std::pair{8, "Morning"},
                                   std::pair{18, "Evening"}, std::pair{22, "Night"}}) {
    world.clock.set(fromLocalTime(2026, 3, 2, hour, 0, 0));
    EXPECT_EQ(world.text("timeofdaygreeting"), word) << hour;
  }
}

TEST(AlmanacTags, SunAndMoonNeedThePositionAndFollowTheLocalDay) {
  testsupport::ScopedTimeZone zone;
  testsupport::TagWorld world;
  world.clock.set(fromLocalTime(2024, 6, 21, 14, 0, 0));
  for (const char* name : {"sunrise", "sunset", "moonrise", "dayornight", "hoursofpossibledaylight", "stationlatitude"})
    EXPECT_EQ(world.text(name), "---") << name;
  EXPECT_NE(world.text("moonphasename"), "---");  // the phase does not depend on the place
  EXPECT_EQ(world.text("stationname"), "---");

  world.options.position = {kLondon.latitude, kLondon.longitude, 11.0};
  world.units.connections.stationName = "Hill Farm";
  EXPECT_EQ(world.text("stationname"), "Hill Farm");
  EXPECT_EQ(world.text("stationlatitude"), "51.5074");
  EXPECT_EQ(world.text("stationlongitude"), "-0.1278");
  EXPECT_EQ(world.text("stationaltitude"), "11");
  EXPECT_NEAR(minutesOf(world.text("sunrise")), 4 * 60 + 43, 2);  // BST
  EXPECT_NEAR(minutesOf(world.text("sunset")), 21 * 60 + 21, 2);
  EXPECT_NEAR(minutesOf(world.text("hoursofpossibledaylight")), 16 * 60 + 38, 3);
  EXPECT_EQ(world.text("morningastrotwilight"), "---");
  EXPECT_EQ(world.text("dayornight"), "Day");
  world.units.units.date = UnitSystem::usa;
  EXPECT_EQ(world.text("sunset").substr(0, 2), "9:");
  EXPECT_EQ(world.text("sunset").substr(4), " pm");
  world.units.units.date = UnitSystem::metric;
  world.clock.set(fromLocalTime(2024, 6, 21, 23, 0, 0));
  EXPECT_EQ(world.text("dayornight"), "Night");

  // The day after the clocks go back lasts 25 hours; its sunrise is in GMT.
  world.clock.set(fromLocalTime(2024, 10, 27, 12, 0, 0));
  EXPECT_NEAR(minutesOf(world.text("sunrise")), 6 * 60 + 48, 3);
  EXPECT_NEAR(minutesOf(world.text("daylengthyesterday")) - minutesOf(world.text("hoursofpossibledaylight")), 4, 2);

  // Full moon of November 2016 in London.
  world.clock.set(fromLocalTime(2016, 11, 14, 6, 0, 0));
  EXPECT_EQ(world.text("moonphasename"), "Full Moon");
  EXPECT_EQ(world.text("fullmoon").substr(0, 10), "14/11/2016");
  EXPECT_NEAR(minutesOf(world.text("fullmoon").substr(11)), 13 * 60 + 52, 3);
  EXPECT_EQ(world.text("nextfullmoondate"), "14/11/2016");
  EXPECT_EQ(world.text("moonperigee").substr(0, 10), "14/11/2016");
  EXPECT_EQ(world.text("moonphase"), "100");
  EXPECT_EQ(world.text("moontransittime"), "---");  // due south just before and just after this day
  EXPECT_NE(world.text("moonrise"), "---");
  world.clock.set(fromLocalTime(2016, 11, 18, 12, 0, 0));
  EXPECT_EQ(world.text("moonphasename"), "Waning Gibbous");
  EXPECT_EQ(world.text("nextnewmoon").substr(0, 10), "29/11/2016");
}

// A monthly-log minute line with `rain` mm in its minute.
std::string logLine(int day, int month, int hour, int minute, double rain) {
  return fmt::format("{} {} 2026 {} {} 05.3 65 -0.8 1013.3 3.1 12.4 7 {:.1f} 2.4 35.6 412.0 05.3\r\n", day, month,
                     hour, minute, rain);
}

TEST(AlmanacTags, LastRainIsReadBackFromTheMonthlyLogs) {
  testsupport::TagWorld world;
  world.clock.set(fromLocalTime(2026, 11, 23, 16, 55, 0));
  EXPECT_EQ(world.text("timeoflastrainalways"), "---");
  EXPECT_EQ(world.text("dateoflastrain"), "---");

  std::ofstream(world.folder.path() / "102026lg.txt", std::ios::binary)
      << "header\r\n" << logLine(30, 10, 14, 5, 0.2) << logLine(30, 10, 14, 6, 0.0);
  // This month it has rained only today; the last line is still being written.
  std::ofstream(world.folder.path() / "112026lg.txt", std::ios::binary)
      << logLine(20, 11, 8, 15, 0.0) << logLine(23, 11, 10, 42, 0.4) << logLine(23, 11, 10, 43, 0.0)
      << "23 11 2026 10 44 05.3 65 -0.8 1013.3 3.1 12.4 7 0.6";
  EXPECT_EQ(world.text("timeoflastrainalways"), "10:42");
  EXPECT_EQ(world.text("dateoflastrainalways"), "23/11/2026");
  EXPECT_EQ(world.text("timeoflastrain"), "14:05");
  EXPECT_EQ(world.text("dateoflastrain"), "30/10/2026");
}

TEST(AlmanacTags, AFillWorksTheSunOutOnceAndKeepsIt) {
  testsupport::TagWorld world;
  world.options.position = {kLondon.latitude, kLondon.longitude, 0.0};
  const TagContext context = world.context();
  const TagDef* sunrise = vocabulary().find("sunrise");
  ASSERT_NE(sunrise, nullptr);
  const std::string first = tagText(*sunrise, context, false);
  ASSERT_TRUE(world.caches.sunDay);
  // Whatever the cache holds is what the rest of the fill reads.
  world.caches.sunDay->sun.rise = julianDay(fromLocalTime(2026, 6, 15, 5, 7, 0));
  EXPECT_EQ(tagText(*sunrise, context, false), "05:07");
  EXPECT_NE(first, "05:07");
}

}  // namespace
}  // namespace nimbrel
