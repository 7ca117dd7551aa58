#include "datafiles/clientraw.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <limits>
#include <thread>

#include "core/file_io.h"
#include "core/live_record.h"
#include "core/text_log.h"
#include "core/unit_settings.h"
#include "core/version.h"
#include "datafiles/clientraw_layout.h"
#include "datafiles/clientraw_reader.h"
#include "datafiles/clientraw_settings.h"
#include "datafiles/log_append.h"
#include "processing/statistics/station_statistics.h"
#include "support/memory_settings_store.h"
#include "support/temp_folder.h"

namespace nimbrel {
namespace {

namespace fs = std::filesystem;

class ClientrawTest : public ::testing::Test {
 protected:
  ClientrawTest() : log(dir / "programerrorlog.txt", clock), statistics(record, settings, units, log) {
    fs::create_directory(web);
  }

  ClientrawText build() { return buildClientrawText({record, statistics, now, "My Station"}, options); }
  std::vector<std::string> fields() { return readClientraw(build().line).value().fields(); }
  std::optional<ClientrawText> write() {
    return updateclientrawfilenow(record, statistics, options, web, now, "My Station", {busy, status, log});
  }
  std::string published() const { return readWholeFile(web / "clientraw.txt").value_or("<missing>"); }
  std::string errorLogText() const { return readWholeFile(log.path()).value_or(""); }

  // A reading of a wet, breezy autumn morning, in the record's units.
  void handWorkedReading() {
    record.windspeed = 5.0;
    record.windgust = 12.25;
    record.winddir = 7;
    record.outtemp = -0.5;
    record.outhum = 56;
    record.barometer = 1013.25;
    record.dailyrain = 0.2;
    record.monthlyrain = 45.67;
    record.yearlyrain = 1234.5;
    record.rainrate = 0.1234;
    record.maxrainrate = 1.5;
    record.intemp = 21;
    record.inhum = 40;
    record.soiltemp = 9.95;
    record.forecasticon = 6;
  }

  testsupport::TempFolder dir;
  fs::path web = dir / "web";
  ManualClock clock;
  TextLog log;
  testsupport::MemorySettingsStore settings;
  UnitSettings units;
  LiveRecord record;
  StationStatistics statistics;
  LocalTime now{.year = 2026, .month = 11, .day = 3, .hour = 7, .minute = 5, .second = 0};
  ClientrawOptions options;
  bool busy = false;
  IoStatus status;
};

using Expected = std::vector<std::string>;
Expected firstSixteen(const std::vector<std::string>& fields) { return {fields.begin(), fields.begin() + 16}; }

TEST_F(ClientrawTest, TheFirstSixteenFieldsOfAHandWorkedReading) {
  handWorkedReading();
  EXPECT_EQ(firstSixteen(fields()), (Expected{"12345", "5.0", "12.3", "7", "-0.5", "56", "1013.3", "0.2", "45.7",
                                              "1234.5", "0.123", "1.500", "21.0", "40", "10.0", "6"}));
}

TEST_F(ClientrawTest, TheZeroedRecordOfAStationThatHasNotSpoken) {
  EXPECT_EQ(firstSixteen(fields()), (Expected{"12345", "0.0", "0.0", "0", "0.0", "0", "0.0", "0.0", "0.0", "0.0",
                                              "0.000", "0.000", "0.0", "0", "0.0", "0"}));
}

TEST_F(ClientrawTest, OptionsOfTheFirstFields) {
  record.outtemp = 12.345;
  record.rainrate = 6.0;  // mm per hour, as the Vantage gives it
  record.maxrainrate = 30.0;
  options.temperatureTwoDecimals = true;
  options.rainRatePerHour = true;
  const auto f = fields();
  EXPECT_EQ(f[clientraw::outdoorTemp], "12.35");
  EXPECT_EQ(f[clientraw::rainRate], "0.100");
  EXPECT_EQ(f[clientraw::highRainRateToday], "0.500");
}

TEST_F(ClientrawTest, TheAlternativeIconIsSeededOnceFromTheStationsIcon) {
  record.forecasticon = 8;
  EXPECT_EQ(fields()[clientraw::forecastIcon], "8");  // setting off: the station's icon
  options.alternativeIcon = true;
  ASSERT_TRUE(write());
  EXPECT_EQ(record.forecasticonalt, 8);
  record.forecasticon = 3;  // the copy stays until the forecast logic sets its own icon
  EXPECT_EQ(fields()[clientraw::forecastIcon], "8");
  record.forecasticonalt = 19;
  EXPECT_EQ(fields()[clientraw::forecastIcon], "19");
}

TEST_F(ClientrawTest, TimeDateAndStationNameSitWhereReadersLookForThem) {
  const auto f = fields();
  ASSERT_EQ(f.size(), clientraw::kFieldCount);
  EXPECT_EQ((Expected{f[29], f[30], f[31]}), (Expected{"07", "05", "00"}));
  EXPECT_EQ((Expected{f[35], f[36], f[clientraw::year]}), (Expected{"3", "11", "2026"}));
  EXPECT_EQ(f[clientraw::stationName], "My_Station");
  EXPECT_EQ(f[clientraw::readingTime], "00:00:00");  // no reading stamped yet
  record.readingtime = {.day = 3, .month = 11, .year = 2026, .hour = 6, .minute = 59, .second = 8};
  EXPECT_EQ(fields()[clientraw::readingTime], "06:59:08");
}

TEST_F(ClientrawTest, EveryFieldEndsWithOneBlankAndTheTrailerCloses) {
  const ClientrawText text = build();
  const std::string trailer = std::string("!!C") + kVersion + "b" + std::to_string(kBuildNumber) + "!!";
  EXPECT_TRUE(text.line.ends_with(" " + trailer + " ")) << text.line;
  EXPECT_EQ(text.line.find("  "), std::string::npos);
  EXPECT_EQ(std::count(text.line.begin(), text.line.end(), ' '), clientraw::kFieldCount);
  // The shared text is the line from the hour up to the trailer.
  const std::size_t from = text.line.find(" 07 05 00 ") + 1;
  const std::size_t to = text.line.size() - trailer.size() - 1;
  EXPECT_EQ(text.fromTimeFields, text.line.substr(from, to - from));
}

TEST_F(ClientrawTest, MissingValuesAreWrittenAsDashes) {
  record.uv = std::numeric_limits<double>::quiet_NaN();
  const auto f = readClientraw(buildClientrawText({record, statistics, now, ""}, options).line).value().fields();
  EXPECT_EQ(f[clientraw::stationName], "---");
  EXPECT_EQ(f[clientraw::uvIndex], "---");
  EXPECT_EQ(f[clientraw::highTemp], "---");  // no reading today yet
  EXPECT_EQ(f[clientraw::highTempTime], "---");
  EXPECT_EQ(f[clientraw::lastHourMaxWind], "---");  // a calm (or unknown) hour
  EXPECT_EQ(f[clientraw::highRainRateTime], "---");
  EXPECT_EQ(f[clientraw::temperatureTrend], "0");  // no series yet
}

TEST_F(ClientrawTest, TodaysExtremesWithTheirTimes) {
  units.units.date = UnitSystem::usa;  // times such as "7:05 am" must not split the field
  record.outtemp = 4.25;
  record.outhum = 80;
  record.solar = 312.6;
  statistics.onesecondTimer(now);
  record.outtemp = 2.0;
  now.minute = 40;
  statistics.onesecondTimer(now);
  const auto f = fields();
  EXPECT_EQ((Expected{f[clientraw::highTemp], f[clientraw::highTempTime], f[clientraw::lowTemp],
                      f[clientraw::lowTempTime]}),
            (Expected{"4.3", "7:05_am", "2.0", "7:40_am"}));
  EXPECT_EQ(f[clientraw::highHumidity], "80");
  EXPECT_EQ(f[clientraw::highSolar], "313");
}

TEST_F(ClientrawTest, DerivedFieldsWindChillRainOfTheMinuteAndTrends) {
  record.outtemp = 0;
  record.windspeed = 10;
  record.raincounter = 10.5;
  record.raincounterprev = 10.2;
  record.outhum = 70;
  record.barometer = 1000;
  statistics.rollthedata();  // seeds the short-term series
  record.outtemp = 1.0;
  record.outhum = 65;
  statistics.rollthedata();
  auto f = fields();
  EXPECT_EQ(f[clientraw::windChill], "-3.7");  // 33.8 F in 11.5 mph: 25.3 F
  EXPECT_EQ(f[clientraw::rainLastMinute], "0.3");
  EXPECT_EQ((Expected{f[clientraw::temperatureTrend], f[clientraw::humidityTrend], f[clientraw::pressureTrend]}),
            (Expected{"1", "-1", "0"}));

  record.outtemp = 10;  // 50 F: no chill, even in a gale
  record.windspeed = 40;
  record.raincounterprev = 80;  // the station's counter was reset
  f = fields();
  EXPECT_EQ(f[clientraw::windChill], "10.0");
  EXPECT_EQ(f[clientraw::rainLastMinute], "0.0");
}

TEST_F(ClientrawTest, WritesThePublishedFileThroughTheTemporaryOne) {
  handWorkedReading();
  const auto text = write();
  ASSERT_TRUE(text);
  EXPECT_EQ(published(), text->line);
  EXPECT_EQ(readWholeFile(web / "clientrawtemp.txt").value_or(""), text->line);
  EXPECT_FALSE(busy);
  EXPECT_EQ(status.lastResult, 0);
  EXPECT_FALSE(fs::exists(dir / "second" / "clientraw.txt"));
}

TEST_F(ClientrawTest, ABusyWriterIsNotEnteredAgain) {
  busy = true;
  EXPECT_FALSE(write());
  EXPECT_TRUE(busy);  // the flag belongs to the call that set it
  EXPECT_FALSE(fs::exists(web / "clientraw.txt"));
}

TEST_F(ClientrawTest, WithWritingSwitchedOffTheTextIsStillMade) {
  options.writingEnabled = false;
  const auto text = write();
  ASSERT_TRUE(text);
  EXPECT_NE(text->fromTimeFields.find("My_Station"), std::string::npos);
  EXPECT_FALSE(fs::exists(web / "clientraw.txt"));
}

TEST_F(ClientrawTest, CopiesToTheSecondFolder) {
  fs::create_directory(dir / "second");
  options.secondFolder = dir / "second";
  writeFileAtomically(web / "customclientraw.txt", "custom");
  ASSERT_TRUE(write());
  EXPECT_EQ(readWholeFile(dir / "second" / "clientraw.txt").value_or(""), published());
  EXPECT_FALSE(fs::exists(dir / "second" / "customclientraw.txt"));
  options.copyCustomClientraw = true;
  ASSERT_TRUE(write());
  EXPECT_EQ(readWholeFile(dir / "second" / "customclientraw.txt").value_or(""), "custom");
  EXPECT_EQ(status.lastResult, 0);
}

TEST_F(ClientrawTest, AFailedWriteKeepsThePreviousFileAndSetsTheStatusWord) {
  ASSERT_TRUE(write());
  const std::string before = published();
  fs::remove(web / "clientrawtemp.txt");
  fs::create_directories(web / "clientrawtemp.txt" / "in the way");  // the temporary name cannot be replaced
  record.outtemp = 25;
  ASSERT_TRUE(write());
  ASSERT_TRUE(write());
  EXPECT_EQ(published(), before);
  EXPECT_TRUE(status.failing);
  EXPECT_NE(status.lastResult, 0);
  EXPECT_FALSE(busy);
  const std::string errors = errorLogText();
  EXPECT_NE(errors.find("clientraw"), std::string::npos);
  EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;  // once per spell of failures

  fs::remove_all(web / "clientrawtemp.txt");
  ASSERT_TRUE(write());
  EXPECT_EQ(readClientraw(published()).value().fields()[clientraw::outdoorTemp], "25.0");
  EXPECT_FALSE(status.failing);
  EXPECT_EQ(status.lastResult, 0);
}

// An uploader that reads the file at any moment gets a whole line, never a
// part of one. (The temporary file is scratch and may be seen half-written.)
TEST_F(ClientrawTest, AReaderPollingDuringHundredsOfWritesOnlySeesWholeLines) {
  ASSERT_TRUE(write());
  std::atomic<bool> writing = true;
  std::atomic<int> reads = 0;
  std::atomic<int> broken = 0;
  std::thread reader([&] {
    while (writing) {
      const auto seen = readClientrawFile(web / "clientraw.txt");
      if (!seen || !seen->hasTrailer() || seen->fields().size() != clientraw::kFieldCount) ++broken;
      ++reads;
    }
  });
  for (int i = 0; i < 300; ++i) {
    record.outtemp = -20 + i * 0.1;
    record.windspeed = i % 40;
    now.second = i % 60;
    write();
  }
  writing = false;
  reader.join();
  EXPECT_GT(reads, 0);
  EXPECT_EQ(broken, 0) << "of " << reads << " reads";
  EXPECT_EQ(status.lastResult, 0);
}

TEST(ClientrawReader, RefusesATextThatIsNotAClientrawLine) {
  EXPECT_FALSE(readClientraw(""));
  EXPECT_FALSE(readClientraw("12346 5.0 12.3 "));
  EXPECT_FALSE(readClientraw(" 12345 5.0 "));  // a leading blank makes an empty first field
  EXPECT_FALSE(readClientraw("<html>404</html>"));
  const auto line = readClientraw("12345 5.0 12.3 \r\n");
  ASSERT_TRUE(line);
  EXPECT_EQ(line->fields(), (Expected{"12345", "5.0", "12.3"}));
  EXPECT_FALSE(line->hasTrailer());
  EXPECT_FALSE(line->hourMinute());  // too short to hold the time
}

TEST(ClientrawReader, TimeAndDateAsTheMesonetViewsShowThem) {
  std::vector<std::string> f(40, "0");
  f[0] = "12345";
  f[29] = "07";
  f[30] = "05";
  f[35] = "3";
  f[36] = "11";
  std::string text;
  for (const auto& field : f) text += field + " ";
  const auto line = readClientraw(text);
  ASSERT_TRUE(line);
  EXPECT_EQ(line->hourMinute(), "07:05");
  EXPECT_EQ(line->dayMonth(UnitSystem::metric), "3/11");
  EXPECT_EQ(line->dayMonth(UnitSystem::usa), "11/3");
}

TEST(ClientrawInterval, DueOnTheFirstTickThenEveryIntervalTicks) {
  ClientrawInterval every10(10);
  std::vector<int> dueTicks;
  for (int tick = 1; tick <= 30; ++tick)
    if (every10.due()) dueTicks.push_back(tick);
  EXPECT_EQ(dueTicks, (std::vector<int>{1, 11, 21}));

  ClientrawInterval shortened(30);
  shortened.due();
  for (int tick = 0; tick < 8; ++tick) EXPECT_FALSE(shortened.due());
  shortened.setInterval(5);  // already past the new interval: write now
  EXPECT_TRUE(shortened.due());
  EXPECT_TRUE(ClientrawInterval(0).due() && ClientrawInterval(0).interval() == 1);
}

TEST(ClientrawSettings, DefaultsAndUnusableValues) {
  testsupport::MemorySettingsStore store;
  ClientrawOptions o = readClientrawOptions(store, true);
  EXPECT_TRUE(o.writingEnabled);
  EXPECT_EQ(o.intervalSeconds, 10);
  EXPECT_TRUE(o.rainRatePerHour);  // the station's own unit
  EXPECT_FALSE(o.secondFolder);

  store.WriteString("clientraw", "writing of clientraw is enabled", "Yes");  // only "yes" is on
  store.WriteString("clientraw", "rain rate per hour", "no");
  store.WriteString("clientraw", "second folder", "/srv/www");
  for (const char* unusable : {"0", "-5", "3601", "ten", "2.5"}) {
    store.WriteString("clientraw", "interval seconds", unusable);
    EXPECT_EQ(readClientrawOptions(store, true).intervalSeconds, 10) << unusable;
  }
  store.WriteString("clientraw", "interval seconds", "3");
  o = readClientrawOptions(store, true);
  EXPECT_FALSE(o.writingEnabled);
  EXPECT_EQ(o.intervalSeconds, 3);
  EXPECT_FALSE(o.rainRatePerHour);
  EXPECT_FALSE(o.secondFolder);  // a folder alone does not switch the copy on
  store.WriteString("clientraw", "copy to second folder", "yes");
  EXPECT_EQ(readClientrawOptions(store, false).secondFolder, fs::path("/srv/www"));
}

}  // namespace
}  // namespace nimbrel
