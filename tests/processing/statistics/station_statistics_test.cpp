#include "processing/statistics/station_statistics.h"

#include <gtest/gtest.h>

#include "core/number_format.h"
#include "core/text_log.h"
#include "processing/records/records_save.h"
#include "support/memory_settings_store.h"
#include "support/temp_folder.h"

namespace nimbrel {
namespace {

class StatisticsTest : public ::testing::Test {
 protected:
  StatisticsTest() : log(dir / "stationlog.txt", clock), statistics(record, settings, units, log) {
    statistics.load(now);
  }
  void reading(double temp, int hum, double wind, double rainCounter) {
    record.outtemp = temp;
    record.outhum = static_cast<std::uint16_t>(hum);
    record.windspeed = record.windgust = wind;
    record.raincounter = rainCounter;
    statistics.onReading();
    statistics.onesecondTimer(now);
  }

  testsupport::TempFolder dir;
  ManualClock clock{fromLocalTime(2026, 5, 4, 14, 30, 0)};
  LocalTime now = clock.local();
  TextLog log;
  testsupport::MemorySettingsStore settings;
  UnitSettings units;
  LiveRecord record;
  StationStatistics statistics;
};

TEST_F(StatisticsTest, BeforeTheFirstReadingTheConsolesGustTouchesNothingAndAfterItAWildReadingIsRefused) {
  statistics.raiseHighGust(25, now);
  EXPECT_EQ(settings.ReadString("Daily low temperature", "number2"), "");
  EXPECT_EQ(statistics.todaysHighGust(), 0);
  reading(12.5, 60, 5, 100);
  statistics.raiseHighGust(25, now);
  EXPECT_EQ(statistics.todaysHighGust(), 25);
  EXPECT_EQ(settings.ReadString("Daily low temperature", "number2"), "12.5");
  reading(75, 60, 5, 100);  // above "max temp"
  EXPECT_EQ(record.outtemp, 12.5);
  EXPECT_EQ(settings.ReadString("Daily high temperature", "number2"), "12.5");
}

TEST_F(StatisticsTest, DerivesDewPointWindChillAndHeatIndex) {
  reading(5, 80, 20, 0);
  EXPECT_NEAR(record.dewpoint, 1.83, 0.01);  // Magnus with 17.62 and 243.12
  EXPECT_LT(record.windchill, 5);  // 37 km/h at 5 C
  EXPECT_EQ(record.heatindex, 5);  // below 20 C it is the temperature
}

TEST_F(StatisticsTest, RecordsAreRewrittenOnlyAfterOneChanged) {
  const RecordsBackup backup{dir / "NIMBREL.INI", dir.path()};
  reading(21.5, 60, 5, 100);
  statistics.saveRecords(backup);
  EXPECT_EQ(settings.ReadString("Record high temperature", "values"), "215 2026 5 4 14 30 ");

  settings.WriteString("Record high temperature", "values", "hand edit");  // shows whether the next save writes
  reading(21.5, 60, 5, 100);  // the same again: no new record
  statistics.saveRecords(backup);
  EXPECT_EQ(settings.ReadString("Record high temperature", "values"), "hand edit");
  EXPECT_NE(settings.ReadString("new rain storage", "dailyrain new"), "");  // the running values still are

  reading(22.0, 60, 5, 100);
  statistics.saveRecords(backup);
  EXPECT_EQ(settings.ReadString("Record high temperature", "values"), "220 2026 5 4 14 30 ");
}

}  // namespace
}  // namespace nimbrel
