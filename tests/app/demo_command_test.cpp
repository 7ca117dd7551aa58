#include "app/demo_command.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "app/demo_summary.h"
#include "app/status_line.h"
#include "support/demo_folder.h"
#include "support/temp_folder.h"

namespace nimbrel {
namespace {

using testsupport::fileText;
using testsupport::expectSettings;
using testsupport::runFastDemo;
using testsupport::writeSettings;

bool contains(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

TEST(DemoFolder, FreshFolderGetsTheSimulatedStationAndAnExistingDemoFolderOnlyItsNewPort) {
  testsupport::TempFolder dir;
  ManualClock clock(parseLocalTime("2026-11-23 10:00:00").value());
  const auto folder = dir / "demo";
  ASSERT_EQ(prepareDemoFolder(folder, std::uint16_t{40001}, clock), "");
  expectSettings(folder, {{"Weather Station Type", "Name", "DAVIS VANTAGE PRO"},
                          {"Comport", "use tcpip vp ip", "127.0.0.1"}, {"Comport", "use tcpip vp port", "40001"}});

  writeSettings(folder, {{"Rain storage", "today", "4.2"}});  // what the program kept must survive the next run
  ASSERT_EQ(prepareDemoFolder(folder, std::uint16_t{40002}, clock), "");
  expectSettings(folder, {{"Comport", "use tcpip vp port", "40002"}, {"Rain storage", "today", "4.2"}});
}

TEST(DemoFolder, RefusesTheFolderOfAnotherStationAndLeavesItUntouched) {
  testsupport::TempFolder dir;
  ManualClock clock(parseLocalTime("2026-11-23 10:00:00").value());
  const std::string settings = "[Weather Station Type]\r\nName=DAVIS VANTAGE PRO\r\n[Comport]\r\nnumber=3\r\n";
  writeFileAtomically(dir / "NIMBREL.INI", settings);
  const std::string problem = prepareDemoFolder(dir.path(), std::uint16_t{40001}, clock);
  for (const char* part : {"holds the settings of another station", "--dir"})
    EXPECT_TRUE(contains(problem, part)) << problem;
  EXPECT_EQ(fileText(dir / "NIMBREL.INI"), settings);
}

TEST(DemoSummary, NamesWhatEachFileHolds) {
  EXPECT_TRUE(contains(describeFileName("112026lg.txt"), "monthly log"));
  EXPECT_TRUE(contains(describeFileName("12026lgcsv60.csv"), "every hour"));
  for (const char* described : {"dailylog.txt", "clientraw.txt"}) EXPECT_NE(describeFileName(described), "") << described;
  // A monthly name without its month and year, or with too few digits.
  for (const char* unknown : {"lg.txt", "1234lg.txt", "112026dailylog.txt", "notes.txt"})
    EXPECT_EQ(describeFileName(unknown), "") << unknown;
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
  for (const char* part : {"waiting for the station", "no files yet"})
    EXPECT_TRUE(contains(formatStatusLine(facts), part)) << part;

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

// The "HH:MM" of every line of a monthly log after its header.
std::vector<std::string> loggedMinutes(const std::filesystem::path& log) {
  std::vector<std::string> minutes;
  std::istringstream lines(fileText(log));
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
  const auto run = runFastDemo(folder, parseLocalTime("2026-11-23 10:00:00"), 3600);
  ASSERT_EQ(run.status, 0);
  // The start's own minute too: the console's first reading comes within it.
  EXPECT_EQ(loggedMinutes(folder / "logfiles" / "112026lg.txt"), minutesFrom(10, 0, 61));
  EXPECT_TRUE(contains(fileText(folder / "webfiles" / "clientraw.txt"), "Demo_Station"));
  for (const char* part : {"logfiles/112026lg.txt", "the monthly log", "webfiles/clientraw.txt"})
    EXPECT_TRUE(contains(run.printed, part)) << part << " not in\n" << run.printed;
}

// The same start, seed, settings and span give the same files, byte for
// byte, however busy the machine is.
TEST(Demo, TwoSimulatedRunsWriteIdenticalFiles) {
  testsupport::TempFolder dir;
  const auto start = parseLocalTime("2026-12-31 22:30:00");
  // Both runs in the same place: the logs name their folder.
  ASSERT_EQ(runFastDemo(dir / "demo", start, 3 * 3600).status, 0);
  std::filesystem::rename(dir / "demo", dir / "a");
  ASSERT_EQ(runFastDemo(dir / "demo", start, 3 * 3600).status, 0);
  std::filesystem::rename(dir / "demo", dir / "b");
  std::size_t compared = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(dir / "a")) {
    if (!entry.is_regular_file()) continue;
    const auto relative = std::filesystem::relative(entry.path(), dir / "a");
    SCOPED_TRACE(relative.string());
    ASSERT_TRUE(std::filesystem::exists(dir / "b" / relative));
    EXPECT_EQ(fileText(entry.path()), fileText(dir / "b" / relative));
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
  ASSERT_EQ(runFastDemo(folder, parseLocalTime("2026-11-23 10:00:00"), 1800).status, 0);
  const auto second = runFastDemo(folder, std::nullopt, 1800);
  ASSERT_EQ(second.status, 0);
  EXPECT_TRUE(contains(second.printed, "starts at 2026-11-23 10:30:00")) << second.printed;
  EXPECT_EQ(loggedMinutes(folder / "logfiles" / "112026lg.txt"), minutesFrom(10, 0, 61));

  // A program killed after logging a minute but before saving its settings
  // goes on from an earlier time: the minutes logged already are not logged again.
  writeSettings(folder, {{"Demo", "program time", "2026-11-23 10:58:30"}});
  ASSERT_EQ(runFastDemo(folder, std::nullopt, 600).status, 0);
  EXPECT_EQ(loggedMinutes(folder / "logfiles" / "112026lg.txt"), minutesFrom(10, 0, 69));
}

}  // namespace
}  // namespace nimbrel
