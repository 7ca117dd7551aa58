#include "datafiles/log_fields.h"

#include <gtest/gtest.h>

#include "datafiles/log_context.h"
#include "log_test_world.h"

namespace nimbrel {
namespace {

constexpr ReadingTime kAutumnMorning{14, 11, 2026, 9, 5, 0};

LogOptions usOptions() {
  LogOptions options;
  options.units = UnitSystem::usa;
  return options;
}

TEST(LogFieldTexts, TemperaturesFromZeroToTenGetALeadingZeroAfterRounding) {
  EXPECT_EQ(logTemperatureText(0.0, UnitSystem::metric), "00.0");
  EXPECT_EQ(logTemperatureText(5.25, UnitSystem::metric), "05.3");
  EXPECT_EQ(logTemperatureText(9.95, UnitSystem::metric), "10.0");
  EXPECT_EQ(logTemperatureText(-0.5, UnitSystem::metric), "-0.5");
  EXPECT_EQ(logTemperatureText(-12.34, UnitSystem::metric), "-12.3");
  EXPECT_EQ(logTemperatureText(-0.04, UnitSystem::metric), "00.0");  // written as zero, never "-0.0"
  // Fahrenheit: x 1.8 + 32, no leading zero.
  EXPECT_EQ(logTemperatureText(-12.5, UnitSystem::usa), "9.5");
  EXPECT_EQ(logTemperatureText(-20.0, UnitSystem::usa), "-4.0");
}

TEST(LogFieldTexts, HumidityDirectionAndWindArePaddedToThreeColumns) {
  EXPECT_EQ(logHumidityText(5), " 5");  // one blank only, however short
  EXPECT_EQ(logHumidityText(65), " 65");
  EXPECT_EQ(logHumidityText(100), "100");
  EXPECT_EQ(logDirectionText(0), "  0");
  EXPECT_EQ(logDirectionText(9), "  9");
  EXPECT_EQ(logDirectionText(10), " 10");
  EXPECT_EQ(logDirectionText(359), "359");
  EXPECT_EQ(logWindText(0.0, UnitSystem::metric), "0.0");
  EXPECT_EQ(logWindText(12.34, UnitSystem::metric), "12.3");
  EXPECT_EQ(logWindText(10.0, UnitSystem::usa), "11.5");
}

TEST(LogFieldTexts, BarometerPaddingInBothUnits) {
  EXPECT_EQ(logBarometerText(1013.25, UnitSystem::metric), "1013.3");
  EXPECT_EQ(logBarometerText(999.94, UnitSystem::metric), "999.9");
  EXPECT_EQ(logBarometerText(99.5, UnitSystem::metric), " 99.5");  // a four-character text gets a blank
  EXPECT_EQ(logBarometerText(1013.25, UnitSystem::usa), "29.921");
  EXPECT_EQ(logBarometerText(300.0, UnitSystem::usa), " 8.859");
}

TEST(LogFieldTexts, RainInTheLastMinuteIgnoresACounterResetOrAJump) {
  LiveRecord record;
  record.raincounterprev = 100.2;
  record.raincounter = 100.4;
  EXPECT_NEAR(rainLastMinuteMm(record), 0.2, 1e-9);
  record.raincounter = 150.2;  // exactly 50 mm still counts
  EXPECT_NEAR(rainLastMinuteMm(record), 50.0, 1e-9);
  record.raincounter = 150.3;
  EXPECT_EQ(rainLastMinuteMm(record), 0.0);
  record.raincounter = 0.0;  // the station's counter was reset
  EXPECT_EQ(rainLastMinuteMm(record), 0.0);

  EXPECT_EQ(logRainLastMinuteText(0.2, UnitSystem::metric, 31), "0.2");
  EXPECT_EQ(logRainLastMinuteText(0.2, UnitSystem::usa, 31), " 0.008");
  EXPECT_EQ(logRainLastMinuteText(0.2, UnitSystem::usa, 10), " 0.01");
  EXPECT_EQ(logRainLastMinuteText(50.0, UnitSystem::usa, 31), " 1.969");
  EXPECT_EQ(logRainTotalText(0.0, 4, UnitSystem::metric), " 0.0");  // yearly rain: width 4
}

TEST(LogFields, AHandWorkedMetricLine) {
  LiveRecord record;
  testsupport::fillAutumnMinute(record);
  const LogFields fields = makeLogFields(record, kAutumnMorning, LogOptions{});
  EXPECT_EQ(fields.line(), "14 11 2026  9  5 05.3  65 -0.8 1013.3 3.1 12.4   7 0.2 2.4 35.6 412.0 05.3");
  EXPECT_EQ(fields.datePrefix(), "14 11 2026  9  5");
  EXPECT_DOUBLE_EQ(fields.heatIndexC, 5.25);  // below 20 degrees: the temperature itself
}

TEST(LogFields, AHandWorkedUsLine) {
  LiveRecord record;
  testsupport::fillAutumnMinute(record);
  const LogFields fields = makeLogFields(record, kAutumnMorning, usOptions());
  EXPECT_EQ(fields.line(),
            "14 11 2026  9  5 41.5  65 30.6 29.921 3.6 14.3   7  0.008 0.094 1.402 16.220 41.5");
}

TEST(LogFields, SummerHeatIndexAndTheStationsOwnValue) {
  LiveRecord record;
  record.outtemp = 30.0;
  record.outhum = 70;
  record.barometer = 1010.0;
  record.heatindexalt = 7.0;
  const LogFields computed = makeLogFields(record, kAutumnMorning, LogOptions{});
  EXPECT_EQ(computed[LogColumn::dewpoint], "23.9");
  EXPECT_EQ(computed[LogColumn::heatindex], "35.0");
  EXPECT_NEAR(computed.heatIndexC, 35.038, 0.001);

  LogOptions fromStation;
  fromStation.heatIndexFromStation = true;
  const LogFields station = makeLogFields(record, kAutumnMorning, fromStation);
  EXPECT_EQ(station[LogColumn::heatindex], "7.0");  // width 2: no leading zero
  EXPECT_NEAR(station.heatIndexC, 35.038, 0.001);   // what the record keeps is still the computed one
  fromStation.units = UnitSystem::usa;
  EXPECT_EQ(makeLogFields(record, kAutumnMorning, fromStation)[LogColumn::heatindex], "44.6");
}

TEST(LogFields, AlternativePressureBelow500AndOutOfRangeDewPoint) {
  LiveRecord record;
  record.barometer = 0.0;
  record.barometeralt = 998.44;
  record.outtemp = 20.0;
  record.outhum = 0;  // no humidity sensor: the dew point's sentinel
  const LogFields fields = makeLogFields(record, kAutumnMorning, LogOptions{});
  EXPECT_EQ(fields[LogColumn::barometer], "998.4");
  EXPECT_EQ(fields[LogColumn::dewpoint], "50.0");
  EXPECT_EQ(fields[LogColumn::humidity], " 0");
}

TEST(LogFields, AnUnsetTimeGivesNoDatePrefix) {
  LiveRecord record;
  EXPECT_EQ(makeLogFields(record, ReadingTime{}, LogOptions{}).datePrefix(), "");
  EXPECT_EQ(makeLogFields(record, ReadingTime{31, 13, 2026, 0, 0, 0}, LogOptions{}).datePrefix(), "");
  EXPECT_EQ(makeLogFields(record, ReadingTime{1, 1, 2027, 0, 0, 0}, LogOptions{}).datePrefix(),
            " 1  1 2027  0  0");
}

}  // namespace
}  // namespace nimbrel
