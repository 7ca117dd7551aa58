#include "datafiles/clientraw.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

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
using Fields = std::vector<std::string>;

std::string contents(const fs::path& file) { return readWholeFile(file).value_or("<missing>"); }
Fields fieldsOf(const std::string& line) { return readClientraw(line).value().fields(); }
Fields pick(const Fields& all, std::initializer_list<std::size_t> indexes) {
  Fields picked;
  for (std::size_t i : indexes) picked.push_back(all.at(i));
  return picked;
}

class ClientrawTest : public ::testing::Test {
 protected:
  ClientrawTest() : log(dir / "programerrorlog.txt", clock), statistics(record, settings, units, log) {
    fs::create_directory(web);
  }

  ClientrawText build(std::string_view station = "My Station") {
    return buildClientrawText({record, statistics, now, station}, options);
  }
  Fields fields() { return fieldsOf(build().line); }
  std::optional<ClientrawText> write() {
    return updateclientrawfilenow(record, statistics, options, web, now, "My Station", {busy, status, log});
  }
  std::string published() const { return contents(web / "clientraw.txt"); }

  // A reading of a wet, breezy autumn morning, in the record's units.
  void handWorkedReading() {
    record.outtemp = -0.5;
    record.intemp = 21;
    record.soiltemp = 9.95;
    record.outhum = 56;
    record.inhum = 40;
    record.windspeed = 5.0;
    record.windgust = 12.25;
    record.winddir = 7;
    record.barometer = 1013.25;
    record.dailyrain = 0.2;
    record.monthlyrain = 45.67;
    record.yearlyrain = 1234.5;
    record.rainrate = 0.1234;
    record.maxrainrate = 1.5;
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

Fields firstSixteen(const Fields& fields) { return {fields.begin(), fields.begin() + 16}; }

TEST_F(ClientrawTest, TheFirstSixteenFieldsOfAZeroedAndOfAHandWorkedReading) {
  // A station that has not spoken yet.
  EXPECT_EQ(firstSixteen(fields()), (Fields{"12345", "0.0", "0.0", "0", "0.0", "0", "0.0", "0.0", "0.0", "0.0",
                                            "0.000", "0.000", "0.0", "0", "0.0", "0"}));
  handWorkedReading();
  EXPECT_EQ(firstSixteen(fields()), (Fields{"12345", "5.0", "12.3", "7", "-0.5", "56", "1013.3", "0.2", "45.7",
                                            "1234.5", "0.123", "1.500", "21.0", "40", "10.0", "6"}));
}

TEST_F(ClientrawTest, OptionsOfTheFirstFields) {
  record.outtemp = 12.345;
  record.rainrate = 6.0;  // mm per hour, as the Vantage gives it
  record.maxrainrate = 30.0;
  options.temperatureTwoDecimals = true;
  options.rainRatePerHour = true;
  EXPECT_EQ(pick(fields(), {clientraw::outdoorTemp, clientraw::rainRate, clientraw::highRainRateToday}),
            (Fields{"12.35", "0.100", "0.500"}));
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

TEST_F(ClientrawTest, FieldsSitWhereReadersLookEachEndsWithOneBlankAndMissingValuesAreDashes) {
  const ClientrawText text = build();
  const Fields f = fieldsOf(text.line);
  ASSERT_EQ(f.size(), clientraw::kFieldCount);
  EXPECT_EQ(pick(f, {29, 30, 31, 35, 36, clientraw::year}), (Fields{"07", "05", "00", "3", "11", "2026"}));
  EXPECT_EQ(f[clientraw::stationName], "My_Station");
  EXPECT_EQ(f[clientraw::readingTime], "00:00:00");  // no reading stamped yet
  record.readingtime = {.day = 3, .month = 11, .year = 2026, .hour = 6, .minute = 59, .second = 8};
  EXPECT_EQ(fields()[clientraw::readingTime], "06:59:08");

  const std::string trailer = std::string("!!C") + kVersion + "b" + std::to_string(kBuildNumber) + "!!";
  EXPECT_TRUE(text.line.ends_with(" " + trailer + " ")) << text.line;
  EXPECT_EQ(text.line.find("  "), std::string::npos);
  EXPECT_EQ(std::count(text.line.begin(), text.line.end(), ' '), clientraw::kFieldCount);
  // The shared text is the line from the hour up to the trailer.
  const std::size_t from = text.line.find(" 07 05 00 ") + 1;
  const std::size_t to = text.line.size() - trailer.size() - 1;
  EXPECT_EQ(text.fromTimeFields, text.line.substr(from, to - from));

  record.uv = std::numeric_limits<double>::quiet_NaN();
  // No name, no UV, no reading today, a calm (or unknown) hour, no rain rate yet; no series for the trend.
  EXPECT_EQ(pick(fieldsOf(build("").line), {clientraw::stationName, clientraw::uvIndex, clientraw::highTemp,
                                            clientraw::highTempTime, clientraw::lastHourMaxWind,
                                            clientraw::highRainRateTime, clientraw::temperatureTrend}),
            (Fields{"---", "---", "---", "---", "---", "---", "0"}));
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
  EXPECT_EQ(pick(fields(), {clientraw::highTemp, clientraw::highTempTime, clientraw::lowTemp, clientraw::lowTempTime,
                            clientraw::highHumidity, clientraw::highSolar}),
            (Fields{"4.3", "7:05_am", "2.0", "7:40_am", "80", "313"}));
}

TEST_F(ClientrawTest, DerivedFieldsWindChillRainOfTheMinuteAndTrends) {
  record.outtemp = 0;
  record.outhum = 70;
  record.windspeed = 10;
  record.barometer = 1000;
  record.raincounter = 10.5;
  record.raincounterprev = 10.2;
  statistics.rollthedata();  // seeds the short-term series
  record.outtemp = 1.0;
  record.outhum = 65;
  statistics.rollthedata();
  const auto derived = [this] {
    return pick(fields(), {clientraw::windChill, clientraw::rainLastMinute, clientraw::temperatureTrend,
                           clientraw::humidityTrend, clientraw::pressureTrend});
  };
  EXPECT_EQ(derived(), (Fields{"-3.7", "0.3", "1", "-1", "0"}));  // 33.8 F in 11.5 mph: 25.3 F

  record.outtemp = 10;  // 50 F: no chill, even in a gale
  record.windspeed = 40;
  record.raincounterprev = 80;  // the station's counter was reset
  EXPECT_EQ(derived(), (Fields{"10.0", "0.0", "1", "-1", "0"}));
}

TEST_F(ClientrawTest, WritesThroughTheTemporaryFileAndCopiesToTheSecondFolder) {
  handWorkedReading();
  const auto text = write();
  ASSERT_TRUE(text);
  EXPECT_EQ(published(), text->line);
  EXPECT_EQ(contents(web / "clientrawtemp.txt"), text->line);
  EXPECT_FALSE(busy);
  EXPECT_EQ(status.lastResult, 0);

  fs::create_directory(dir / "second");
  options.secondFolder = dir / "second";
  writeFileAtomically(web / "customclientraw.txt", "custom");
  ASSERT_TRUE(write());
  EXPECT_EQ(contents(dir / "second" / "clientraw.txt"), published());
  EXPECT_FALSE(fs::exists(dir / "second" / "customclientraw.txt"));
  options.copyCustomClientraw = true;
  ASSERT_TRUE(write());
  EXPECT_EQ(contents(dir / "second" / "customclientraw.txt"), "custom");
  EXPECT_EQ(status.lastResult, 0);
}

TEST_F(ClientrawTest, ABusyWriterIsNotEnteredAgainAndWithWritingOffOnlyTheTextIsMade) {
  busy = true;
  EXPECT_FALSE(write());
  EXPECT_TRUE(busy);  // the flag belongs to the call that set it
  EXPECT_FALSE(fs::exists(web / "clientraw.txt"));

  busy = false;
  options.writingEnabled = false;
  const auto text = write();
  ASSERT_TRUE(text);
  EXPECT_NE(text->fromTimeFields.find("My_Station"), std::string::npos);
  EXPECT_FALSE(fs::exists(web / "clientraw.txt"));
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
  const std::string errors = contents(log.path());
  EXPECT_NE(errors.find("clientraw"), std::string::npos);
  EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;  // once per spell of failures

  fs::remove_all(web / "clientrawtemp.txt");
  ASSERT_TRUE(write());
  EXPECT_EQ(fieldsOf(published())[clientraw::outdoorTemp], "25.0");
  EXPECT_FALSE(status.failing);
  EXPECT_EQ(status.lastResult, 0);
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
