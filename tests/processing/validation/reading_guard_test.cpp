// The absolute limits hold for every reading, the first after a start
// included, and bound the barometer from above and the wind direction too.

#include <gtest/gtest.h>

#include "core/text_log.h"
#include "processing/statistics/station_statistics.h"
#include "processing/validation/absolute_limits.h"
#include "support/memory_settings_store.h"
#include "support/temp_folder.h"

namespace nimbrel {
namespace {

TEST(ReadingGuard, TheFirstReadingAfterAStartIsHeldToTheLimitsToo) {
  testsupport::TempFolder dir;
  ManualClock clock{fromLocalTime(2026, 11, 23, 8, 20, 0)};
  TextLog stationLog(dir / "stationlog.txt", clock);
  testsupport::MemorySettingsStore settings;
  UnitSettings units;
  LiveRecord record;
  StationStatistics statistics(record, settings, units, stationLog);
  statistics.load(clock.local());

  record.outtemp = -1838.2;  // a word next to the console's "no sensor" mark
  record.outhum = 80;
  record.barometer = 1682;
  record.winddir = 32767;
  statistics.onReading();
  statistics.onesecondTimer(clock.local());
  EXPECT_EQ(record.outtemp, 0);  // the starting values
  EXPECT_EQ(record.barometer, 0);
  EXPECT_EQ(record.winddir, 0);
  EXPECT_EQ(record.outhum, 80);
  EXPECT_GT(record.dewpoint, -60);
  EXPECT_GT(record.windchill, -60);
  EXPECT_GE(statistics.records().held(RecordSet::AllTime, "Record low temperature").present->value, -60);
}

TEST(ReadingGuard, BarometerAndDirectionLimitsAreInclusive) {
  LiveRecord previous;
  previous.barometer = 1013;
  previous.winddir = 90;
  AbsoluteLimits limits;
  limits.maxBaro = 1050;
  const struct {
    double barometer;
    std::uint16_t direction;
    double expectedBarometer;
    std::uint16_t expectedDirection;
  } cases[] = {
      {1050, 360, 1050, 360},
      {1050.1, 361, 1013, 90},
      {899.9, 0, 1013, 0},
  };
  for (const auto& c : cases) {
    LiveRecord incoming = previous;
    incoming.barometer = c.barometer;
    incoming.winddir = c.direction;
    applyAbsoluteLimits(incoming, previous, limits);
    EXPECT_EQ(incoming.barometer, c.expectedBarometer) << c.barometer;
    EXPECT_EQ(incoming.winddir, c.expectedDirection) << c.direction;
  }
}

TEST(ReadingGuard, MaxBaroIsReadAndAReversedPairKeepsTheDefaults) {
  testsupport::MemorySettingsStore settings;
  settings.WriteString("New readings limits", "max baro", "1060");
  EXPECT_EQ(readAbsoluteLimits(settings).maxBaro, 1060);
  settings.WriteString("New readings limits", "min baro", "1070");
  const AbsoluteLimits read = readAbsoluteLimits(settings);
  EXPECT_EQ(read.minBaro, 900);
  EXPECT_EQ(read.maxBaro, 1100);
}

}  // namespace
}  // namespace nimbrel
