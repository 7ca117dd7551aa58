#include <gtest/gtest.h>

#include <fmt/format.h>

#include <fstream>
#include <vector>

#include "core/live_record.h"
#include "datafiles/log_headers.h"
#include "publish/tags/climate_logs.h"
#include "support/tag_world.h"

namespace nimbrel {
namespace {

using testsupport::TagWorld;

// One minute line of a monthly log, in metric units unless `usa`.
struct Line {
  int day = 1;
  int hour = 12;
  int minute = 0;
  double temp = 10;
  double wind = 0;
  double gust = 0;
  int dir = 0;
  double dayRain = 0;
  double baro = 1013;
  int month = 0;  // 0: the file's month
};

void writeLog(const std::filesystem::path& folder, int month, int year, const std::vector<Line>& lines,
              bool usa = false) {
  std::ofstream out(folder / fmt::format("{}{}lg.txt", month, year), std::ios::binary);
  out << kMonthlyLogHeader << "\r\n";
  for (const Line& l : lines) {
    const double temp = usa ? writer_units::toFahrenheit(l.temp) : l.temp;
    const double wind = usa ? writer_units::toMph(l.wind) : l.wind;
    const double gust = usa ? writer_units::toMph(l.gust) : l.gust;
    const double rain = usa ? writer_units::toInches(l.dayRain) : l.dayRain;
    const double baro = usa ? writer_units::toInchesHg(l.baro) : l.baro;
    out << fmt::format("{:02} {:02} {} {:02} {:02} {:.1f} 50 {:.1f} {:.3f} {:.1f} {:.1f} {:03} 0.0 {:.3f} 0.0 0.0 {:.1f}\r\n",
                       l.day, l.month ? l.month : month, year, l.hour, l.minute, temp, temp, baro, wind, gust, l.dir, rain, temp);
  }
}

TEST(ClimateLogs, CalendarArithmetic) {
  EXPECT_EQ(dayNumber(1970, 1, 1), 0);
  EXPECT_EQ(dayNumber(2000, 3, 1) - dayNumber(2000, 2, 28), 2);  // 2000 is a leap year
  EXPECT_EQ(dayNumber(2100, 3, 1) - dayNumber(2100, 2, 28), 1);  // 2100 is not
  for (int day : {dayNumber(1969, 12, 31), dayNumber(2024, 2, 29), dayNumber(2026, 12, 31)}) {
    const CivilDate date = civilDate(day);
    EXPECT_EQ(dayNumber(date.year, date.month, date.day), day);
  }
  EXPECT_EQ(civilDate(dayNumber(2024, 2, 29)).month, 2);
  EXPECT_EQ(daysInMonth(2024, 2), 29);
  EXPECT_EQ(daysInMonth(2026, 2), 28);
  EXPECT_EQ(daysInMonth(2026, 12), 31);
}

// June 2026 up to the world's moment (15 June, 14:30): each day d has a
// night line at d - 10 °C and a noon line at d °C; 5 mm fell on the 3rd.
std::vector<Line> juneLog() {
  std::vector<Line> lines;
  for (int day = 1; day <= 15; ++day) {
    lines.push_back({.day = day, .hour = 3, .temp = day - 10.0, .wind = 4, .gust = 8, .dir = 180, .baro = 1000.0 + day});
    lines.push_back({.day = day, .hour = 12, .temp = static_cast<double>(day), .wind = 6, .gust = day == 7 ? 30.0 : 9,
                     .dir = day == 7 ? 45 : 180, .dayRain = day == 3 ? 5.0 : 0, .baro = 1010.0 - day});
  }
  lines.push_back({.day = 15, .hour = 16, .temp = 40});  // after the fill's moment: not counted
  return lines;
}

TEST(ClimateTags, MonthToDateFiguresAndDayCounts) {
  TagWorld world;
  writeLog(world.folder.path(), 6, 2026, juneLog());
  world.record.outtemp = 2;  // today's extremes: 2 °C high and low
  world.reading();

  EXPECT_EQ(world.text("monthtodatemaxtempcelsius"), "15.0");
  EXPECT_EQ(world.text("monthtodatemintempcelsius"), "-9.0");
  EXPECT_EQ(world.text("monthtodatemaxgustkts"), "30.0");
  EXPECT_EQ(world.text("monthtodatemaxgustdirdeg"), "45");
  EXPECT_EQ(world.text("monthtodatemaxbaromb"), "1015.0");
  EXPECT_EQ(world.text("nmbd"), "15");
  EXPECT_EQ(world.text("nmbidm"), "15/6");  // lowest pressure: 995 hPa at noon on the 15th
  EXPECT_EQ(world.text("monthtodateavspeedkts"), "5.0");
  EXPECT_EQ(world.text("windruntoday"), "0.3");  // two minutes at 4 and 6 knots, in km

  // Highest above 10 °C: the 11th to the 14th from the log; today counts by
  // its extremes (2 °C) in the plain form, by its logged 15 °C in the "lg" form.
  EXPECT_EQ(world.text("daysTmax>10C"), "4");
  EXPECT_EQ(world.text("daysTmax>20Clg"), "0");
  // Highest below 10 °C: the 1st to the 9th, and today by its extremes only.
  EXPECT_EQ(world.text("daysTmax<10C"), "10");
  EXPECT_EQ(world.text("daysTmax<10Clg"), "9");
  EXPECT_EQ(world.text("daysTmin<0C"), "9");     // lows of -9 to -1 on the 1st to the 9th
  EXPECT_EQ(world.text("daysTminyear<0C"), "9");  // no earlier months logged
  EXPECT_EQ(world.text("dmi=32"), "10");          // at or below 0 °C: the 10th too

  // Heating degree days: today from its extremes, the month from each day's mean.
  EXPECT_EQ(world.text("hddday"), "16.3");
  double hdd = 18.3 - 2;
  for (int day = 1; day <= 14; ++day) hdd += 18.3 - (day - 5.0);
  EXPECT_EQ(world.text("hddmonth"), fmt::format("{:.1f}", hdd));
  EXPECT_EQ(world.text("cddmonth"), "0.0");
}

TEST(ClimateTags, RainFromTheLogsAndTheLiveRecord) {
  TagWorld world;
  writeLog(world.folder.path(), 6, 2026, juneLog());
  world.record.dailyrain = 0;
  world.record.monthlyrain = 7.5;
  world.reading();

  EXPECT_EQ(world.text("dayswithrain"), "1");
  EXPECT_EQ(world.text("nrn"), "5.0");
  EXPECT_EQ(world.text("nrnd"), "3");
  EXPECT_EQ(world.text("rai1"), "1");
  EXPECT_EQ(world.text("rais10"), "0");
  EXPECT_EQ(world.text("dayswithnorain"), "12");  // the 4th to today
  EXPECT_EQ(world.text("consecdayswithrain"), "0");
  // The current month's total is the live record's; months to come have none yet.
  EXPECT_EQ(world.text("nowrainjun"), "7.5");
  EXPECT_EQ(world.text("nowrainmay"), "---");  // no May log
  EXPECT_EQ(world.text("nowrainmay0"), "0.0");
  EXPECT_EQ(world.text("nowrainjul"), "---");
  EXPECT_EQ(world.text("nowrainjul0"), "0.0");
}

TEST(ClimateTags, RecentMinutesAcrossTheMonthBoundary) {
  TagWorld world(fromLocalTime(2026, 7, 1, 0, 5, 0));
  std::vector<Line> june;
  for (int minute = 0; minute < 60; ++minute)
    june.push_back({.day = 30, .hour = 23, .minute = minute, .temp = 10, .wind = 2, .dir = 270});
  writeLog(world.folder.path(), 6, 2026, june);
  std::vector<Line> july;
  for (int minute = 0; minute <= 5; ++minute)
    july.push_back({.day = 1, .hour = 0, .minute = minute, .temp = 16, .wind = 8, .dir = 90});
  writeLog(world.folder.path(), 7, 2026, july);

  // The last 10 minutes: four of June (2 kn from the west) and six of July (8 kn from the east).
  world.units.units.wind = WindUnit::knots;
  EXPECT_EQ(world.text("avwindlastimediate10"), "5.6");
  EXPECT_EQ(world.text("avdirlastimediate10"), "90");  // the stronger easterly wins
  EXPECT_EQ(world.text("avtempsincemidnight"), "16.0");
  EXPECT_EQ(world.text("houraveragetemp"), "10.6");    // 54 minutes at 10, 6 at 16
  EXPECT_EQ(world.text("last24houravdirword"), "W");   // 60 minutes of 2 kn beat 6 of 8 kn
  // Yesterday's wind run: 2 knots for an hour.
  EXPECT_EQ(world.text("windrunyesterday"), "2.0");
}

TEST(ClimateTags, UsLogsReadBackInInternalUnitsAndAYearAgo) {
  TagWorld world;
  world.units.units.logFile = UnitSystem::usa;
  writeLog(world.folder.path(), 6, 2025, {{.day = 15, .hour = 3, .temp = -4.5, .wind = 10, .dayRain = 0},
                                          {.day = 15, .hour = 15, .temp = 21.5, .wind = 20, .dayRain = 12.7}},
           true);
  EXPECT_EQ(world.text("avtempyrago"), "8.5");
  world.units.units.wind = WindUnit::knots;
  EXPECT_EQ(world.text("avwindyrago"), "15.0");
  EXPECT_EQ(world.text("raintodateyearagotoday"), "12.7");
  // Nothing logged this month or a month ago: no value rather than zero.
  EXPECT_EQ(world.text("monthtodateavtemp"), "---");
  EXPECT_EQ(world.text("avtempmtago"), "---");
  EXPECT_EQ(world.text("hddday"), "---");  // no reading yet
}


TEST(ClimateTags, SeasonsAndWeeksReachBackIntoLastYear) {
  TagWorld world(fromLocalTime(2026, 1, 10, 12, 0, 0));  // a Saturday
  writeLog(world.folder.path(), 12, 2025, {{.day = 20, .hour = 3, .temp = 0}, {.day = 20, .hour = 15, .temp = 10}});
  writeLog(world.folder.path(), 1, 2026,
           {{.day = 5, .hour = 3, .temp = 20}, {.day = 5, .hour = 15, .temp = 30, .dayRain = 3}});

  EXPECT_EQ(world.text("seasonavtemp"), "15.0");  // December to February
  EXPECT_EQ(world.text("seasonmaxtemp"), "30.0");
  EXPECT_EQ(world.text("yeartodateavtemp"), "25.0");
  // The heating season from 1 July holds December's cold day; the year does not.
  EXPECT_EQ(world.text("hddseason"), "13.3");
  EXPECT_EQ(world.text("hddyear"), "0.0");
  EXPECT_EQ(world.text("cddseason"), "6.7");  // from 1 January in the north
  world.options.position.latitude = -33.9;
  EXPECT_EQ(world.text("hddseason"), "0.0");
  EXPECT_EQ(world.text("cddseason"), "6.7");  // from 1 July in the south: the 5th only

  EXPECT_EQ(world.text("rainonmonday"), "3.0");
  EXPECT_EQ(world.text("rainontuesday"), "---");  // nothing logged that day
  EXPECT_EQ(world.text("rainonsunday"), "0.0");   // still to come
  EXPECT_EQ(world.text("raincurrentweek"), "3.0");

  // Evapotranspiration: each day's highest running total from the sun logs.
  std::ofstream(world.folder.path() / "12026lgsun.txt", std::ios::binary)
      << "Sun shine hours  ET\r\n04 01 2026 20 00 0.00 9.00\r\n05 01 2026 10 00 0.00 0.50\r\n"
         "05 01 2026 18 00 0.00 1.25\r\n09 01 2026 18 00 0.00 0.75\r\n10 01 2026 18 00 0.00 5.00\r\n";
  EXPECT_EQ(world.text("etcurrentweek"), "2.00");  // not Sunday the 4th, nor tonight's line
}

TEST(ClimateTags, NineAmDayKeepsTheFirstHoursOfAMonthInTheFileBefore) {
  TagWorld world(fromLocalTime(2026, 7, 1, 8, 0, 0));
  world.units.resets.dayReset = DayResetTime::nineAm;
  writeLog(world.folder.path(), 6, 2026, {{.day = 30, .hour = 12, .temp = 30}, {.day = 1, .hour = 7, .temp = 12, .month = 7}});
  EXPECT_EQ(world.text("monthtodatemaxtempcelsius"), "12.0");
  EXPECT_EQ(world.text("avtempsincemidnight"), "12.0");
  world.units.resets.dayReset = DayResetTime::midnight;  // then July's lines are in July's file only
  EXPECT_EQ(world.text("monthtodatemaxtempcelsius"), "---");
}

}  // namespace
}  // namespace nimbrel
