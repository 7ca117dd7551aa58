#include "app/demo_command.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "app/demo_summary.h"
#include "app/status_line.h"
#include "core/ini_store.h"
#include "support/temp_folder.h"

namespace nimbrel {
namespace {

std::string readText(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

std::string settingOf(const std::filesystem::path& folder, std::string_view section, std::string_view key) {
  ManualClock clock(parseLocalTime("2026-11-23 10:00:00").value());
  TextLog log({}, clock);
  IniStore store(folder / "NIMBREL.INI", log);
  return store.ReadString(section, key, "");
}

TEST(DemoFolder, FreshFolderGetsTheSimulatedStationAndAnExistingDemoFolderOnlyItsNewPort) {
  testsupport::TempFolder dir;
  ManualClock clock(parseLocalTime("2026-11-23 10:00:00").value());
  const auto folder = dir / "demo";
  ASSERT_EQ(prepareDemoFolder(folder, 40001, clock), "");
  EXPECT_EQ(settingOf(folder, "Weather Station Type", "Name"), "DAVIS VANTAGE PRO");
  EXPECT_EQ(settingOf(folder, "Comport", "use tcpip vp ip"), "127.0.0.1");
  EXPECT_EQ(settingOf(folder, "Comport", "use tcpip vp port"), "40001");

  {  // what the program kept there must survive the next demo run
    TextLog log({}, clock);
    IniStore store(folder / "NIMBREL.INI", log);
    store.WriteString("Rain storage", "today", "4.2");
    ASSERT_TRUE(store.flush());
  }
  ASSERT_EQ(prepareDemoFolder(folder, 40002, clock), "");
  EXPECT_EQ(settingOf(folder, "Comport", "use tcpip vp port"), "40002");
  EXPECT_EQ(settingOf(folder, "Rain storage", "today"), "4.2");
}

TEST(DemoFolder, RefusesTheFolderOfAnotherStationAndLeavesItUntouched) {
  testsupport::TempFolder dir;
  ManualClock clock(parseLocalTime("2026-11-23 10:00:00").value());
  const std::string settings = "[Weather Station Type]\r\nName=DAVIS VANTAGE PRO\r\n[Comport]\r\nnumber=3\r\n";
  std::ofstream(dir / "NIMBREL.INI", std::ios::binary) << settings;
  const std::string problem = prepareDemoFolder(dir.path(), 40001, clock);
  EXPECT_NE(problem.find("holds the settings of another station"), std::string::npos) << problem;
  EXPECT_NE(problem.find("--dir"), std::string::npos) << problem;
  EXPECT_EQ(readText(dir / "NIMBREL.INI"), settings);
}

TEST(DemoSummary, NamesWhatEachFileHolds) {
  EXPECT_NE(describeFileName("112026lg.txt").find("monthly log"), std::string_view::npos);
  EXPECT_NE(describeFileName("12026lgcsv60.csv").find("every hour"), std::string_view::npos);
  EXPECT_EQ(describeFileName("lg.txt"), "");        // a monthly name without its month and year
  EXPECT_EQ(describeFileName("1234lg.txt"), "");    // ... or with too few digits
  EXPECT_EQ(describeFileName("112026dailylog.txt"), "");
  EXPECT_NE(describeFileName("dailylog.txt"), "");
  EXPECT_NE(describeFileName("clientraw.txt"), "");
  EXPECT_EQ(describeFileName("notes.txt"), "");
}

TEST(StatusLine, ShowsReadingsCountsAndFilesAndFitsTheTerminal) {
  LiveRecord record;
  record.outtemp = -3.25;
  record.outhum = 87;
  record.windspeed = 5.1;
  record.windgust = 9.04;
  record.barometer = 1013.25;
  record.dailyrain = 0.4;
  StatusFacts facts;
  facts.now = toLocalTime(parseLocalTime("2026-11-23 10:00:05").value());
  facts.record = &record;
  EXPECT_NE(formatStatusLine(facts).find("waiting for the station"), std::string::npos);
  EXPECT_NE(formatStatusLine(facts).find("no files yet"), std::string::npos);

  facts.haveData = true;
  facts.packetsDecoded = 120;
  facts.packetsRejected = 2;
  facts.lastLogFile = "112026lg.txt";
  facts.clientrawWrites = 3;
  const std::string line = formatStatusLine(facts);
  EXPECT_EQ(line,
            "2026-11-23 10:00:05  -3.3°C 87%  wind 5.1 gust 9.0 kn  1013.3 hPa  rain 0.4 mm  "
            "packets 120 ok 2 bad  wrote 112026lg.txt clientraw.txt");

  // "°" is two bytes but one column: cutting after it must not split it.
  EXPECT_EQ(fitToColumns(line, 26), "2026-11-23 10:00:05  -3.3°");
  EXPECT_EQ(fitToColumns("abc", 0), "abc");
  EXPECT_EQ(fitToColumns("abc", 3), "abc");
}

TEST(Demo, AnHourOfProgramTimeWritesTheLogsAndListsThem) {
  testsupport::TempFolder dir;
  DemoOptions options;
  options.dir = dir / "demo";
  options.start = parseLocalTime("2026-11-23 10:00:00");
  options.speed = 1800;
  options.runForSeconds = 3600;
  std::FILE* out = std::tmpfile();
  ASSERT_EQ(runDemo(options, out), 0);
  std::rewind(out);
  std::string printed(1 << 16, '\0');
  printed.resize(std::fread(printed.data(), 1, printed.size(), out));
  std::fclose(out);

  const std::string log = readText(options.dir / "logfiles" / "112026lg.txt");
  std::size_t lines = 0;
  for (char c : log) lines += c == '\n';
  // The header and a line for each minute from when the data was complete.
  EXPECT_GE(lines, 55u);
  EXPECT_LE(lines, 61u);
  EXPECT_NE(readText(options.dir / "webfiles" / "clientraw.txt").find("Demo_Station"), std::string::npos);
  EXPECT_NE(printed.find("logfiles/112026lg.txt"), std::string::npos) << printed;
  EXPECT_NE(printed.find("the monthly log"), std::string::npos);
  EXPECT_NE(printed.find("webfiles/clientraw.txt"), std::string::npos);
}

}  // namespace
}  // namespace nimbrel
