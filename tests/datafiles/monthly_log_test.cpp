#include "datafiles/monthly_log.h"

#include <gtest/gtest.h>

#include "log_test_world.h"

namespace nimbrel {
namespace {

constexpr const char* kAutumnLine = "14 11 2026  9  5 05.3  65 -0.8 1013.3 3.1 12.4   7 0.2 2.4 35.6 412.0 05.3";

class MonthlyLog : public ::testing::Test {
 protected:
  MonthlyLog() { testsupport::fillAutumnMinute(world.record); }
  LogfileResult write(const LogCall& call) {
    return logfile(world.record, call, world.options, world.mainSettings, world.sinks);
  }
  std::string withHeader(const std::string& header, const std::string& lines) const {
    return headers.at(header) + "\r\n" + lines;
  }
  testsupport::LogWorld world;
  const std::map<std::string, std::string> headers = testsupport::goldenHeaders();
};

TEST_F(MonthlyLog, AFileCreatedMidMonthGetsItsHeaderOnceAndCrLfLineEnds) {
  const auto first = write(world.at(2026, 11, 14, 9, 5));
  EXPECT_TRUE(first.written);
  EXPECT_EQ(first.file, world.dir / "logs" / "112026lg.txt");
  world.record.outtemp = -0.5;
  world.record.raincounterprev = world.record.raincounter;
  write(world.at(2026, 11, 14, 9, 6));

  EXPECT_EQ(world.logFile("112026lg.txt"),
            withHeader("lg.txt", std::string(kAutumnLine) + "\r\n" +
                                     "14 11 2026  9  6 -0.5  65 -6.3 1013.3 3.1 12.4   7 0.0 2.4 35.6 412.0 -0.5\r\n"));
  const std::string diagnostics = world.stationLogText();
  const std::string note = "re creating the main logfile, does not exist " + first.file.string();
  EXPECT_NE(diagnostics.find(note), std::string::npos) << diagnostics;
  EXPECT_EQ(diagnostics.find(note), diagnostics.rfind(note));  // only when it was created
}

TEST_F(MonthlyLog, WithTheNineAmDayTheFirstMorningBelongsToThePreviousMonth) {
  world.options.nineAmDay = true;
  write(world.at(2026, 3, 1, 5, 0));
  const std::string february = world.logFile("22026lg.txt");
  EXPECT_NE(february.find("\r\n 1  3 2026  5  0 05.3"), std::string::npos) << february;
  EXPECT_TRUE(world.exists("22026lg2.txt"));
  EXPECT_TRUE(world.exists("22026lgsun.txt"));
  EXPECT_FALSE(world.exists("32026lg.txt"));
  write(world.at(2026, 3, 1, 9, 0));
  EXPECT_TRUE(world.exists("32026lg.txt"));

  write(world.at(2027, 1, 1, 5, 0));
  EXPECT_NE(world.logFile("122026lg.txt").find(" 1  1 2027  5  0"), std::string::npos);
  EXPECT_FALSE(world.exists("12027lg.txt"));
  write(world.at(2027, 1, 2, 5, 0));  // only the first day is shared
  EXPECT_TRUE(world.exists("12027lg.txt"));
}

TEST_F(MonthlyLog, StoresTheComputedHeatIndexInTheRecordEvenWhenTheStationsIsWritten) {
  world.record.outtemp = 30.0;
  world.record.outhum = 70;
  world.record.heatindex = 0.0;
  world.record.heatindexalt = 31.0;
  world.options.heatIndexFromStation = true;
  write(world.at(2026, 7, 14, 15, 0));
  EXPECT_NEAR(world.record.heatindex, 35.038, 0.001);
  EXPECT_NE(world.logFile("72026lg.txt").find(" 31.0\r\n"), std::string::npos);
}

TEST_F(MonthlyLog, AnUnsetClockWritesNothingAndAReplayIsStampedWithTheRecordsOwnTime) {
  EXPECT_FALSE(write(world.at(0, 0, 0, 0, 0)).written);
  EXPECT_TRUE(std::filesystem::is_empty(world.dir / "logs"));

  LogCall call = world.at(2026, 12, 2, 18, 30);
  call.replaying = true;
  world.record.readingtime = ReadingTime{14, 11, 2026, 9, 5, 0};
  write(call);
  EXPECT_EQ(world.logFile("112026lg.txt"), withHeader("lg.txt", std::string(kAutumnLine) + "\r\n"));
  EXPECT_FALSE(world.exists("122026lg.txt"));
}

TEST_F(MonthlyLog, EveryFileOfTheRoutineStartsWithItsHeaderAndTheConsolesExtraLogNeedsItsSwitch) {
  world.mainSettings.WriteString("option", "Davis VP extra logging", "Yes");  // only "yes" is on
  write(world.at(2026, 11, 14, 9, 4));
  EXPECT_FALSE(world.exists("vantageextrasensorslog.csv"));
  EXPECT_TRUE(world.exists("extralog.csv"));

  world.mainSettings.WriteString("option", "Davis VP extra logging", "yes");
  write(world.at(2026, 11, 14, 9, 5));
  for (const char* file : {"extralog.csv", "vantageextrasensorslog.csv", "1wirelog.txt", "vantagelog.txt",
                           "growlog.txt", "dailylog.txt", "indoorlog.txt"})
    EXPECT_EQ(world.firstLine(file), headers.at(file)) << file;
  for (const char* monthly : {"lg.txt", "lg2.txt", "lgsun.txt"})
    EXPECT_EQ(world.firstLine(std::string("112026") + monthly), headers.at(monthly)) << monthly;
}

TEST_F(MonthlyLog, CompanionLinesCarryTheLineTimeAndTheirValues) {
  LiveRecord& record = world.record;
  record.intemp = 21.0;
  record.inhum = 45;
  record.extratemp[1] = 4.0;
  record.extrahum[1] = 80;
  record.extratemp[9] = -3.25;
  record.extrahum[9] = 7;
  record.solar = 523.4;
  record.uv = 4.5;
  record.dailyet = 1.234;
  record.soilmoisture[1] = 12;
  record.soiltemp = 8.06;
  record.snowheight = 3.0;
  write(world.at(2026, 11, 14, 9, 5,
                 {.windRunNauticalMiles = 86.44, .solarEnergy = 2.5, .sunshineHours = 4.5, .highSoilC = 9.5,
                  .lowSoilC = 7.25, .highTempC = 12.0, .lowTempC = -1.0}));

  EXPECT_EQ(world.dataLine("indoorlog.txt"), "14 11 2026  9  5 21.0  45");
  EXPECT_EQ(world.dataLine("dailylog.txt"), kAutumnLine);
  EXPECT_EQ(world.dataLine("112026lg2.txt"), "14 11 2026  9  5 9.5 7.3 12.0 -1.0 3.0");
  EXPECT_EQ(world.dataLine("112026lgsun.txt"), "14 11 2026  9  5 4.50 1.23");
  EXPECT_EQ(world.dataLine("vantagelog.txt"), "14 11 2026  9  5,523,4.5,1.23,12,8.1");
  EXPECT_EQ(world.dataLine("growlog.txt"), "14 11 2026  9  5 523 86.4 2.5");
  EXPECT_EQ(world.dataLine("extralog.csv"), "14,11,2026,9,5,4.0,80,0.0,0,0.0,0,0.0,0,0.0,0,0.0,0,0.0,0,0.0,0,-3.3,7");
  EXPECT_EQ(world.dataLine("1wirelog.txt"), "14,11,2026,9,5,4.0,0.0,0.0,0.0,0.0,0.0,0.0,0.0,-3.3,4.0,0.0,0.0,0.0,80,0,0,0");
}

TEST_F(MonthlyLog, AMissingLogsFolderIsReportedOnceLosesNoLineAndTheNextCallWrites) {
  write(world.at(2026, 11, 14, 9, 4));
  const std::string before = world.logFile("112026lg.txt");
  std::filesystem::rename(world.dir / "logs", world.dir / "away");

  EXPECT_FALSE(write(world.at(2026, 11, 14, 9, 5)).written);
  EXPECT_FALSE(write(world.at(2026, 11, 14, 9, 6)).written);
  EXPECT_TRUE(world.status.failing);
  EXPECT_NE(world.status.lastResult, 0);
  const std::string errors = world.errorLogText();
  // Each log reported once for the two minutes, not once a minute.
  const std::string monthly = "cannot write the log " + (world.dir / "logs" / "112026lg.txt").string() + ":";
  EXPECT_NE(errors.find(monthly), std::string::npos) << errors;
  EXPECT_EQ(errors.find(monthly), errors.rfind(monthly)) << errors;

  std::filesystem::rename(world.dir / "away", world.dir / "logs");
  EXPECT_TRUE(write(world.at(2026, 11, 14, 9, 7)).written);
  EXPECT_FALSE(world.status.failing);
  EXPECT_EQ(world.status.lastResult, 0);
  const std::string after = world.logFile("112026lg.txt");
  EXPECT_EQ(after.substr(0, before.size()), before);  // the earlier lines are intact
  EXPECT_NE(after.find("14 11 2026  9  7"), std::string::npos);
}

TEST_F(MonthlyLog, TheTenMinuteLogWritesOnTheTenMinutes) {
  EXPECT_FALSE(logfileten(world.record, world.at(2026, 11, 14, 9, 5), world.options, world.sinks));
  EXPECT_FALSE(world.exists("112026lgten.txt"));
  EXPECT_TRUE(logfileten(world.record, world.at(2026, 11, 14, 9, 10), world.options, world.sinks));
  EXPECT_EQ(world.logFile("112026lgten.txt"),
            withHeader("dailylog.txt", "14 11 2026  9 10" + std::string(kAutumnLine).substr(16) + "\r\n"));
  for (const auto& [file, header] : {std::pair{"dailylog10min.txt", "dailylog.txt"}, {"vantagelogten.txt", "vantagelog.txt"},
                                     {"growlogten.txt", "growlog.txt"}, {"growtendailylog.txt", "growlog.txt"}})
    EXPECT_EQ(world.firstLine(file), headers.at(header)) << file;
}

}  // namespace
}  // namespace nimbrel
