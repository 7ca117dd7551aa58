#include "publish/tags/tag_format.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/tag_world.h"

namespace nimbrel {
namespace {

TagDef row(Unit unit, int width, int decimals) { return TagDef{"x", Replacer::r1, unit, width, decimals, true, {}, "x"}; }

TEST(TagFormat, TemperatureInTheOwnersUnitWithItsDegreeSign) {
  TagWriting writing;
  writing.displayUnits = true;
  EXPECT_EQ(formatTag(row(Unit::temperature, 2, 1), 12.34, writing), "12.3°C");
  writing.units.temperature = TemperatureUnit::fahrenheit;
  EXPECT_EQ(formatTag(row(Unit::temperature, 2, 1), 12.34, writing), "54.2°F");
  writing.htmlDegreeSign = true;
  EXPECT_EQ(formatTag(row(Unit::temperature, 2, 1), 12.34, writing), "54.2&deg;F");
  EXPECT_EQ(formatTag(row(Unit::temperatureChange, 1, 1), 2.0, writing), "3.6&deg;F");
  writing.displayUnits = false;
  EXPECT_EQ(formatTag(row(Unit::temperature, 2, 1), 12.34, writing), "54.2");
  // The web units count only when the owner asked for different ones.
  writing.units.webTemperature = TemperatureUnit::celsius;
  EXPECT_EQ(formatTag(row(Unit::temperature, 2, 1), 12.34, writing), "54.2");
  writing.units.webDifferent = true;
  EXPECT_EQ(formatTag(row(Unit::temperature, 2, 1), 12.34, writing), "12.3");
}

TEST(TagFormat, SpeedsPressuresAndRainInEveryUnit) {
  TagWriting writing;
  writing.displayUnits = true;
  const TagDef speed = row(Unit::speed, 1, 1);
  EXPECT_EQ(formatTag(speed, 10.0, writing), "18.5 km/h");
  writing.units.wind = WindUnit::mph;
  EXPECT_EQ(formatTag(speed, 10.0, writing), "11.5 mph");
  writing.units.wind = WindUnit::metresPerSecond;
  EXPECT_EQ(formatTag(speed, 10.0, writing), "5.1 m/s");
  writing.units.wind = WindUnit::knots;
  EXPECT_EQ(formatTag(speed, 10.0, writing), "10.0 kts");
  writing.units.wind = WindUnit::beaufort;
  EXPECT_EQ(formatTag(speed, 10.0, writing), "3 bft");
  EXPECT_EQ(formatTag(row(Unit::pressure, 1, 1), 1013.25, writing), "1013.3 hPa");
  writing.units.pressure = PressureUnit::inches;
  EXPECT_EQ(formatTag(row(Unit::pressure, 1, 1), 1013.25, writing), "29.92 inHg");
  writing.units.pressure = PressureUnit::mb;
  EXPECT_EQ(formatTag(row(Unit::pressure, 1, 1), 1013.25, writing), "1013.3 mb");
  EXPECT_EQ(formatTag(row(Unit::rain, 1, 1), 25.4, writing), "25.4 mm");
  EXPECT_EQ(formatTag(row(Unit::rainRate, 1, 1), 3.0, writing), "3.0 mm/hr");
  writing.units.rain = RainUnit::inches;
  EXPECT_EQ(formatTag(row(Unit::rain, 1, 1), 25.4, writing), "1.00 in.");
  EXPECT_EQ(formatTag(row(Unit::rainRate, 1, 1), 25.4, writing), "1.00 in./hr");
  // The decimal comma touches the number, never the unit's symbol.
  TagDef comma = row(Unit::rain, 1, 1);
  comma.decimalComma = true;
  EXPECT_EQ(formatTag(comma, 25.4, writing), "1,00 in.");
  // A unit the tag's name states stays whatever the owner chose.
  EXPECT_EQ(formatTag(row(Unit::mm, 1, 1), 25.4, writing), "25.4 mm");
  EXPECT_EQ(formatTag(row(Unit::kmh, 1, 1), 10.0, writing), "18.5 km/h");
}

TEST(TagFormat, WidthSignsMinusWordsAndNoData) {
  TagWriting writing;
  EXPECT_EQ(formatTag(row(Unit::none, 5, 1), 3.14159, writing), "  3.1");
  EXPECT_EQ(formatTag(row(Unit::temperature, 1, 1), -0.04, writing), "0.0");
  EXPECT_EQ(formatTag(row(Unit::temperature, 1, 1), TagValue{}, writing), "---");
  EXPECT_EQ(formatTag(row(Unit::temperature, 1, 1), std::nan(""), writing), "---");
  writing.spellMinus = true;
  EXPECT_EQ(formatTag(row(Unit::temperature, 1, 1), -5.24, writing), "minus 5.2");
  EXPECT_EQ(formatTag(row(Unit::none, 1, 0), TagValue("15-06-2026"), writing), "15minus 06minus 2026");
}

TEST(TagFormat, TheTemperatureTagFollowsTheFirstReading) {
  testsupport::TagWorld world;
  EXPECT_EQ(world.text("temp"), "---");
  world.record.outtemp = 12.34;
  world.reading();
  EXPECT_EQ(world.text("temp"), "12.3");
  EXPECT_EQ(world.text("temp", true), "12.3°C");
}

}  // namespace
}  // namespace nimbrel
