#include "processing/rollover/housekeeping.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

#include "core/ini_store.h"
#include "support/expect_stored.h"
#include "support/settings_test_folder.h"

namespace nimbrel {
namespace {

namespace chr = std::chrono;
using Minute = chr::sys_time<chr::minutes>;
using testsupport::expectStored;
using testsupport::SettingsTestFolder;

Minute minuteOf(int year, unsigned month, unsigned day, int hour, int minute) {
  return chr::sys_days{chr::year{year} / chr::month{month} / chr::day{day}} + chr::hours{hour} + chr::minutes{minute};
}

LocalTime localOf(Minute t) {
  const auto days = chr::floor<chr::days>(t);
  const chr::year_month_day ymd{days};
  const chr::hh_mm_ss clock{t - days};
  return LocalTime{.year = static_cast<int>(ymd.year()),
                   .month = static_cast<int>(static_cast<unsigned>(ymd.month())),
                   .day = static_cast<int>(static_cast<unsigned>(ymd.day())),
                   .hour = static_cast<int>(clock.hours().count()),
                   .minute = static_cast<int>(clock.minutes().count()),
                   .weekday = static_cast<int>(chr::weekday{days}.c_encoding())};
}

class HousekeepingTest : public ::testing::Test {
 protected:
  HousekeepingTest() { std::filesystem::create_directories(logs()); }

  std::filesystem::path logs() const { return folder_ / "logfiles"; }
  Housekeeping& keeper() {
    if (!keeper_)
      keeper_.emplace(HousekeepingParts{record_, extremes_, rain_, main_, cycle_, units_, stationLog_, folder_.log(),
                                        {folder_.path(), main_.path(), logs()}});
    return *keeper_;
  }
  // Every minute from `from` to `to`, both included.
  void drive(Minute from, Minute to) {
    for (Minute t = from; t <= to; t += chr::minutes{1}) keeper().housekeeping(localOf(t));
  }
  void reading(double temp, int hum, double rainMm, Minute t) {
    record_.outtemp = temp;
    record_.outhum = static_cast<std::uint16_t>(hum);
    RainTotals::addIncrement(rainMm, record_);
    extremes_.check_data(record_, localOf(t), false, main_);
  }
  // The program stops and starts again: everything read back from the settings.
  void restart() {
    rain_.save(record_, main_);
    keeper_.reset();
    record_ = LiveRecord{};
    extremes_ = DailyExtremes{};
    extremes_.load(main_);
    rain_.load(main_, record_);
  }
  std::string stored(std::string_view section, std::string_view key) const { return main_.ReadString(section, key); }
  int stationLogCount(std::string_view text) const {
    const std::string log = readWholeFile(stationLog_.path()).value_or("");
    int count = 0;
    for (auto at = log.find(text); at != std::string::npos; at = log.find(text, at + 1)) ++count;
    return count;
  }
  std::string logFile(std::string_view name) const { return readWholeFile(logs() / name).value_or("<missing>"); }

  SettingsTestFolder folder_;
  ManualClock clock_;
  TextLog stationLog_{folder_ / "stationlog.txt", clock_};
  IniStore main_{folder_ / "NIMBREL.INI", folder_.log()};
  LiveRecord record_;
  DailyExtremes extremes_;
  RainTotals rain_{stationLog_};
  CycleState cycle_;
  UnitSettings units_;
  std::optional<Housekeeping> keeper_;
};

TEST_F(HousekeepingTest, MidnightKeepsTheDayAsYesterdayAndStartsANewOne) {
  record_.monthlyrain = 30;
  reading(25.5, 40, 4.2, minuteOf(2024, 7, 3, 14, 0));  // a Wednesday
  reading(11.0, 90, 0, minuteOf(2024, 7, 3, 5, 30));
  record_.rainrate = 0.4;
  rain_.updateRainRate(record_, localOf(minuteOf(2024, 7, 3, 16, 20)), false, main_);
  drive(minuteOf(2024, 7, 3, 23, 50), minuteOf(2024, 7, 4, 0, 20));

  expectStored(main_, {{"House keeping", "yesterdayday", "3"}, {"Daily high temperature yest", "number2", "25.5"},
                       {"Daily high temperature yest", "number2time", "14:00"},
                       {"Daily high temperature yest", "number2actual", "25.5"},
                       {"Daily low temperature yest", "number2time", "05:30"},
                       {"Daily low humidity yest", "number2", "40"}, {"Daily high average yest", "prevdayrain", "4.2"},
                       {"Daily high average yest", "prevdayraintime", "00:00"},
                       {"Daily rain for each week day", "wedensday", "4.2"},
                       {"Daily rain for each week day", "wednesday date", "3/7"}, {"new rain storage", "dailyrain new", "0"},
                       {"Last max rain rate", "value", "0"}, {"Extreme conditions times", "Max rainrate", ""}});
  EXPECT_EQ(record_.dailyrain, 0);
  EXPECT_EQ(keeper().maxRainRateText(), "0.0 mm/min (0.0 mm/hr)");
  EXPECT_DOUBLE_EQ(record_.monthlyrain, 34.2);  // not a month end
  EXPECT_FALSE(cycle_.noaa_request);

  EXPECT_EQ(stationLogCount("Normal daily resetting wind/temperature daily value , day: 4\n"), 1);
  EXPECT_EQ(stationLogCount("Normal daily resetting rain daily value , day: 4 rain today 4.2 mm\n"), 1);
  EXPECT_EQ(folder_.logText(), "");
}

TEST_F(HousekeepingTest, NineAmExtremesAndMidnightRainResetAtTheirOwnHours) {
  units_.resets = {.dayReset = DayResetTime::nineAm, .dailyResetHour = 9, .rainResetHour = 0};
  units_.units.date = UnitSystem::usa;
  units_.units.rain = RainUnit::inches;
  reading(18, 60, 2.5, minuteOf(2024, 7, 3, 15, 0));

  drive(minuteOf(2024, 7, 3, 23, 55), minuteOf(2024, 7, 4, 8, 59));
  EXPECT_EQ(record_.dailyrain, 0);
  expectStored(main_, {{"Daily rain for each week day", "wednesday date", "7/3"},
                       {"Daily high average yest", "prevdayraintime", "12:00 am"}});
  EXPECT_EQ(keeper().maxRainRateText(), "0.000 in./min (0.000 in./hr)");
  EXPECT_EQ(extremes_.high(Quantity::Temperature), 18);  // the extremes' day goes on until 9

  drive(minuteOf(2024, 7, 4, 9, 0), minuteOf(2024, 7, 4, 9, 5));
  EXPECT_EQ(stored("Daily high temperature yest", "number2"), "18");
  EXPECT_EQ(extremes_.high(Quantity::Temperature), -100);
  EXPECT_EQ(stationLogCount("rain daily value"), 1);
  EXPECT_EQ(stationLogCount("wind/temperature daily value , day: 4"), 1);
}

TEST_F(HousekeepingTest, WithTheNineAmResetAnEmptyRainHourFollowsTheExtremes) {
  units_.resets = {.dayReset = DayResetTime::nineAm, .dailyResetHour = 0, .rainResetHour = 0};
  reading(18, 60, 1.5, minuteOf(2024, 7, 4, 8, 0));
  drive(minuteOf(2024, 7, 3, 23, 58), minuteOf(2024, 7, 4, 8, 59));
  EXPECT_EQ(record_.dailyrain, 1.5);
  EXPECT_EQ(stationLogCount("daily value"), 0);

  drive(minuteOf(2024, 7, 4, 9, 0), minuteOf(2024, 7, 4, 9, 0));
  // Away from midnight the rain is filed under the present day.
  expectStored(main_, {{"Daily rain for each week day", "thursday", "1.5"},
                       {"Daily rain for each week day", "thursday date", "4/7"}});
  EXPECT_EQ(stationLogCount("daily value"), 2);
}

TEST_F(HousekeepingTest, RainResetOnFirstOfMarchWritesTwentyEighthOfFebruary) {
  record_.dailyrain = 2;
  drive(minuteOf(2023, 3, 1, 0, 0), minuteOf(2023, 3, 1, 0, 0));  // 28 Feb 2023 was a Tuesday
  EXPECT_EQ(stored("Daily rain for each week day", "tuesday date"), "28/2");
  keeper_.reset();  // a new run for each date, rather than the months between made up at once
  record_.dailyrain = 1;
  drive(minuteOf(2024, 1, 1, 0, 0), minuteOf(2024, 1, 1, 0, 0));
  EXPECT_EQ(stored("Daily rain for each week day", "sunday date"), "31/12");

  keeper_.reset();
  record_.dailyrain = 3;
  drive(minuteOf(2024, 2, 29, 23, 59), minuteOf(2024, 3, 1, 0, 1));  // leap year: 29 Feb is a Thursday
  expectStored(main_, {{"Daily rain for each week day", "thursday", "3"},
                       {"Daily rain for each week day", "thursday date", "28/2"}});
}

TEST_F(HousekeepingTest, MonthEndFilesTheMonthAndAsksForTheReports) {
  record_.dailyrain = 1;
  record_.monthlyrain = 48.5;
  record_.yearlyrain = 300;
  main_.WriteString("Sunshine hours", "month", "112.5");
  main_.WriteString("Energy wind", "25 month", "7");
  drive(minuteOf(2024, 4, 30, 23, 58), minuteOf(2024, 5, 1, 0, 3));

  EXPECT_EQ(record_.monthlyrain, 0);
  EXPECT_EQ(record_.yearlyrain, 300);
  EXPECT_TRUE(cycle_.noaa_request);
  EXPECT_EQ(stationLogCount("resetting month data file house keeping \n"), 1);
  expectStored(main_, {{"Rain chart", "Apr ", "48.5"}, {"new rain storage", "monthlyrain new", "0"},
                       {"Sunshine hours", "month12", "112.5"}, {"Sunshine hours", "month", "0"},
                       {"Energy wind", "25 month12", "7"}, {"Energy wind", "0 month12", "0"}});
}

TEST_F(HousekeepingTest, YearlyRainStartsAgainInTheRainSeasonMonth) {
  units_.resets.rainSeasonStartMonth = 7;
  record_.monthlyrain = 20;
  record_.yearlyrain = 500;
  drive(minuteOf(2023, 12, 31, 23, 59), minuteOf(2024, 1, 1, 0, 0));
  EXPECT_EQ(stored("Rain chart", "Dec "), "20");
  EXPECT_EQ(record_.yearlyrain, 500);

  drive(minuteOf(2024, 6, 1, 0, 0), minuteOf(2024, 6, 1, 0, 0));
  EXPECT_EQ(record_.yearlyrain, 500);
  drive(minuteOf(2024, 7, 1, 0, 0), minuteOf(2024, 7, 1, 0, 0));
  EXPECT_EQ(record_.yearlyrain, 0);
  EXPECT_EQ(stored("new rain storage", "yearlyrain new"), "0");
}

TEST_F(HousekeepingTest, DailyFilesStartAfreshAndTheSettingsAreBackedUpAfterTheResets) {
  for (const char* name : {"dailylog.txt", "dailylogcsv.csv", "indoorlog.txt", "lightninglog.txt", "ftplog.txt"})
    writeFileAtomically(logs() / name, "yesterday's lines\r\n");
  main_.WriteString("FTP error count", "number", "12");
  main_.WriteString("Total bytes uploaded day", "number", "123456");
  record_.dailyrain = 6.5;
  drive(minuteOf(2024, 7, 3, 23, 59), minuteOf(2024, 7, 4, 0, 15));

  EXPECT_EQ(logFile("dailylog.txt"),
            "day month year hour minute temperature   humidity     dewpoint   barometer    windspeed    gustspeed "
            "direction   rainlastmin    dailyrain  monthlyrain    yearlyrain   heatindex\r\n");
  EXPECT_EQ(logFile("dailylogcsv.csv"),
            "day,month,year,hour,minute,temperature,humidity,dewpoint,barometer,windspeed,gustspeed,direction,"
            "rainlastmin,dailyrain,monthlyrain,yearlyrain,heatindex\r\n");
  EXPECT_EQ(logFile("indoorlog.txt"), "day month year hour minute temperature   humidity\r\n");
  for (const char* emptied : {"lightninglog.txt", "lightninglognexstorm.txt"}) EXPECT_EQ(logFile(emptied), "") << emptied;
  expectStored(main_, {{"FTP error count", "number", "0"}, {"Total bytes uploaded day", "number", "0"}});

  EXPECT_EQ(logFile("ftplog.txt"), "yesterday's lines\r\n");  // its time is 00:16
  drive(minuteOf(2024, 7, 4, 0, 16), minuteOf(2024, 7, 4, 0, 16));
  EXPECT_EQ(logFile("ftplog.txt"), "");

  const std::string backup = folder_.read("nimbrelinibackup.ini");
  EXPECT_NE(backup.find("prevdayrain=6.5"), std::string::npos) << backup;
  EXPECT_NE(backup.find("dailyrain new=0"), std::string::npos) << backup;
}

TEST_F(HousekeepingTest, AFailingDutyIsLoggedAndTheOthersStillRun) {
  std::filesystem::remove_all(logs());
  writeFileAtomically(logs(), "a file where the logs folder should be");
  record_.dailyrain = 2;
  drive(minuteOf(2024, 7, 4, 0, 0), minuteOf(2024, 7, 4, 0, 0));
  EXPECT_NE(folder_.logText().find("error with daily logs reset cannot write"), std::string::npos);
  EXPECT_EQ(record_.dailyrain, 0);
  EXPECT_EQ(stored("FTP error count", "number"), "0");
  EXPECT_NE(folder_.read("nimbrelinibackup.ini"), "<missing>");
}

TEST_F(HousekeepingTest, AMidnightWithoutAMinutePassIsMadeUpAtTheNextOneButNotAfterARestart) {
  reading(22, 50, 3.5, minuteOf(2024, 7, 3, 13, 0));
  drive(minuteOf(2024, 7, 3, 23, 50), minuteOf(2024, 7, 3, 23, 58));
  drive(minuteOf(2024, 7, 4, 0, 3), minuteOf(2024, 7, 4, 0, 10));  // stalled over midnight
  EXPECT_EQ(stationLogCount("wind/temperature daily value , day: 4"), 1);
  EXPECT_EQ(stationLogCount("rain daily value , day: 4 rain today 3.5 mm"), 1);
  expectStored(main_, {{"Daily high average yest", "prevdayraintime", "00:00"},
                       {"House keeping", "last daily reset", "2024-07-04"}});

  // Off over the next midnight, without "do the daily reset when qz starts":
  // the first pass after the start is no reason for a reset.
  reading(18, 50, 1.0, minuteOf(2024, 7, 4, 13, 0));
  restart();
  drive(minuteOf(2024, 7, 5, 7, 0), minuteOf(2024, 7, 5, 7, 5));
  EXPECT_EQ(stationLogCount("daily value , day: 5"), 0);
  EXPECT_EQ(extremes_.high(Quantity::Temperature), 18);
}

TEST_F(HousekeepingTest, StartUpResetRunsOnceForAMissedMidnight) {
  units_.station.dailyResetWhenStarting = true;
  drive(minuteOf(2024, 7, 3, 0, 0), minuteOf(2024, 7, 3, 0, 0));
  reading(22, 50, 3.5, minuteOf(2024, 7, 3, 13, 0));
  restart();  // off from the evening of the 3rd to the 4th at midnight

  keeper().resetOnStart(localOf(minuteOf(2024, 7, 4, 0, 0)));
  drive(minuteOf(2024, 7, 4, 0, 0), minuteOf(2024, 7, 4, 0, 5));
  restart();
  keeper().resetOnStart(localOf(minuteOf(2024, 7, 4, 7, 30)));

  EXPECT_EQ(stationLogCount("wind/temperature daily value , day: 4"), 1);
  EXPECT_EQ(stationLogCount("rain daily value , day: 4 rain today 3.5 mm"), 1);
  EXPECT_EQ(extremes_.high(Quantity::Temperature), -100);
  expectStored(main_, {{"Daily high temperature yest", "number2", "22"},
                       {"Daily rain for each week day", "wednesday date", "3/7"}});
}

TEST_F(HousekeepingTest, StartUpAfterAMonthEndEndsTheMonthTheProgramLastSaw) {
  units_.station.dailyResetWhenStarting = true;
  drive(minuteOf(2024, 4, 29, 0, 0), minuteOf(2024, 4, 29, 0, 0));
  record_.monthlyrain = 61;
  restart();

  keeper().resetOnStart(localOf(minuteOf(2024, 5, 2, 8, 0)));
  EXPECT_EQ(record_.monthlyrain, 0);
  EXPECT_TRUE(cycle_.noaa_request);
  expectStored(main_, {{"Rain chart", "Apr ", "61"}, {"House keeping", "last daily reset", "2024-05-02"}});
}

TEST_F(HousekeepingTest, StartUpResetNeedsItsSwitchAndAnEarlierReset) {
  reading(22, 50, 3.5, minuteOf(2024, 7, 3, 13, 0));
  keeper().resetOnStart(localOf(minuteOf(2024, 7, 4, 7, 30)));  // switched off
  units_.station.dailyResetWhenStarting = true;
  keeper().resetOnStart(localOf(minuteOf(2024, 7, 4, 7, 30)));  // first start: nothing to compare with
  EXPECT_EQ(stationLogCount("daily value"), 0);
  EXPECT_EQ(extremes_.high(Quantity::Temperature), 22);

  keeper().resetOnStart(localOf(minuteOf(2024, 7, 5, 7, 30)));
  EXPECT_EQ(stationLogCount("daily value"), 2);
}

TEST(ResetCalendarTest, RainSeasonMonthsBetweenTwoResetsAndStoredResetDatesMustBeRealDates) {
  EXPECT_TRUE(monthStartsBetween({2024, 6, 30}, {2024, 7, 1}, 7));
  EXPECT_FALSE(monthStartsBetween({2024, 7, 1}, {2024, 7, 31}, 7));
  EXPECT_FALSE(monthStartsBetween({2024, 7, 31}, {2024, 8, 1}, 7));
  EXPECT_TRUE(monthStartsBetween({2023, 11, 30}, {2024, 2, 1}, 1));
  EXPECT_FALSE(monthStartsBetween({2023, 11, 30}, {2024, 2, 1}, 3));
  EXPECT_TRUE(monthStartsBetween({2022, 7, 2}, {2023, 7, 1}, 7));
  CalendarDate date;
  EXPECT_TRUE(parseIsoDate("2024-02-29", date));
  EXPECT_EQ(date, (CalendarDate{2024, 2, 29}));
  for (const char* notADate : {"2023-02-29", "2024-2-29", ""}) EXPECT_FALSE(parseIsoDate(notADate, date)) << notADate;
}

}  // namespace
}  // namespace nimbrel
