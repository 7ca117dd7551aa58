#include "core/unit_settings.h"

#include <gtest/gtest.h>

#include "core/exit_flags.h"
#include "core/ini_store.h"
#include "support/settings_test_folder.h"

namespace nimbrel {
namespace {

using testsupport::SettingsTestFolder;

class UnitSettingsTest : public ::testing::Test {
 protected:
  UnitSettings loadFrom(std::string_view iniText) {
    folder_.write("NIMBREL.INI", iniText);
    IniStore store(folder_ / "NIMBREL.INI", folder_.log());
    return loadsettings(store);
  }

  SettingsTestFolder folder_;
};

TEST_F(UnitSettingsTest, EmptyValuesKeepTheDefaults) {
  const UnitSettings loaded = loadFrom(
      "[Pressure rate 3 hour]\nthreshold=\n[New year rain reset time]\nnumber=\n"
      "[New units]\nwind=\nbaro=\n[Weather Station Type]\nDavis vp speed=\n");
  EXPECT_EQ(loaded, UnitSettings{});
  EXPECT_EQ(loaded.pressureTrend.threshold, 1);
  EXPECT_EQ(loaded.resets.rainSeasonStartMonth, 1);
  EXPECT_EQ(loaded.units.wind, WindUnit::kmh);
  EXPECT_EQ(loaded.station.davisVpSpeed, 19200);
}

TEST_F(UnitSettingsTest, ResetTimeIsNineOnlyForExactly9am) {
  EXPECT_EQ(loadFrom("[Reset times]\noption=9am\n").resets.dayReset, DayResetTime::nineAm);
  EXPECT_EQ(loadFrom("[Reset times]\noption=9AM\n").resets.dayReset, DayResetTime::midnight);
  EXPECT_EQ(loadFrom("[Reset times]\noption=9 am\n").resets.dayReset, DayResetTime::midnight);
}

TEST_F(UnitSettingsTest, RainResetHourFollowsTheDailyHourWhenEmpty) {
  const UnitSettings empty = loadFrom("[New daily reset time]\nnumber=9\nrain number=\n");
  EXPECT_EQ(empty.resets.dailyResetHour, 9);
  EXPECT_EQ(empty.resets.rainResetHour, 9);
  const UnitSettings own = loadFrom("[New daily reset time]\nnumber=9\nrain number=6\n");
  EXPECT_EQ(own.resets.rainResetHour, 6);
  const UnitSettings outOfRange =
      loadFrom("[New daily reset time]\nnumber=24\n[New year rain reset time]\nnumber=13\n");
  EXPECT_EQ(outOfRange.resets.dailyResetHour, 0);
  EXPECT_EQ(outOfRange.resets.rainResetHour, 0);
  EXPECT_EQ(outOfRange.resets.rainSeasonStartMonth, 1);
}

TEST_F(UnitSettingsTest, SwitchesAreOnOnlyForExactlyYes) {
  const UnitSettings loaded = loadFrom(
      "[New units]\nuse qfe=Yes\nicon temp=true\nicon wind=yes\nshow windrun=yes \n"
      "[Units5]\nbft on summary=yes\n");
  EXPECT_FALSE(loaded.display.useQfe);
  EXPECT_FALSE(loaded.display.iconTemp);
  EXPECT_TRUE(loaded.display.iconWind);
  EXPECT_FALSE(loaded.display.showWindrun);
  EXPECT_TRUE(loaded.display.bftOnSummary);
}

TEST_F(UnitSettingsTest, BadNumberKeepsItsDefaultAndLaterKeysStillLoad) {
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
}

TEST_F(UnitSettingsTest, UnknownUnitWordKeepsTheDefault) {
  const UnitSettings loaded = loadFrom("[New units]\nwind=KTS\ntemp=fahrenheit\nbaro=inches\nrain=inches\n");
  EXPECT_EQ(loaded.units.wind, WindUnit::kmh);
  EXPECT_EQ(loaded.units.temperature, TemperatureUnit::celsius);
  EXPECT_EQ(loaded.units.pressure, PressureUnit::inches);
  EXPECT_EQ(loaded.units.rain, RainUnit::inches);
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

  IniStore store(folder_ / "NIMBREL.INI", folder_.log());
  savesettings(settings, store);
  EXPECT_EQ(store.ReadString("New units", "wind"), "bft");
  EXPECT_EQ(store.ReadString("New units", "webwind"), "ms");
  EXPECT_EQ(store.ReadString("New units", "temp"), "faren");
  EXPECT_EQ(store.ReadString("New units", "baro"), "kpa");
  EXPECT_EQ(store.ReadString("New units", "webdate"), "usa");
  EXPECT_EQ(store.ReadString("Reset times", "option"), "9am");
  EXPECT_EQ(store.ReadString("New units", "use chill gust"), "yes");
  EXPECT_EQ(store.ReadString("New units", "use qfe"), "no");
  EXPECT_EQ(store.ReadString("new rain storage", "yearlyrain new"), "1234.5");
  ASSERT_TRUE(store.flush());

  IniStore reread(folder_ / "NIMBREL.INI", folder_.log());
  EXPECT_EQ(loadsettings(reread), settings);
}

TEST_F(UnitSettingsTest, ExitFlagsAreRaisedAtExitAndLoweredAtStart) {
  IniStore registry(folder_ / "nimbrelftp.ini", folder_.log());
  ASSERT_TRUE(raiseCompanionExitFlags(registry));
  IniStore afterExit(folder_ / "nimbrelftp.ini", folder_.log());
  EXPECT_EQ(afterExit.ReadString("latest wmr100 data", "exit realtime"), "yes");
  EXPECT_EQ(afterExit.ReadString("latest wmr100 data", "exit tethering"), "yes");
  EXPECT_EQ(afterExit.ReadString("Web cam capture", "exit now"), "yes");
  EXPECT_EQ(afterExit.ReadString("Client ftp2", "exit"), "close");
  EXPECT_EQ(afterExit.ReadString("watchdog", "close now"), "yes");

  ASSERT_TRUE(clearCompanionExitFlags(registry));
  IniStore afterStart(folder_ / "nimbrelftp.ini", folder_.log());
  EXPECT_EQ(afterStart.ReadString("latest wmr100 data", "exit 1 wire reader2"), "no");
  EXPECT_EQ(afterStart.ReadString("Client ftp", "exit"), "open");
  EXPECT_EQ(afterStart.ReadString("watchdog", "close now"), "no");
}

}  // namespace
}  // namespace nimbrel
