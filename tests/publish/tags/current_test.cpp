#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <string>

#include "publish/tags/comfort_formulas.h"
#include "publish/tags/current_values.h"
#include "support/tag_world.h"

namespace nimbrel {
namespace {

using testsupport::TagWorld;

TEST(CurrentFormulas, AgreeWithPublishedValues) {
  // Environment Canada's table: 30 °C with a 15 °C dew point is humidex 34.
  EXPECT_NEAR(humidex(30, 15), 34.0, 0.1);
  // Stull's worked example: 20 °C at 50 % has a wet bulb of 13.7 °C.
  EXPECT_NEAR(wetBulb(20, 50), 13.7, 0.1);
  // Dry air of the standard atmosphere at sea level.
  EXPECT_NEAR(current::airDensity(15, 0, 1013.25), 1.225, 0.001);
  EXPECT_NEAR(current::densityAltitudeFeet(1.225), 0.0, 1e-6);
  EXPECT_GT(current::densityAltitudeFeet(1.1), 3000);
  EXPECT_NEAR(current::absoluteHumidity(20, 100), 17.3, 0.2);
  EXPECT_NEAR(current::cloudBaseMetres(20, 12), 1000, 1e-9);
  // Burn time holds only inside 0 < UV < 25.
  EXPECT_NEAR(*current::burnTimeMinutes(7), 16.0, 1e-9);
  EXPECT_FALSE(current::burnTimeMinutes(0));
  EXPECT_FALSE(current::burnTimeMinutes(25));
  EXPECT_TRUE(current::burnTimeMinutes(24.9));
  // Thom's index equals the temperature in saturated air.
  EXPECT_NEAR(current::thomDiscomfort(30, 100), 30.0, 1e-9);
  // The sun stands high at noon near the June solstice in mid-latitudes.
  const double noon = current::sunElevation(SystemTime(std::chrono::sys_days{std::chrono::year{2026} / 6 / 21} + std::chrono::hours{12}), 51.5, 0.0);
  EXPECT_GT(noon, 55);
  EXPECT_LT(noon, 63);
}

TEST(CurrentFormulas, TrendBandsAndWordTables) {
  using current::Trend;
  EXPECT_EQ(current::classifyChange(0.5, 1, 1, 4, 1, 1, 4), Trend::steady);
  EXPECT_EQ(current::classifyChange(1, 1, 1, 4, 1, 1, 4), Trend::rise);
  EXPECT_EQ(current::classifyChange(4, 1, 1, 4, 1, 1, 4), Trend::rise);
  EXPECT_EQ(current::classifyChange(4.1, 1, 1, 4, 1, 1, 4), Trend::rapidRise);
  EXPECT_EQ(current::classifyChange(-1.5, 1, 2, 4, 1, 2, 4), Trend::slowFall);
  EXPECT_EQ(current::pressureTrendWord(Trend::slowFall, WordLanguage::german), "leicht fallend");
  // Languages without a "slowly" word use the plain one.
  EXPECT_EQ(current::pressureTrendWord(Trend::slowRise, WordLanguage::french), "MONTE");
  EXPECT_EQ(current::pressureTrendWord(Trend::rapidFall, WordLanguage::spanish), "BAJANDO RAPIDAMENTE");
  EXPECT_FALSE(current::consoleTrend(7));
  EXPECT_EQ(current::uvWords(2.4), "Low");
  EXPECT_EQ(current::uvWords(11), "Extreme");
  EXPECT_EQ(current::beaufortWords(12), "Hurricane");
  EXPECT_EQ(current::beaufortWords(13), "---");
  EXPECT_EQ(current::compassShort(16, WordLanguage::english), "N");
  EXPECT_EQ(current::compassLong(4, WordLanguage::german), "Ost");
}

class CurrentTags : public ::testing::Test {
 protected:
  void SetUp() override {
    world.record.outtemp = 21.5;
    world.record.outhum = 60;
    world.record.windspeed = 10;
    world.record.windgust = 15;
    world.record.winddir = 225;
    world.record.barometer = 1010;
    world.record.dailyrain = 3.2;
    world.record.uv = 7;
    world.reading();
  }

  // A monthly-log line at 15 June 2026, hh:mm.
  void logLine(std::ofstream& out, int hour, int minute, double baro, double rain) {
    out << "15 6 2026 " << hour << ' ' << minute << " 20.0 60 12.0 " << baro << " 5.0 8.0 225 " << rain
        << " 0.0 0.0 0.0 20.0\r\n";
  }

  TagWorld world;
};

TEST_F(CurrentTags, ReadingsUnitFormsAndCommaForms) {
  EXPECT_EQ(world.text("temp,"), "21,5");
  EXPECT_EQ(world.text("tempinfaren"), "70.7");
  EXPECT_EQ(world.text("wholeroundedtempfaren"), "71");
  EXPECT_EQ(world.text("avspeedinkmh"), "18.5");
  EXPECT_EQ(world.text("baroinusa2dp"), "29.83");
  EXPECT_EQ(world.text("baroinusa"), "29.825");
  EXPECT_EQ(world.text("beaufortnum"), "3");
  EXPECT_EQ(world.text("bftspeedtext"), "Gentle breeze");
  EXPECT_EQ(world.text("humpercent"), "60%");
  EXPECT_EQ(world.text("burntime"), "16");
  EXPECT_EQ(world.text("uomtemp"), "°C");
  EXPECT_EQ(world.text("uomwind"), "km/h");
  world.units.units.wind = WindUnit::mph;
  EXPECT_EQ(world.text("uomdistance"), "miles");
  EXPECT_EQ(world.text("gstspd,", false), "17,3");
}

TEST_F(CurrentTags, NothingBeforeTheFirstReading) {
  TagWorld fresh;
  for (const char* name : {"temp", "temp,", "dirlabel", "burntime", "feelslike", "humpercent", "UVdescription"})
    EXPECT_EQ(fresh.text(name), "---") << name;
}

TEST_F(CurrentTags, CompassWordsFollowTheLanguage) {
  EXPECT_EQ(world.text("dirlabel"), "SW");
  EXPECT_EQ(world.text("winddirinwords"), "South westerly");
  EXPECT_EQ(world.text("dirlabeldanish"), "SV");
  EXPECT_EQ(world.text("winddirinwordsdutch"), "Zuidwest");
  world.record.winddir = 90;
  world.options.language = WordLanguage::german;
  EXPECT_EQ(world.text("dirlabel"), "O");
  EXPECT_EQ(world.text("winddirinwords"), "Ost");
  EXPECT_EQ(world.text("dirlabelfrench"), "E");
}

TEST_F(CurrentTags, RainRateIsPerHourWhateverTheStationStores) {
  world.record.rainrate = 0.1;  // no station chosen: per minute
  EXPECT_EQ(world.text("currentrainratehr"), "6.0");
  EXPECT_EQ(world.text("currentrainrate"), "0.10");
  world.units.station.name = "DAVIS VANTAGE PRO";
  world.record.rainrate = 6;  // the Vantage's rate is per hour
  EXPECT_EQ(world.text("currentrainratemm"), "6.0");
  world.settings.WriteString("clientraw", "rain rate per hour", "no");
  EXPECT_EQ(world.text("currentrainratehr"), "360.0");
  world.units.units.rain = RainUnit::inches;
  world.settings.WriteString("clientraw", "rain rate per hour", "yes");
  EXPECT_EQ(world.text("currentrainratehr"), "0.24");
}

TEST_F(CurrentTags, PressureTrendsFromConsoleAndLog) {
  EXPECT_EQ(world.text("pressuretrendname3hour"), "---");  // no log yet
  EXPECT_EQ(world.text("hourrn"), "---");
  {
    std::ofstream log(world.folder.path() / "62026lg.txt", std::ios::binary);
    log << "day month year hour minute temp hum dew baro wind gust dir rain daily month year heat\r\n";
    logLine(log, 11, 30, 1015.5, 0.0);
    logLine(log, 13, 20, 1011.0, 0.4);  // 70 minutes ago: outside the hour's rain
    logLine(log, 13, 40, 1010.5, 0.6);
    logLine(log, 14, 29, 1010.0, 0.2);
  }
  EXPECT_EQ(world.text("pressuretrendname3hour"), "Falling rapidly");  // 5.5 hPa in 3 hours
  EXPECT_EQ(world.text("trend"), "-1.0");
  EXPECT_EQ(world.text("hourrn"), "0.8");
  EXPECT_EQ(world.text("avdir10minute"), "225");
  EXPECT_EQ(world.text("currentmonthtodatefilename"), "62026lg.txt");
  // Without the three-hour rule a Vantage's own trend is the word.
  world.units.station.name = "DAVIS VANTAGE PRO";
  world.record.barotrend = 20;
  world.options.language = WordLanguage::german;
  EXPECT_EQ(world.text("pressuretrendname"), "leicht steigend");
  world.units.pressureTrend.useThreeHourRule = true;
  EXPECT_EQ(world.text("pressuretrendname"), "stark fallend");
}

}  // namespace
}  // namespace nimbrel
