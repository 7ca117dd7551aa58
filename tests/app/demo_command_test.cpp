#include "app/demo_command.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

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
  ASSERT_EQ(prepareDemoFolder(folder, std::uint16_t{40001}, clock), "");
  EXPECT_EQ(settingOf(folder, "Weather Station Type", "Name"), "DAVIS VANTAGE PRO");
  EXPECT_EQ(settingOf(folder, "Comport", "use tcpip vp ip"), "127.0.0.1");
  EXPECT_EQ(settingOf(folder, "Comport", "use tcpip vp port"), "40001");

  {  // what the program kept there must survive the next demo run
    TextLog log({}, clock);
    IniStore store(folder / "NIMBREL.INI", log);
    store.WriteString("Rain storage", "today", "4.2");
    ASSERT_TRUE(store.flush());
  }
  ASSERT_EQ(prepareDemoFolder(folder, std::uint16_t{40002}, clock), "");
  EXPECT_EQ(settingOf(folder, "Comport", "use tcpip vp port"), "40002");
  EXPECT_EQ(settingOf(folder, "Rain storage", "today"), "4.2");
}

TEST(DemoFolder, RefusesTheFolderOfAnotherStationAndLeavesItUntouched) {
  testsupport::TempFolder dir;
  ManualClock clock(parseLocalTime("2026-11-23 10:00:00").value());
  const std::string settings = "[Weather Station Type]\r\nName=DAVIS VANTAGE PRO\r\n[Comport]\r\nnumber=3\r\n";
  std::ofstream(dir / "NIMBREL.INI", std::ios::binary) << settings;
  const std::string problem = prepareDemoFolder(dir.path(), std::uint16_t{40001}, clock);
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

// What a demo run printed, and its folder.
struct DemoResult {
  int status = -1;
  std::string printed;
};

DemoResult runDemoIn(const std::filesystem::path& folder, std::optional<SystemTime> start, double runFor,
                     ClockSpeed speed = ClockSpeed::max()) {
  DemoOptions options;
  options.dir = folder;
  options.start = start;
  options.speed = speed;
  options.runForSeconds = runFor;
  std::FILE* out = std::tmpfile();
  DemoResult result;
  result.status = runDemo(options, out);
  std::rewind(out);
  result.printed.resize(1 << 16);
  result.printed.resize(std::fread(result.printed.data(), 1, result.printed.size(), out));
  std::fclose(out);
  return result;
}

// The "HH:MM" of every line of a monthly log after its header.
std::vector<std::string> loggedMinutes(const std::filesystem::path& log) {
  std::vector<std::string> minutes;
  std::istringstream lines(readText(log));
  std::string line;
  std::getline(lines, line);  // the header
  while (std::getline(lines, line)) {
    std::istringstream fields(line);
    int day = 0, month = 0, year = 0, hour = 0, minute = 0;
    fields >> day >> month >> year >> hour >> minute;
    minutes.push_back(fmt::format("{:02}:{:02}", hour, minute));
  }
  return minutes;
}

std::vector<std::string> minutesFrom(int hour, int minute, int count) {
  std::vector<std::string> minutes;
  for (int i = 0; i < count; ++i, ++minute) minutes.push_back(fmt::format("{:02}:{:02}", hour + minute / 60, minute % 60));
  return minutes;
}

TEST(Demo, AnHourOfSimulatedTimeLogsEveryMinuteOnceAndListsTheFiles) {
  testsupport::TempFolder dir;
  const auto folder = dir / "demo";
  const DemoResult run = runDemoIn(folder, parseLocalTime("2026-11-23 10:00:00"), 3600);
  ASSERT_EQ(run.status, 0);
  // The start's own minute too: the console's first reading comes within it.
  EXPECT_EQ(loggedMinutes(folder / "logfiles" / "112026lg.txt"), minutesFrom(10, 0, 61));
  EXPECT_NE(readText(folder / "webfiles" / "clientraw.txt").find("Demo_Station"), std::string::npos);
  EXPECT_NE(run.printed.find("logfiles/112026lg.txt"), std::string::npos) << run.printed;
  EXPECT_NE(run.printed.find("the monthly log"), std::string::npos);
  EXPECT_NE(run.printed.find("webfiles/clientraw.txt"), std::string::npos);
}

// The same start, seed, settings and span give the same files, byte for
// byte, however busy the machine is.
TEST(Demo, TwoSimulatedRunsWriteIdenticalFiles) {
  testsupport::TempFolder dir;
  const auto start = parseLocalTime("2026-12-31 22:30:00");
  // Both runs in the same place: the logs name their folder.
  ASSERT_EQ(runDemoIn(dir / "demo", start, 3 * 3600).status, 0);
  std::filesystem::rename(dir / "demo", dir / "a");
  ASSERT_EQ(runDemoIn(dir / "demo", start, 3 * 3600).status, 0);
  std::filesystem::rename(dir / "demo", dir / "b");
  std::size_t compared = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(dir / "a")) {
    if (!entry.is_regular_file()) continue;
    const auto relative = std::filesystem::relative(entry.path(), dir / "a");
    SCOPED_TRACE(relative.string());
    ASSERT_TRUE(std::filesystem::exists(dir / "b" / relative));
    EXPECT_EQ(readText(entry.path()), readText(dir / "b" / relative));
    ++compared;
  }
  EXPECT_GE(compared, 10u);
  EXPECT_TRUE(std::filesystem::exists(dir / "a" / "logfiles" / "12027lg.txt")) << "the run did not reach January";
}

// A demo started again in its folder goes on where the last one stopped:
// no minute is logged twice or left out.
TEST(Demo, ASecondDemoInTheFolderGoesOnWhereTheFirstStopped) {
  testsupport::TempFolder dir;
  const auto folder = dir / "demo";
  ASSERT_EQ(runDemoIn(folder, parseLocalTime("2026-11-23 10:00:00"), 1800).status, 0);
  const DemoResult second = runDemoIn(folder, std::nullopt, 1800);
  ASSERT_EQ(second.status, 0);
  EXPECT_NE(second.printed.find("starts at 2026-11-23 10:30:00"), std::string::npos) << second.printed;
  EXPECT_EQ(loggedMinutes(folder / "logfiles" / "112026lg.txt"), minutesFrom(10, 0, 61));

  // A program killed after logging a minute but before saving its settings
  // goes on from an earlier time: the minutes logged already are not logged again.
  {
    ManualClock clock(parseLocalTime("2026-11-23 12:00:00").value());
    TextLog log({}, clock);
    IniStore store(folder / "NIMBREL.INI", log);
    store.WriteString("Demo", "program time", "2026-11-23 10:58:30");
    ASSERT_TRUE(store.flush());
  }
  ASSERT_EQ(runDemoIn(folder, std::nullopt, 600).status, 0);
  EXPECT_EQ(loggedMinutes(folder / "logfiles" / "112026lg.txt"), minutesFrom(10, 0, 69));
}

}  // namespace
}  // namespace nimbrel
