// A number in the settings that cannot mean anything (an hour of 25, a
// negative interval, a limit "hot", a port "abc") gives the setting's default
// and one error-log line naming the section, the key, the text and the value
// used, whichever part of the program reads it.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>

#include "core/ini_store.h"
#include "core/unit_settings.h"
#include "datafiles/clientraw_settings.h"
#include "processing/validation/absolute_limits.h"
#include "stations/port_settings.h"
#include "stations/station_types.h"
#include "support/settings_test_folder.h"

namespace nimbrel {
namespace {

using Reader = std::function<double(const SettingsStore&)>;

struct BadNumber {
  const char* section;
  const char* key;
  const char* stored;
  Reader read;
  double used;      // the setting's default
  const char* wanted;  // what the log line says the setting should be
};

const BadNumber kBadNumbers[] = {
    {"New daily reset time", "number", "25", [](auto& s) { return loadsettings(s).resets.dailyResetHour; }, 0,
     "a whole number from 0 to 23"},
    {"New year rain reset time", "number", "0", [](auto& s) { return loadsettings(s).resets.rainSeasonStartMonth; }, 1,
     "a whole number from 1 to 12"},
    {"Comport", "duration", "-3", [](auto& s) { return loadsettings(s).port.releaseDuration; }, 10,
     "a whole number of at least 1"},
    {"new rain storage", "yearlyrain new", "-12.5", [](auto& s) { return loadsettings(s).running.yearlyRainMm; }, 0,
     "a number of at least 0"},
    {"clientraw", "interval seconds", "-5", [](auto& s) { return readClientrawOptions(s, false).intervalSeconds; }, 10,
     "a whole number from 1 to 3600"},
    {"New readings limits", "max temp", "hot", [](auto& s) { return readAbsoluteLimits(s).maxTemp; }, 60,
     "a whole number from -32768 to 32767"},
    {"Comport", "use tcpip vp port", "abc", [](auto& s) { return readPortSettings(s).tcpipVpPort; }, 22222,
     "a whole number from 1 to 65535"},
    {"ip data", "port", "70000", [](auto& s) { return readPortSettings(s).udp.port; }, 22222,
     "a whole number from 1 to 65535"},
    {"Comport", "number", "17", [](auto& s) { return readPortSettings(s).comNumber; }, 1, "one of 1, 2, 3,"},
    {"Weather Station Type", "Davis vp speed", "9600 baud",
     [](auto& s) { return serialLineFor(*findStationType("DAVIS VANTAGE PRO"), s).baud; }, 19200,
     "one of 19200, 14400, 9600, 2400"},
};

TEST(SettingsNumbers, AnUnusableNumberGivesTheDefaultAndOneLineSayingSo) {
  for (const BadNumber& bad : kBadNumbers) {
    SCOPED_TRACE(std::string(bad.section) + " / " + bad.key);
    testsupport::SettingsTestFolder folder;
    folder.write("NIMBREL.INI", fmt::format("[{}]\n{}={}\n", bad.section, bad.key, bad.stored));
    IniStore store(folder / "NIMBREL.INI", folder.log());
    EXPECT_EQ(bad.read(store), bad.used);
    EXPECT_EQ(bad.read(store), bad.used);  // read again: nothing more in the log
    const std::string log = folder.logText();
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 1) << log;
    const std::string where = fmt::format("section \"{}\" key \"{}\": \"{}\" is not ", bad.section, bad.key, bad.stored);
    EXPECT_NE(log.find(where + bad.wanted), std::string::npos) << log;
    EXPECT_NE(log.find(fmt::format("; using {}\n", bad.used)), std::string::npos) << log;
  }
}

TEST(SettingsNumbers, UsableAndEmptyNumbersSayNothing) {
  testsupport::SettingsTestFolder folder;
  folder.write("NIMBREL.INI",
               "[New daily reset time]\nnumber=23\nrain number=\n[clientraw]\ninterval seconds=3600\n"
               "[New readings limits]\nmin temp=-40\n[Comport]\nuse tcpip vp port=65535\nnumber=20\n");
  IniStore store(folder / "NIMBREL.INI", folder.log());
  const UnitSettings units = loadsettings(store);
  EXPECT_EQ(units.resets.dailyResetHour, 23);
  EXPECT_EQ(units.resets.rainResetHour, 23);
  EXPECT_EQ(readClientrawOptions(store, false).intervalSeconds, 3600);
  EXPECT_EQ(readAbsoluteLimits(store).minTemp, -40);
  EXPECT_EQ(readPortSettings(store).tcpipVpPort, 65535);
  EXPECT_EQ(readPortSettings(store).comNumber, kOneWirePrinterPort);
  EXPECT_EQ(folder.logText(), "");
}

}  // namespace
}  // namespace nimbrel
