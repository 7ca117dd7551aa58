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
  // Data lines of each log (its header not counted); -1 for one that does not exist.
  std::vector<int> dataLines(std::initializer_list<const char*> names) const {
    std::vector<int> counts;
    for (const char* name : names) {
      const std::string text = world.logFile(name);
      counts.push_back(world.exists(name) ? static_cast<int>(std::count(text.begin(), text.end(), '\n')) - 1 : -1);
    }
    return counts;
  }
  std::vector<std::string> uploadKeys(const char* section) const {
    std::vector<std::string> keys;
    world.uploadStore.ReadSection(section, keys);
    return keys;
  }
  testsupport::LogWorld world;
  const std::map<std::string, std::string> headers = testsupport::goldenHeaders();
};

TEST_F(CsvLogs, TheThinnedCopiesFollowTheMinute) {
  const auto everyLog = {"112026lgcsv.csv",   "112026lgcsv10.csv", "112026lgcsv30.csv",
                         "112026lgcsv60.csv", "dailylogcsv.csv",   "indoorlogcsv.csv"};
  write(world.at(2026, 11, 14, 10, 25));
  EXPECT_EQ(dataLines(everyLog), (std::vector<int>{1, -1, -1, -1, 1, 1}));
  write(world.at(2026, 11, 14, 10, 30));
  EXPECT_EQ(dataLines(everyLog), (std::vector<int>{2, 1, 1, -1, 2, 2}));
  write(world.at(2026, 11, 14, 11, 0));
  EXPECT_EQ(dataLines(everyLog), (std::vector<int>{3, 2, 2, 1, 3, 3}));
  EXPECT_FALSE(world.exists("112026vantagelogcsv.csv"));  // no solar and soil logging
}

TEST_F(CsvLogs, EveryFileStartsWithItsHeaderExactly) {
  write(world.at(2026, 11, 14, 11, 0), true);
  for (const char* suffix :
       {"lgcsv.csv", "lgcsv10.csv", "lgcsv30.csv", "lgcsv60.csv", "vantagelogcsv.csv", "growlogcsv.csv"})
    EXPECT_EQ(world.firstLine(std::string("112026") + suffix), headers.at(suffix)) << suffix;
  for (const char* file : {"dailylogcsv.csv", "indoorlogcsv.csv"})
    EXPECT_EQ(world.firstLine(file), headers.at(file)) << file;
  EXPECT_TRUE(headers.at("dailylogcsv.csv").ends_with(", rain last hour"));
  EXPECT_TRUE(headers.at("indoorlogcsv.csv").ends_with(", rainlasthour"));
}

TEST_F(CsvLogs, AMissingDailyLogIsRecreatedWithItsHeader) {
  write(world.at(2026, 11, 14, 9, 4));
  std::filesystem::remove(world.dir / "logs" / "dailylogcsv.csv");
  write(world.at(2026, 11, 14, 9, 5, {.rainLastHourMm = 1.25}));
  EXPECT_EQ(world.logFile("dailylogcsv.csv"), headers.at("dailylogcsv.csv") + "\r\n" + kAutumnCsv + ",1.3\r\n");
  EXPECT_EQ(dataLines({"112026lgcsv.csv"}), std::vector<int>{2});
}

TEST_F(CsvLogs, HandWorkedLines) {
  world.record.intemp = 21.0;
  world.record.inhum = 45;
  world.record.solar = 523.4;
  world.record.uv = 4.5;
  world.record.dailyet = 1.234;
  world.record.soilmoisture[1] = 12;
  world.record.leafwetness[1] = 3;
  const LogCall call = world.at(
      2026, 11, 14, 9, 5, {.rainLastHourMm = 1.25, .windRunNauticalMiles = 86.44, .solarEnergy = 2.5, .degreeDaysC = 10});
  EXPECT_TRUE(write(call, true).written);

  EXPECT_EQ(world.dataLine("112026lgcsv.csv"), kAutumnCsv);
  EXPECT_EQ(world.dataLine("indoorlogcsv.csv"),
            "14,11,2026,9,5,21.0,45,08.6,1013.3,3.1,12.4,7,0.2,2.4,35.6,412.0,25.1,1.3");
  EXPECT_EQ(world.dataLine("112026vantagelogcsv.csv"), "14,11,2026,9,5,523,4.5,1.23,12,3");
  EXPECT_EQ(world.dataLine("112026growlogcsv.csv"), "14,11,2026,9,5,523,86.4,2.5,1.23,10.0");

  world.options.units = UnitSystem::usa;
  world.options.logsFolder = world.dir / "logs" / "us";
  std::filesystem::create_directory(world.options.logsFolder);
  write(call, true);
  EXPECT_EQ(world.dataLine("us/dailylogcsv.csv"),
            "14,11,2026,9,5,41.5,65,30.6,29.921,3.6,14.3,7,0.008,0.094,1.402,16.220,41.5,0.049");
}

TEST_F(CsvLogs, TheNewMonthStartsAtMidnightOrWithTheNineAmDayAtTen) {
  write(world.at(2026, 12, 1, 0, 1));
  EXPECT_EQ(world.firstLine("122026lgcsv.csv"), headers.at("lgcsv.csv"));

  world.options.nineAmDay = true;
  write(world.at(2027, 1, 1, 5, 0));
  EXPECT_FALSE(world.exists("12027lgcsv.csv"));
  EXPECT_EQ(dataLines({"122026lgcsv.csv"}), std::vector<int>{2});  // the early morning still belongs to December
  write(world.at(2027, 1, 1, 10, 0));
  EXPECT_EQ(dataLines({"12027lgcsv.csv"}), std::vector<int>{1});
  EXPECT_EQ(world.firstLine("12027lgcsv.csv"), headers.at("lgcsv.csv"));
}

TEST_F(CsvLogs, TheTenMinuteLogIsCopiedForUploadAt2350OnlyWithTheSwitch) {
  world.mainSettings.WriteString("DDE send", "ftp log monthly", "no");
  EXPECT_FALSE(write(world.at(2026, 11, 13, 23, 50)).doupload);
  EXPECT_FALSE(world.exists("112026lgcsv10ftp.csv"));
  EXPECT_EQ(world.uploadStore.size(), 0u);

  world.mainSettings.WriteString("DDE send", "ftp log monthly", "yes");
  EXPECT_FALSE(write(world.at(2026, 11, 14, 23, 40)).doupload);
  EXPECT_TRUE(write(world.at(2026, 11, 14, 23, 50)).doupload);
  EXPECT_EQ(dataLines({"112026lgcsv10.csv"}), std::vector<int>{3});  // the 23:50 line is in the copy
  EXPECT_EQ(world.logFile("112026lgcsv10ftp.csv"), world.logFile("112026lgcsv10.csv"));

  const std::string local = (world.dir / "logs" / "112026lgcsv10ftp.csv").string();
  EXPECT_EQ(uploadKeys("Files"), std::vector<std::string>{local});
  EXPECT_EQ(world.uploadStore.ReadString("Files", local), " ");
  EXPECT_EQ(uploadKeys("Remote Files"), std::vector<std::string>{"112026lgcsv10ftp.csv"});
  EXPECT_EQ(world.uploadStore.ReadString("Remote Files", "112026lgcsv10ftp.csv"), " ");
  EXPECT_FALSE(write(world.at(2026, 11, 14, 23, 51)).doupload);
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
