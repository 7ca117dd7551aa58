#include "core/unit_settings.h"

#include <gtest/gtest.h>

#include "core/exit_flags.h"
#include "core/ini_store.h"
#include "support/expect_stored.h"
#include "support/settings_test_folder.h"

namespace nimbrel {
namespace {

using testsupport::expectStored;

class UnitSettingsTest : public ::testing::Test {
 protected:
  UnitSettings loadFrom(std::string_view iniText) { return folder_.readMainSettings(iniText, loadsettings); }
  IniStore open(std::string_view name) { return IniStore(folder_ / name, folder_.log()); }

  testsupport::SettingsTestFolder folder_;
};

TEST_F(UnitSettingsTest, EmptyValuesKeepTheDefaults) {
  EXPECT_EQ(loadFrom("[Pressure rate 3 hour]\nthreshold=\n[New year rain reset time]\nnumber=\n"
                     "[New units]\nwind=\nbaro=\n[Weather Station Type]\nDavis vp speed=\n"),
            UnitSettings{});
}

TEST_F(UnitSettingsTest, ResetHoursAndTheNineAmDay) {
  EXPECT_EQ(loadFrom("[Reset times]\noption=9am\n").resets.dayReset, DayResetTime::nineAm);
  for (const char* notExactly : {"9AM", "9 am"})
    EXPECT_EQ(loadFrom(std::string("[Reset times]\noption=") + notExactly + "\n").resets.dayReset,
              DayResetTime::midnight)
        << notExactly;

  // An empty rain hour follows the daily hour; hours and months out of range are not taken.
  const UnitSettings empty = loadFrom("[New daily reset time]\nnumber=9\nrain number=\n");
  EXPECT_EQ(empty.resets.dailyResetHour, 9);
  EXPECT_EQ(empty.resets.rainResetHour, 9);
  EXPECT_EQ(loadFrom("[New daily reset time]\nnumber=9\nrain number=6\n").resets.rainResetHour, 6);
  const UnitSettings outOfRange = loadFrom("[New daily reset time]\nnumber=24\n[New year rain reset time]\nnumber=13\n");
  EXPECT_EQ(outOfRange.resets.dailyResetHour, 0);
  EXPECT_EQ(outOfRange.resets.rainResetHour, 0);
  EXPECT_EQ(outOfRange.resets.rainSeasonStartMonth, 1);
}

TEST_F(UnitSettingsTest, SwitchesAreOnOnlyForExactlyYes) {
  const UnitSettings loaded = loadFrom(
      "[New units]\nuse qfe=Yes\nicon temp=true\nicon wind=yes\nshow windrun=yes \n[Units5]\nbft on summary=yes\n");
  EXPECT_FALSE(loaded.display.useQfe);
  EXPECT_FALSE(loaded.display.iconTemp);
  EXPECT_TRUE(loaded.display.iconWind);
  EXPECT_FALSE(loaded.display.showWindrun);
  EXPECT_TRUE(loaded.display.bftOnSummary);
}

TEST_F(UnitSettingsTest, ABadNumberOrUnknownUnitWordKeepsItsDefaultAndLaterKeysStillLoad) {
  const UnitSettings loaded = loadFrom(
      "[Height above sea level]\nvalue=about 120\n[Main graph temp lift factor]\nvalue=3\n"
      "[Max wind gauge]\nnumber=60\n[New units]\nwind=kts\n[new rain storage]\ndailyrain new=1,5\n"
      "monthlyrain new=42.25\n");
  EXPECT_EQ(loaded.heightAboveSeaLevel, 0);
  EXPECT_EQ(loaded.display.graphTempLiftFactor, 3);
  EXPECT_EQ(loaded.display.maxWindGauge, 60);
  EXPECT_EQ(loaded.units.wind, WindUnit::knots);
  EXPECT_EQ(loaded.running.dailyRainMm, 0);
  EXPECT_EQ(loaded.running.monthlyRainMm, 42.25);

  const UnitSettings words = loadFrom("[New units]\nwind=KTS\ntemp=fahrenheit\nbaro=inches\nrain=inches\n");
  EXPECT_EQ(words.units.wind, WindUnit::kmh);
  EXPECT_EQ(words.units.temperature, TemperatureUnit::celsius);
  EXPECT_EQ(words.units.pressure, PressureUnit::inches);
  EXPECT_EQ(words.units.rain, RainUnit::inches);
}

TEST_F(UnitSettingsTest, SaveWritesWordsAndLoadsBackTheSame) {
  UnitSettings settings;
  settings.resets = {DayResetTime::nineAm, 9, 10, 7};
  settings.units.wind = WindUnit::beaufort;
  settings.units.webWind = WindUnit::metresPerSecond;
  settings.units.temperature = TemperatureUnit::fahrenheit;
  settings.units.pressure = PressureUnit::kpa;
  settings.units.webDate = UnitSystem::usa;
  settings.units.webDifferent = true;
  settings.wind.chillFromGust = true;
  settings.display.bftUnderSpeedDial = true;
  settings.heightAboveSeaLevel = -12;
  settings.station.name = "DAVIS VANTAGE PRO";
  settings.port.tcpipVpAddress = "192.0.2.7";
  settings.connections.ftpPassword = "p=w;\"x\"";
  settings.running.yearlyRainMm = 1234.5;
  settings.running.dailySolarCount = 17;

  IniStore store = open("NIMBREL.INI");
  savesettings(settings, store);
  expectStored(store, {{"New units", "wind", "bft"}, {"New units", "webwind", "ms"}, {"New units", "temp", "faren"},
                       {"New units", "baro", "kpa"}, {"New units", "webdate", "usa"}, {"Reset times", "option", "9am"},
                       {"New units", "use chill gust", "yes"}, {"New units", "use qfe", "no"},
                       {"new rain storage", "yearlyrain new", "1234.5"}});
  ASSERT_TRUE(store.flush());
  EXPECT_EQ(loadsettings(open("NIMBREL.INI")), settings);
}

TEST_F(UnitSettingsTest, ExitFlagsAreRaisedAtExitAndLoweredAtStart) {
  IniStore registry = open("nimbrelftp.ini");
  ASSERT_TRUE(raiseCompanionExitFlags(registry));
  expectStored(open("nimbrelftp.ini"),
               {{"latest wmr100 data", "exit realtime", "yes"}, {"latest wmr100 data", "exit tethering", "yes"},
                {"Web cam capture", "exit now", "yes"}, {"Client ftp2", "exit", "close"},
                {"watchdog", "close now", "yes"}});
  ASSERT_TRUE(clearCompanionExitFlags(registry));
  expectStored(open("nimbrelftp.ini"), {{"latest wmr100 data", "exit 1 wire reader2", "no"},
                                        {"Client ftp", "exit", "open"}, {"watchdog", "close now", "no"}});
}

}  // namespace
}  // namespace nimbrel
