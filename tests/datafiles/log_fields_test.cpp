#include "datafiles/log_fields.h"

#include <gtest/gtest.h>

#include "datafiles/log_context.h"
#include "log_test_world.h"

namespace nimbrel {
namespace {

constexpr ReadingTime kAutumnMorning{14, 11, 2026, 9, 5, 0};
constexpr UnitSystem kMetric = UnitSystem::metric;
constexpr UnitSystem kUsa = UnitSystem::usa;

LogOptions optionsIn(UnitSystem units, bool heatIndexFromStation = false) {
  LogOptions options;
  options.units = units;
  options.heatIndexFromStation = heatIndexFromStation;
  return options;
}

TEST(LogFieldTexts, TemperaturesFromZeroToTenGetALeadingZeroAfterRoundingAndNeverAMinusZero) {
  for (const auto& [celsius, text] : {std::pair{0.0, "00.0"}, {5.25, "05.3"}, {9.95, "10.0"}, {-0.5, "-0.5"},
                                      {-12.34, "-12.3"}, {-0.04, "00.0"}})
    EXPECT_EQ(logTemperatureText(celsius, kMetric), text) << celsius;
  // Fahrenheit: x 1.8 + 32, no leading zero.
  EXPECT_EQ(logTemperatureText(-12.5, kUsa), "9.5");
  EXPECT_EQ(logTemperatureText(-20.0, kUsa), "-4.0");
}

TEST(LogFieldTexts, HumidityDirectionWindAndBarometerPadding) {
  // A humidity gets one blank only, however short; a direction fills three columns.
  for (const auto& [percent, text] : {std::pair<std::uint16_t, const char*>{5, " 5"}, {65, " 65"}, {100, "100"}})
    EXPECT_EQ(logHumidityText(percent), text) << percent;
  for (const auto& [degrees, text] : {std::pair<std::uint16_t, const char*>{0, "  0"}, {9, "  9"}, {10, " 10"}, {359, "359"}})
    EXPECT_EQ(logDirectionText(degrees), text) << degrees;
  EXPECT_EQ(logWindText(0.0, kMetric), "0.0");
  EXPECT_EQ(logWindText(12.34, kMetric), "12.3");
  EXPECT_EQ(logWindText(10.0, kUsa), "11.5");
  // A four-character metric text gets a blank in front.
  for (const auto& [hPa, units, text] : {std::tuple{1013.25, kMetric, "1013.3"}, {999.94, kMetric, "999.9"},
                                         {99.5, kMetric, " 99.5"}, {1013.25, kUsa, "29.921"}, {300.0, kUsa, " 8.859"}})
    EXPECT_EQ(logBarometerText(hPa, units), text) << hPa;
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

  EXPECT_EQ(logRainLastMinuteText(0.2, kMetric, 31), "0.2");
  EXPECT_EQ(logRainLastMinuteText(0.2, kUsa, 31), " 0.008");
  EXPECT_EQ(logRainLastMinuteText(0.2, kUsa, 10), " 0.01");
  EXPECT_EQ(logRainLastMinuteText(50.0, kUsa, 31), " 1.969");
  EXPECT_EQ(logRainTotalText(0.0, 4, kMetric), " 0.0");  // yearly rain: width 4
}

// The metric line is checked whole in the monthly log's own tests.
TEST(LogFields, AHandWorkedUsLine) {
  LiveRecord record;
  testsupport::fillAutumnMinute(record);
  EXPECT_EQ(makeLogFields(record, kAutumnMorning, optionsIn(kUsa)).line(),
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
  EXPECT_EQ(makeLogFields(record, kAutumnMorning, optionsIn(kMetric, true))[LogColumn::heatindex],
            "7.0");  // width 2: no leading zero
  EXPECT_EQ(makeLogFields(record, kAutumnMorning, optionsIn(kUsa, true))[LogColumn::heatindex], "44.6");
}

TEST(LogFields, AlternativePressureBelow500AndOutOfRangeDewPoint) {
  // The humidity stays 0, as without a hygrometer: the dew point gets its sentinel.
  LiveRecord record;
  record.barometer = 0.0;
  record.barometeralt = 998.44;
  record.outtemp = 20.0;
  const LogFields fields = makeLogFields(record, kAutumnMorning, LogOptions{});
  EXPECT_EQ(fields[LogColumn::barometer], "998.4");
  EXPECT_EQ(fields[LogColumn::dewpoint], "50.0");
  EXPECT_EQ(fields[LogColumn::humidity], " 0");
}

TEST(LogFields, AnUnsetTimeGivesNoDatePrefix) {
  const LiveRecord record;
  EXPECT_EQ(makeLogFields(record, ReadingTime{}, LogOptions{}).datePrefix(), "");
  EXPECT_EQ(makeLogFields(record, ReadingTime{31, 13, 2026, 0, 0, 0}, LogOptions{}).datePrefix(), "");
  EXPECT_EQ(makeLogFields(record, ReadingTime{1, 1, 2027, 0, 0, 0}, LogOptions{}).datePrefix(), " 1  1 2027  0  0");
  EXPECT_EQ(makeLogFields(record, kAutumnMorning, LogOptions{}).datePrefix(), "14 11 2026  9  5");
}

}  // namespace
}  // namespace nimbrel
