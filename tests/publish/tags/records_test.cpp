#include <gtest/gtest.h>

#include <string>

#include "publish/tags/vocabulary.h"
#include "support/tag_world.h"

namespace nimbrel {
namespace {

using testsupport::TagWorld;

// Writes a record's section as the settings file holds it and reads the
// records back, as at a start.
void storeRecord(TagWorld& world, const std::string& section, const std::string& values) {
  world.settings.WriteString(section, "values", values);
  world.statistics.load(world.clock.local());
}

TEST(RecordTags, WithoutRecordsEveryTagIsMissing) {
  TagWorld world;
  int asked = 0;
  for (const TagDef& def : vocabulary().tags()) {
    if (def.replacer != Replacer::r3) continue;
    EXPECT_EQ(world.text(def.name), "---") << def.name;
    ++asked;
  }
  EXPECT_EQ(asked, 596);
}

TEST(RecordTags, AReadingSetsTheRecordOfEachSetWithItsDate) {
  TagWorld world;  // 15 June 2026, 14:30
  world.record.outtemp = 31.46;
  world.record.windchill = -2.0;
  world.record.windgust = 20;
  world.reading();
  for (const char* name : {"recordhightemp", "mrecordhightemp", "yrecordhightemp"}) EXPECT_EQ(world.text(name), "31.5");
  EXPECT_EQ(world.text("recordhightemp", true), "31.5°C");
  EXPECT_EQ(world.text("recordhightempday"), "15");
  EXPECT_EQ(world.text("mrecordhightempmonth"), "6");
  EXPECT_EQ(world.text("yrecordhightempyear"), "2026");
  EXPECT_EQ(world.text("recordlowchillhour"), "14");
  EXPECT_EQ(world.text("mrecordlowchillminute"), "30");
  EXPECT_EQ(world.text("recordwindgust"), "37.0");  // km/h
  EXPECT_EQ(world.text("yrecordhighgustday"), "15");
  // A record the book does not have stays empty.
  EXPECT_EQ(world.text("recordhighrain30min"), "---");
}

TEST(RecordTags, StoredRecordsOfRowsNotFollowedAreShown) {
  TagWorld world;
  storeRecord(world, "Record hi extra temp2 2", "-57 2026 6 9 7 5 ");
  EXPECT_EQ(world.text("mrecordhighextratemp2"), "-5.7");
  EXPECT_EQ(world.text("mrecordhighextratemp2min"), "05");
  EXPECT_EQ(world.text("mrecordhighextratemp2hr"), "7");
  EXPECT_EQ(world.text("recordhighextratemp2"), "---");  // the all-time set holds none
  EXPECT_EQ(world.text("yrecordhighextratemp2"), "---");

  storeRecord(world, "Record days with rain 3", "120 2026 3 4 0 0 ");
  EXPECT_EQ(world.text("yrecorddayswithrain"), "12");
  EXPECT_EQ(world.text("yrecorddayswithrainmonth"), "3");

  storeRecord(world, "Record highest minimum daily", "214 2019 7 25 6 0 ");
  EXPECT_EQ(world.text("recordhighmindailytemp"), "21.4");
  EXPECT_EQ(world.text("recordhighmindailytempyrr"), "2019");

  // An unreadable date is no record.
  storeRecord(world, "Record low grass", "-80 2026 13 1 0 0 ");
  EXPECT_EQ(world.text("recordlowgrass"), "---");
}

TEST(RecordTags, RainRateAndWindRunAreShownInTheirOwnUnits) {
  TagWorld world;
  storeRecord(world, "Record high rain rate", "1203 2025 8 2 16 41 ");
  EXPECT_EQ(world.text("recordrainrateperhr"), "120.3");
  EXPECT_EQ(world.text("recordrainrate"), "2.01");  // per minute
  EXPECT_EQ(world.text("recordrainrate", true), "2.01");
  EXPECT_EQ(world.text("recordrainratemin"), "41");

  storeRecord(world, "Record windrun", "2000 2025 3 1 0 0 ");  // nautical miles
  EXPECT_EQ(world.text("recordhighwindrun"), "370.4");        // km with km/h
  world.units.units.wind = WindUnit::mph;
  EXPECT_EQ(world.text("recordhighwindrun"), "230.2");
  world.units.units.wind = WindUnit::knots;
  EXPECT_EQ(world.text("recordhighwindrun"), "200.0");
}

TEST(RecordTags, MonthlyTemperatureRecordsComeFromTheirSection) {
  TagWorld world;  // June
  world.settings.WriteString("Record monthly high temp", "jun", "33.26");
  world.settings.WriteString("Record monthly high temp", "jun year", "2019");
  world.settings.WriteString("Record monthly high temp", "jun day", "21");
  world.settings.WriteString("Record monthly low temp", "jan year", "19x");
  EXPECT_EQ(world.text("recordhightempjun"), "33.3");
  EXPECT_EQ(world.text("recordhightempjuny"), "2019");
  EXPECT_EQ(world.text("recordhightempcurrentmonth"), "33.3");
  EXPECT_EQ(world.text("recordhightempcurrentmonthday"), "21");
  EXPECT_EQ(world.text("recordhightempcurrentmonthyear"), "2019");
  EXPECT_EQ(world.text("recordlowtempjany"), "---");
  EXPECT_EQ(world.text("recordlowtempcurrentmonth"), "---");
}

}  // namespace
}  // namespace nimbrel
