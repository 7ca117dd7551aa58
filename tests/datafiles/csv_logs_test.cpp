#include "datafiles/csv_logs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "log_test_world.h"

namespace nimbrel {
namespace {

constexpr const char* kAutumnCsv = "14,11,2026,9,5,05.3,65,-0.8,1013.3,3.1,12.4,7,0.2,2.4,35.6,412.0,05.3";

class CsvLogs : public ::testing::Test {
 protected:
  CsvLogs() { testsupport::fillAutumnMinute(world.record); }
  CsvLogResult write(const LogCall& call, bool solarSoil = false) {
    return logfilecsv(world.record, call, world.options, solarSoil, {world.mainSettings, world.uploadStore},
                      world.sinks);
  }
  // Data lines of a log (its header not counted); -1 when it does not exist.
  int dataLines(const std::string& name) const {
    if (!world.exists(name)) return -1;
    const std::string text = world.logFile(name);
    return static_cast<int>(std::count(text.begin(), text.end(), '\n')) - 1;
  }
  std::string firstLine(const std::string& name) const {
    const std::string text = world.logFile(name);
    return text.substr(0, text.find("\r\n"));
  }
  testsupport::LogWorld world;
  const std::map<std::string, std::string> headers = testsupport::goldenHeaders();
};

TEST_F(CsvLogs, TheThinnedCopiesFollowTheMinute) {
  write(world.at(2026, 11, 14, 10, 25));
  EXPECT_EQ(dataLines("112026lgcsv.csv"), 1);
  EXPECT_EQ(dataLines("dailylogcsv.csv"), 1);
  EXPECT_EQ(dataLines("indoorlogcsv.csv"), 1);
  EXPECT_EQ(dataLines("112026lgcsv10.csv"), -1);
  EXPECT_EQ(dataLines("112026lgcsv30.csv"), -1);
  EXPECT_EQ(dataLines("112026lgcsv60.csv"), -1);

  write(world.at(2026, 11, 14, 10, 30));
  EXPECT_EQ(dataLines("112026lgcsv10.csv"), 1);
  EXPECT_EQ(dataLines("112026lgcsv30.csv"), 1);
  EXPECT_EQ(dataLines("112026lgcsv60.csv"), -1);

  write(world.at(2026, 11, 14, 11, 0));
  EXPECT_EQ(dataLines("112026lgcsv.csv"), 3);
  EXPECT_EQ(dataLines("112026lgcsv10.csv"), 2);
  EXPECT_EQ(dataLines("112026lgcsv30.csv"), 2);
  EXPECT_EQ(dataLines("112026lgcsv60.csv"), 1);
  EXPECT_EQ(dataLines("dailylogcsv.csv"), 3);
  EXPECT_EQ(dataLines("112026vantagelogcsv.csv"), -1);  // no solar and soil logging
}

TEST_F(CsvLogs, EveryFileStartsWithItsHeaderExactly) {
  write(world.at(2026, 11, 14, 11, 0), true);
  for (const char* suffix :
       {"lgcsv.csv", "lgcsv10.csv", "lgcsv30.csv", "lgcsv60.csv", "vantagelogcsv.csv", "growlogcsv.csv"})
    EXPECT_EQ(firstLine(std::string("112026") + suffix), headers.at(suffix)) << suffix;
  EXPECT_EQ(firstLine("dailylogcsv.csv"), headers.at("dailylogcsv.csv"));
  EXPECT_EQ(firstLine("indoorlogcsv.csv"), headers.at("indoorlogcsv.csv"));
  EXPECT_TRUE(headers.at("dailylogcsv.csv").ends_with(", rain last hour"));
  EXPECT_TRUE(headers.at("indoorlogcsv.csv").ends_with(", rainlasthour"));
}

TEST_F(CsvLogs, AMissingDailyLogIsRecreatedWithItsHeader) {
  write(world.at(2026, 11, 14, 9, 4));
  std::filesystem::remove(world.dir / "logs" / "dailylogcsv.csv");
  LogCall call = world.at(2026, 11, 14, 9, 5);
  call.day.rainLastHourMm = 1.25;
  write(call);
  EXPECT_EQ(world.logFile("dailylogcsv.csv"),
            headers.at("dailylogcsv.csv") + "\r\n" + kAutumnCsv + ",1.3\r\n");
  EXPECT_EQ(dataLines("112026lgcsv.csv"), 2);
}

TEST_F(CsvLogs, HandWorkedLines) {
  world.record.intemp = 21.0;
  world.record.inhum = 45;
  world.record.solar = 523.4;
  world.record.uv = 4.5;
  world.record.dailyet = 1.234;
  world.record.soilmoisture[1] = 12;
  world.record.leafwetness[1] = 3;
  LogCall call = world.at(2026, 11, 14, 9, 5);
  call.day.rainLastHourMm = 1.25;
  call.day.windRunNauticalMiles = 86.44;
  call.day.solarEnergy = 2.5;
  call.day.degreeDaysC = 10.0;
  EXPECT_TRUE(write(call, true).written);

  auto dataLine = [this](const std::string& file) {
    const std::string text = world.logFile(file);
    const auto start = text.find("\r\n") + 2;
    return text.substr(start);
  };
  EXPECT_EQ(dataLine("112026lgcsv.csv"), std::string(kAutumnCsv) + "\r\n");
  EXPECT_EQ(dataLine("indoorlogcsv.csv"),
            "14,11,2026,9,5,21.0,45,08.6,1013.3,3.1,12.4,7,0.2,2.4,35.6,412.0,25.1,1.3\r\n");
  EXPECT_EQ(dataLine("112026vantagelogcsv.csv"), "14,11,2026,9,5,523,4.5,1.23,12,3\r\n");
  EXPECT_EQ(dataLine("112026growlogcsv.csv"), "14,11,2026,9,5,523,86.4,2.5,1.23,10.0\r\n");

  world.options.units = UnitSystem::usa;
  world.options.logsFolder = world.dir / "us";
  std::filesystem::create_directory(world.options.logsFolder);
  write(call, true);
  const std::string us = readWholeFile(world.dir / "us" / "dailylogcsv.csv").value_or("");
  EXPECT_NE(
      us.find("\r\n14,11,2026,9,5,41.5,65,30.6,29.921,3.6,14.3,7,0.008,0.094,1.402,16.220,41.5,0.049\r\n"),
      std::string::npos)
      << us;
}

TEST_F(CsvLogs, TheNewMonthStartsAtMidnightOrWithTheNineAmDayAtTen) {
  write(world.at(2026, 12, 1, 0, 1));
  EXPECT_EQ(world.logFile("122026lgcsv.csv").substr(0, headers.at("lgcsv.csv").size() + 2),
            headers.at("lgcsv.csv") + "\r\n");

  world.options.nineAmDay = true;
  write(world.at(2027, 1, 1, 5, 0));
  EXPECT_FALSE(world.exists("12027lgcsv.csv"));
  EXPECT_EQ(dataLines("122026lgcsv.csv"), 2);  // the early morning still belongs to December
  write(world.at(2027, 1, 1, 10, 0));
  EXPECT_EQ(dataLines("12027lgcsv.csv"), 1);
  EXPECT_EQ(firstLine("12027lgcsv.csv"), headers.at("lgcsv.csv"));
}

TEST_F(CsvLogs, TheTenMinuteLogIsCopiedForUploadAt2350) {
  world.mainSettings.WriteString("DDE send", "ftp log monthly", "yes");
  EXPECT_FALSE(write(world.at(2026, 11, 14, 23, 40)).doupload);
  const CsvLogResult at2350 = write(world.at(2026, 11, 14, 23, 50));
  EXPECT_TRUE(at2350.doupload);
  const std::string tenMinutes = world.logFile("112026lgcsv10.csv");
  EXPECT_EQ(dataLines("112026lgcsv10.csv"), 2);  // the 23:50 line is in the copy
  EXPECT_EQ(world.logFile("112026lgcsv10ftp.csv"), tenMinutes);

  const std::string local = (world.dir / "logs" / "112026lgcsv10ftp.csv").string();
  std::vector<std::string> keys;
  world.uploadStore.ReadSection("Files", keys);
  EXPECT_EQ(keys, std::vector<std::string>{local});
  EXPECT_EQ(world.uploadStore.ReadString("Files", local), " ");
  world.uploadStore.ReadSection("Remote Files", keys);
  EXPECT_EQ(keys, std::vector<std::string>{"112026lgcsv10ftp.csv"});
  EXPECT_EQ(world.uploadStore.ReadString("Remote Files", "112026lgcsv10ftp.csv"), " ");

  EXPECT_FALSE(write(world.at(2026, 11, 14, 23, 51)).doupload);
}

TEST_F(CsvLogs, NoUploadCopyWithoutTheSwitch) {
  world.mainSettings.WriteString("DDE send", "ftp log monthly", "no");
  EXPECT_FALSE(write(world.at(2026, 11, 14, 23, 50)).doupload);
  EXPECT_FALSE(world.exists("112026lgcsv10ftp.csv"));
  EXPECT_EQ(world.uploadStore.size(), 0u);
}

TEST_F(CsvLogs, AFailedCopyIsNotQueued) {
  world.mainSettings.WriteString("DDE send", "ftp log monthly", "yes");
  std::filesystem::create_directory(world.dir / "logs" / "112026lgcsv10ftp.csv");  // cannot be replaced
  EXPECT_FALSE(write(world.at(2026, 11, 14, 23, 50)).doupload);
  EXPECT_TRUE(world.status.failing);
  EXPECT_EQ(world.uploadStore.size(), 0u);
  EXPECT_NE(world.errorLogText().find("112026lgcsv10ftp.csv"), std::string::npos);
}

}  // namespace
}  // namespace nimbrel
