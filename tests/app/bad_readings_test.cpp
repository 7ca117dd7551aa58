// What an owner finds in the monthly log, the settings and the error log when
// the console sends what is no reading: its "no sensor" marks, words out of
// range with a good CRC, a gust spike, or nothing at all for a while; and the
// minute's rain across a restart. The whole program runs against the
// simulated console in simulated time, the console changing its packets as
// each test says.

#include <gtest/gtest.h>

#include <chrono>
#include <sstream>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "support/demo_folder.h"
#include "support/temp_folder.h"

namespace nimbrel {
namespace {

using namespace std::chrono_literals;
using testsupport::fileText;
using testsupport::occurrences;
using Packet = std::span<std::uint8_t>;

const SystemTime kStart = parseLocalTime("2026-11-23 10:00:00").value();

void putWord(Packet packet, std::size_t offset, std::uint16_t value) {
  packet[offset] = static_cast<std::uint8_t>(value & 0xFF);
  packet[offset + 1] = static_cast<std::uint8_t>(value >> 8);
}

// The demo's folder, with settings written before the program starts.
class BadReadings : public ::testing::Test {
 protected:
  void settings(std::initializer_list<testsupport::StoredEntry> entries) {
    ManualClock clock(kStart);
    ASSERT_EQ(prepareDemoFolder(folder, std::nullopt, clock), "");
    testsupport::writeSettings(folder, entries);
  }
  std::string setting(std::string_view section, std::string_view key) const {
    return testsupport::readSetting(folder, section, key);
  }

  // Runs the program from `start` (or where the last run stopped) for `seconds`.
  void run(std::optional<SystemTime> start, double seconds, sim::PacketRewrite rewrite, DemoFaults faults = {}) {
    const auto run = testsupport::runFastDemo(folder, start, seconds, std::move(rewrite), faults);
    ASSERT_EQ(run.status, 0) << run.printed;
  }

  // The fields of every monthly-log line after the header, by "HH:MM".
  std::vector<std::pair<std::string, std::vector<std::string>>> logLines() const {
    std::vector<std::pair<std::string, std::vector<std::string>>> lines;
    std::istringstream text(fileText(folder / "logfiles" / "112026lg.txt"));
    std::string line;
    std::getline(text, line);
    while (std::getline(text, line)) {
      std::istringstream words(line);
      std::vector<std::string> fields;
      for (std::string word; words >> word;) fields.push_back(word);
      if (fields.size() != 17) ADD_FAILURE() << "not a log line: " << line;
      else lines.emplace_back(fmt::format("{:0>2}:{:0>2}", fields[3], fields[4]), fields);
    }
    return lines;
  }
  std::string errorLog() const { return fileText(folder / "programerrorlog.txt"); }

  testsupport::TempFolder dir;
  std::filesystem::path folder = dir / "demo";
};

// Log columns.
constexpr std::size_t kTemperature = 5, kDewPoint = 7, kBarometer = 8, kWind = 9, kGust = 10, kDirection = 11,
                      kRainLastMinute = 12, kHeatIndex = 16;

double number(const std::string& text) { return std::stod(text); }

TEST_F(BadReadings, AConsoleWithoutOutsideSensorLogsAndKeepsNoRecordsFromItsMark) {
  // Left by an earlier run that took the mark for -1838.3 degrees.
  settings({{"Record low temperature", "values", "-18383 2026 11 20 8 0 "},
            {"Record low windchill2", "values", "-22648 2026 11 20 8 0 "},
            {"Record low dew3", "values", "-21560 2026 11 20 8 0 "},
            {"Record high gust", "values", "800 2026 11 20 8 0 "}});  // a plausible record stays
  run(kStart, 600, [](SystemTime, Packet packet) { putWord(packet, 12, 0x7FFF); });

  const auto lines = logLines();
  ASSERT_EQ(lines.size(), 11u);
  for (const auto& [minute, fields] : lines)
    for (std::size_t column : {kTemperature, kDewPoint, kHeatIndex}) {
      SCOPED_TRACE(minute + " column " + std::to_string(column));
      EXPECT_GE(number(fields[column]), -60);
      EXPECT_LE(number(fields[column]), 60);
    }

  const std::string errors = errorLog();
  for (const char* reported : {"[Record low temperature] values = -1838.3 lies outside -60 to 60",
                               "[Record low windchill2] values = -2264.8 lies outside -110 to 110",
                               "[Record low dew3] values = -2156.0 lies outside -110 to 110"})
    EXPECT_NE(errors.find(reported), std::string::npos) << reported << " not in\n" << errors;
  EXPECT_EQ(occurrences(errors, "is not used as the record to beat"), 3u) << errors;
  for (const char* section : {"Record low temperature", "Record low windchill2", "Record low dew3"}) {
    const std::string stored = setting(section, "values");
    SCOPED_TRACE(std::string(section) + " = " + stored);
    EXPECT_GE(number(stored) / 10, -110);
  }
  EXPECT_EQ(setting("Record high gust", "values"), "800 2026 11 20 8 0 ");
}

// Each bad word is sent for three minutes; otherwise the direction is 200
// degrees and the barometer 30.000 inHg (1015.9 hPa). A word that is no
// reading leaves the field as it was, so every line shows those two values.
TEST_F(BadReadings, WordsOutOfRangeWithAGoodCrcNeverReachTheLog) {
  struct BadWord {
    std::size_t offset;
    std::uint16_t value;
  };
  static constexpr BadWord kBadWords[] = {
      {16, 0x7FFF},  // direction 32767
      {16, 32950},   {16, 361},
      {16, 0},       // the console's "no wind data"
      {7, 35120},    // 1189.3 hPa
      {7, 49670},    // 1682.0 hPa
      {7, 32500},    // 1100.6 hPa, just above "max baro"
  };
  run(kStart, 40 * 60, [](SystemTime due, Packet packet) {
    putWord(packet, 16, 200);
    putWord(packet, 7, 30000);
    const auto window = (due - kStart) / 5min;  // from 10:05 a bad word every five minutes
    const bool inWindow = due - kStart - window * 5min < 3min;
    if (window >= 1 && window <= std::ssize(kBadWords) && inWindow) {
      const BadWord& bad = kBadWords[window - 1];
      putWord(packet, bad.offset, bad.value);
    }
  });

  const auto lines = logLines();
  ASSERT_EQ(lines.size(), 41u);
  for (const auto& [minute, fields] : lines) {
    EXPECT_EQ(fields[kDirection], "200") << minute;
    EXPECT_EQ(fields[kBarometer], "1015.9") << minute;
  }
}

// A steady 5 mph with one 40 mph sample: the spike filter refuses it, and the
// minute log's wind and gust are those it kept.
TEST_F(BadReadings, AGustTheSpikeFilterRefusedIsNotLogged) {
  run(kStart, 15 * 60, [](SystemTime due, Packet packet) {
    const bool spike = due >= kStart + 10min + 20s && due < kStart + 10min + 22s;
    packet[14] = spike ? 40 : 5;
  });

  EXPECT_NE(fileText(folder / "logfiles" / "stationlog.txt").find("inc gust spike count"), std::string::npos);
  const auto lines = logLines();
  ASSERT_EQ(lines.size(), 16u);
  // The first minute's samples, and a few of the second's, are from before the first reading.
  for (std::size_t i = 2; i < lines.size(); ++i) {
    const auto& [minute, fields] = lines[i];
    EXPECT_EQ(fields[kWind], "4.3") << minute;
    EXPECT_EQ(fields[kGust], "4.3") << minute;
  }
}

// The console's year rain stays at 50 clicks (12.7 mm) but for one rise of two
// clicks at 10:15:30: the minute's rain is 0 on every line but 10:16, the
// first lines after the start and after the restart (at 10:10:30) included.
TEST_F(BadReadings, TheMinutesRainAfterARestartIsThatMinutesRain) {
  const auto yearRain = [](SystemTime due, Packet packet) {
    putWord(packet, 54, due < kStart + 15min + 30s ? 50 : 52);
  };
  run(kStart, 630, yearRain);
  run(std::nullopt, 570, yearRain);

  const auto lines = logLines();
  ASSERT_EQ(lines.size(), 21u);
  for (const auto& [minute, fields] : lines)
    EXPECT_EQ(fields[kRainLastMinute], minute == "10:16" ? "0.5" : "0.0") << minute;
}

// The cable is cut from 10:20 to 10:30. No line repeats the last readings as
// new ones once the watchdog has found the station silent (150 s without
// data), and the error log says once when the logs stop and once when they
// go on.
TEST_F(BadReadings, NoLinesWhileTheStationIsSilent) {
  run(kStart, 40 * 60, {}, DemoFaults{0, 20min, 10min});

  std::vector<std::string> minutes;
  for (const auto& [minute, fields] : logLines()) minutes.push_back(minute);
  std::vector<std::string> expected;
  for (int m = 0; m <= 40; ++m)
    if (m <= 22 || m >= 31) expected.push_back(fmt::format("10:{:02}", m));
  EXPECT_EQ(minutes, expected);
  const std::string errors = errorLog();
  EXPECT_EQ(occurrences(errors, "the minutes are not logged until it sends again"), 1u) << errors;
  EXPECT_EQ(occurrences(errors, "the station sends again: logging goes on from 10:31"), 1u) << errors;
}

}  // namespace
}  // namespace nimbrel
