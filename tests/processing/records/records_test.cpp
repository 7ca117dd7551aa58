#include <gtest/gtest.h>

#include <cstdio>
#include <regex>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include "core/ini_store.h"
#include "processing/records/record_book.h"
#include "processing/records/records.h"
#include "processing/records/records_save.h"
#include "support/expect_stored.h"
#include "support/memory_settings_store.h"
#include "support/settings_test_folder.h"

namespace nimbrel {
namespace {

using testsupport::expectStored;
using testsupport::MemorySettingsStore;
using testsupport::SettingsTestFolder;

LocalTime at(int day, int hour, int minute, int month = 7, int year = 2024) {
  return LocalTime{.year = year, .month = month, .day = day, .hour = hour, .minute = minute};
}

LiveRecord reading(double outtemp, double gust = 12, std::uint16_t dir = 270) {
  LiveRecord r;
  r.outtemp = outtemp;
  r.outhum = 60;
  r.dewpoint = 8;
  r.heatindex = outtemp;
  r.windchill = outtemp;
  r.barometer = 1013.25;
  r.windgust = gust;
  r.windspeed = gust / 2;
  r.winddir = dir;
  return r;
}

std::string printfTenths(double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%1.0f", value * 10);
  return text;
}

TEST(RecordText, TenthsRoundAsPrintfDoesAndSevenBlankSeparatedFieldsReadBack) {
  EXPECT_EQ(tenthsText(0.25), "2");  // exact binary half: to even
  EXPECT_EQ(tenthsText(-0.05), "-0");
  for (double v : {-12.34, 35.7, 0.05, -0.05, 0.25, 0.35, 2.5, 3.5, 0.15, 1013.25, -40.05, 99999.95})
    EXPECT_EQ(tenthsText(v), printfTenths(v)) << v;

  const RecordValue hot{35.7, {2024, 7, 3, 14, 5}};
  EXPECT_EQ(recordValueText(hot), "357 2024 7 3 14 5 ");
  EXPECT_EQ(recordValueText({-12.34, {2023, 12, 31, 23, 59}}), "-123 2023 12 31 23 59 ");
  EXPECT_EQ(parseRecordValue(recordValueText(hot)), hot);
  // What is read back compares like what was rounded before writing.
  for (double v : {-12.34, 0.05, 0.15, 1013.25})
    EXPECT_EQ(parseRecordValue(recordValueText({v, {2024, 1, 1, 0, 0}}))->value, roundedToTenths(v)) << v;
}

TEST(RecordText, UnreadableEntriesAreNoRecord) {
  for (const char* text : {"", " ", "abc", "357", "357 2024 7 3 14", "35x 2024 7 3 14 5", "357 2024 13 3 14 5",
                           "357 2024 7 0 14 5", "357 2024 7 3 24 5", "357 2024 7 3 14 60", "357 2024 7 3 14 5.5"})
    EXPECT_FALSE(parseRecordValue(text)) << '"' << text << '"';
  EXPECT_EQ(parseRecordValue("  357  2024 7 3 14 5 0 extra")->value, 35.7);
}

TEST(RecordNames, SecondAndThirdSetsTakeTheSetNumber) {
  const std::vector<std::string> secondSet = {
      "Record high temperature2", "Record low temperature2", "Record high gust2", "Record high rain rate2",
      "Record low barometer2", "Record high barometer2", "Record daily rain2", "Record rain last hour2",
      "Record high average2", "Record high soil2", "Record low soil2", "Record low windchill2", "Record hot day2",
      "Record cold night2", "Record cold day2", "Record warm night2", "Record high heat index2",
      "Record low grass2", "Record high dew2", "Record low dew2", "Record high hum2", "Record low hum2",
      "Record high solar2", "Record high uv2", "Record high thsw2", "Record low thsw2", "Record monthrain2",
      "Record windrun2", "Record hi extra temp1 2", "Record lo extra temp1 2", "Record hi extra temp2 2",
      "Record lo extra temp2 2", "Record hi extra temp3 2", "Record lo extra temp3 2", "Record days no rain 2",
      "Record days with rain 2", "Record hi extra temp4 2", "Record lo extra temp4 2", "2Record high soil2",
      "2Record low soil2", "3Record high soil2", "3Record low soil2", "4Record high soil2", "4Record low soil2",
      "Record high leaf2", "Record high soil moist2", "Record highest minimum daily2",
      "Record lowest maximum daily2"};
  const auto rows = recordRows();
  ASSERT_EQ(rows.size(), secondSet.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(recordSectionName(rows[i], RecordSet::AllTime), rows[i].name);
    EXPECT_EQ(recordSectionName(rows[i], RecordSet::ThisMonth), secondSet[i]);
    std::string third = secondSet[i];
    third.back() = '3';
    EXPECT_EQ(recordSectionName(rows[i], RecordSet::ThisYear), third);
  }
}

TEST(RecordBookCompare, NewHighReplacesAndKeepsThePreviousDaysHolder) {
  RecordBook book;
  book.compare(reading(30.0), at(1, 15, 0));
  book.compare(reading(30.0), at(2, 15, 0));  // equal: the earlier date stays
  book.compare(reading(35.74), at(3, 14, 5));
  book.compare(reading(35.71), at(3, 14, 6));  // same in tenths: no new record
  const HeldRecord& high = book.held(RecordSet::AllTime, "Record high temperature");
  EXPECT_EQ(std::tie(high.present, high.previous),
            std::tuple(RecordValue{35.7, {2024, 7, 3, 14, 5}}, RecordValue{30.0, {2024, 7, 1, 15, 0}}));

  book.compare(reading(36.2), at(3, 15, 0));  // again the same day: the holder before today stays
  EXPECT_EQ(high.present->value, 36.2);
  EXPECT_EQ(high.previous->value, 30.0);
  EXPECT_EQ(book.held(RecordSet::AllTime, "Record low temperature").present->value, 30.0);
  EXPECT_EQ(book.held(RecordSet::ThisYear, "Record high temperature").present, high.present);
}

TEST(RecordBookCompare, WindKeepsDirectionAndZeroReadingsMakeNoRecord) {
  RecordBook book;
  LiveRecord calm = reading(10, 0, 90);
  calm.outhum = 0;  // no hygrometer
  calm.barometer = 0;
  book.compare(calm, at(1, 0, 0));
  for (const char* name : {"Record high gust", "Record high hum", "Record low hum", "Record low barometer",
                           "Record high solar", "Record daily rain", "Record high rain rate"})
    EXPECT_FALSE(book.held(RecordSet::AllTime, name).present) << name;

  book.compare(reading(10, 20, 225), at(1, 0, 1), 7.5);
  EXPECT_EQ(book.held(RecordSet::ThisMonth, "Record high gust").direction, 225);
  EXPECT_EQ(book.held(RecordSet::ThisMonth, "Record high average").present->value, 7.5);
  EXPECT_FALSE(book.held(RecordSet::AllTime, "Record hot day").present);  // not followed
}

class RecordsStoreTest : public ::testing::Test {
 protected:
  RecordsBackup backup() const { return {folder_ / "NIMBREL.INI", folder_.path()}; }
  std::string headersOf(const std::string& text) const {
    std::string headers;
    const std::regex header(R"(\[([^\]]*)\])");
    for (auto it = std::sregex_iterator(text.begin(), text.end(), header); it != std::sregex_iterator(); ++it)
      headers += (*it)[1].str() + "|";
    return headers;
  }

  SettingsTestFolder folder_;
};

TEST_F(RecordsStoreTest, WritesRunningValuesThenTheThreeSetsInTableOrder) {
  RecordBook book;
  LiveRecord r = reading(21.5);
  r.dailyrain = 3;
  book.compare(r, at(3, 12, 0));
  IniStore store(folder_ / "NIMBREL.INI", folder_.log());
  RunningValues running;
  running.rain = RunningValues::Rain{3, 40, 400};
  running.dailySolarCount = 12;
  saverecordstoinifile(book, running, store, backup());
  ASSERT_TRUE(store.flush());

  std::string expected = "new rain storage|Daily solar count|";
  for (RecordSet set : kAllRecordSets)
    for (const RecordRow& row : recordRows())
      if (book.held(set, row.name).present) expected += recordSectionName(row, set) + "|";
  EXPECT_EQ(headersOf(folder_.read("NIMBREL.INI")), expected);
  expectStored(store, {{"new rain storage", "dailyrain done it new 2", "done"},
                       {"New rain storage", "monthlyrain new", "40"}, {"Record high gust3", "direction", "270"}});
}

TEST_F(RecordsStoreTest, BackupIsTheFileBeforeTheWriteAndStaysWhenTheWriteFails) {
  const std::string before = "[Station]\r\nname=home\r\n\r\n";
  folder_.write("NIMBREL.INI", before);
  RecordBook book;
  book.compare(reading(35.7), at(3, 14, 5));
  IniStore store(folder_ / "NIMBREL.INI", folder_.log());
  saverecordstoinifile(book, {}, store, backup());
  ASSERT_TRUE(store.flush());
  EXPECT_EQ(folder_.read("nimbrelbackup.ini"), before);
  EXPECT_NE(folder_.read("NIMBREL.INI").find("values=357 2024 7 3 14 5 \r\n"), std::string::npos);

  struct FailingStore final : SettingsStore {
    std::string ReadString(std::string_view, std::string_view, std::string_view) const override { return ""; }
    void WriteString(std::string_view, std::string_view, std::string_view) override {
      throw std::runtime_error("disk full");
    }
    void ReadSection(std::string_view, std::vector<std::string>&) const override {}
    void EraseSection(std::string_view) override {}
    void DeleteKey(std::string_view, std::string_view) override {}
    bool flush() override { return false; }
  } failing;
  std::filesystem::remove(folder_ / "nimbrelbackup.ini");
  EXPECT_THROW(saverecordstoinifile(book, {}, failing, backup()), std::runtime_error);
  EXPECT_EQ(folder_.read("nimbrelbackup.ini"), folder_.read("NIMBREL.INI"));
}

TEST_F(RecordsStoreTest, AnUnchangedBackupIsNotRewrittenAndAChangedOrMissingOneIs) {
  MemorySettingsStore store;
  std::string lastCopied;
  RecordsBackup keeping = backup();
  keeping.lastCopied = &lastCopied;
  const auto saveAndReadBackup = [&] {
    saverecordstoinifile({}, {}, store, keeping);
    return folder_.read("nimbrelbackup.ini");
  };
  folder_.write("NIMBREL.INI", "[a]\r\nb=1\r\n");
  EXPECT_EQ(saveAndReadBackup(), "[a]\r\nb=1\r\n");
  folder_.write("nimbrelbackup.ini", "marker");  // shows whether the next save rewrites it
  EXPECT_EQ(saveAndReadBackup(), "marker");
  folder_.write("NIMBREL.INI", "[a]\r\nb=2\r\n");
  EXPECT_EQ(saveAndReadBackup(), "[a]\r\nb=2\r\n");
  std::filesystem::remove(folder_ / "nimbrelbackup.ini");
  EXPECT_EQ(saveAndReadBackup(), "[a]\r\nb=2\r\n");
}

TEST_F(RecordsStoreTest, RecordsAreWrittenEvenWhenTheBackupCannotBeMade) {
  folder_.write("NIMBREL.INI", "[a]\r\nb=c\r\n");
  RecordBook book;
  book.compare(reading(20), at(3, 14, 5));
  MemorySettingsStore store;
  const RecordsBackup nowhere{folder_ / "NIMBREL.INI", folder_ / "missing-folder"};
  EXPECT_THROW(saverecordstoinifile(book, {}, store, nowhere), std::runtime_error);
  EXPECT_EQ(store.ReadString("Record high temperature", "values"), "200 2024 7 3 14 5 ");
}

TEST(RecordsLoad, SavedRecordsComeBackAndBadEntriesStayAsTheyAre) {
  MemorySettingsStore store;
  store.WriteString("Record hot day", "values", "402 2019 7 25 15 30");  // not followed: never rewritten
  RecordBook book;
  book.compare(reading(-12.34, 30, 45), at(1, 6, 0, 1));
  book.compare(reading(-15, 41, 10), at(2, 7, 30, 1));
  saverecordstoinifile(book, {}, store, {});
  saveoldrecordstoinifile(book, store);

  RecordBook loaded;
  loaded.load(store);
  for (RecordSet set : kAllRecordSets)
    for (std::size_t i = 0; i < recordRows().size(); ++i) {
      if (!isFollowed(recordRows()[i])) continue;
      const HeldRecord &want = book.held(set, i), &got = loaded.held(set, i);
      EXPECT_EQ(std::tie(got.present, got.previous, got.direction), std::tie(want.present, want.previous, want.direction))
          << recordRows()[i].name;
    }
  EXPECT_EQ(loaded.held(RecordSet::AllTime, "Record low temperature").previous->value, -12.3);
  EXPECT_EQ(loaded.held(RecordSet::ThisMonth, "Record high gust").direction, 10);
  EXPECT_EQ(store.ReadString("Record hot day", "values"), "402 2019 7 25 15 30");
  EXPECT_EQ(loaded.held(RecordSet::AllTime, "Record hot day").present->value, 40.2);

  MemorySettingsStore damaged;
  damaged.WriteString("Record high temperature", "values", "357 2024 7");
  RecordBook fromDamaged;
  fromDamaged.load(damaged);
  EXPECT_FALSE(fromDamaged.held(RecordSet::AllTime, "Record high temperature").present);
  saverecordstoinifile(fromDamaged, {}, damaged, {});
  EXPECT_EQ(damaged.ReadString("Record high temperature", "values"), "357 2024 7");
}

TEST(RecordsReset, MonthEndClearsOnlyTheMonthlySet) {
  MemorySettingsStore store;
  RecordBook book;
  book.compare(reading(30, 25), at(30, 15, 0, 6));
  saverecordstoinifile(book, {}, store, {});
  book.resetMonth(store);

  const HeldRecord& month = book.held(RecordSet::ThisMonth, "Record high temperature");
  EXPECT_FALSE(month.present);
  EXPECT_EQ(month.previous->value, 30);
  expectStored(store, {{"Record high temperature2", "values", ""}, {"Record high gust2", "direction", ""},
                       {"Record high temperature2", "old values", "300 2024 6 30 15 0 "},
                       {"Record high temperature3", "values", "300 2024 6 30 15 0 "}});

  book.compare(reading(18, 5), at(1, 0, 0));  // the first reading of the month sets it again
  EXPECT_EQ(month.present->value, 18);
  EXPECT_EQ(book.held(RecordSet::ThisYear, "Record high temperature").present->value, 30);

  book.resetYear(store);
  EXPECT_FALSE(book.held(RecordSet::ThisYear, "Record high gust").present);
  EXPECT_EQ(book.held(RecordSet::AllTime, "Record high gust").present->value, 25);
}

}  // namespace
}  // namespace nimbrel
