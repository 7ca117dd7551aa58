#include "stations/station_types.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "support/memory_settings_store.h"

namespace nimbrel {
namespace {

using testsupport::MemorySettingsStore;

StationSelection selectNamed(MemorySettingsStore& store, std::string_view name) {
  store.WriteString("Weather Station Type", "Name", name);
  return selectStation(store);
}

TEST(StationTypes, TheVantageKeepsItsNameAndItsSpeedKeyTakesOnlyItsChoices) {
  MemorySettingsStore store;
  EXPECT_EQ(selectNamed(store, "DAVIS VANTAGE PRO").line.baud, 19200u);  // empty key
  store.WriteString("Weather Station Type", "Davis vp speed", "2400");
  const StationSelection vantage = selectStation(store);
  EXPECT_EQ(vantage.code, 31);
  EXPECT_EQ(vantage.caption, "  -DAVIS Vantage Pro");
  EXPECT_EQ(vantage.line, (SerialLine{2400, Parity::none, 1, 8}));
  for (const auto& [stored, baud] : std::vector<std::pair<const char*, std::uint32_t>>{
           {"14400", 14400}, {"9600", 9600}, {"19200", 19200}, {"4800", 19200}, {"fast", 19200}, {"2400x", 19200}}) {
    store.WriteString("Weather Station Type", "Davis vp speed", stored);
    EXPECT_EQ(selectStation(store).line.baud, baud) << "stored speed \"" << stored << '"';
  }
}

TEST(StationTypes, VantageOptionsAreReadOnlyForTheVantage) {
  MemorySettingsStore store;
  store.WriteString("Weather Station Type", "Vantage pro extra sensors", "yes");
  store.WriteString("Comport", "use tcpip vp", "yes");
  const StationSelection vantage = selectNamed(store, "DAVIS VANTAGE PRO");
  EXPECT_TRUE(vantage.vantageExtraSensors);
  EXPECT_TRUE(vantage.vantageOverTcp);

  const StationSelection other = selectNamed(store, "WMR968");
  EXPECT_FALSE(other.vantageExtraSensors);
  EXPECT_FALSE(other.vantageOverTcp);

  store.WriteString("Comport", "use tcpip vp", "Yes");  // only exactly "yes" is on
  EXPECT_FALSE(selectNamed(store, "DAVIS VANTAGE PRO").vantageOverTcp);
}

TEST(StationTypes, NamesSharingADecoderShareTheCodeAndOnlyTheExactNameMatches) {
  for (const char* name : {"ULTIMETER II", "ULTIMETER 2000", "ULTIMETER", "CONRAD", "stationless", "stationless vws"})
    EXPECT_EQ(stationTypeFromName(name), 10) << name;
  for (const char* name : {"currdatalst", "DAVIS GROW", "DAVIS HEALTH"})
    EXPECT_EQ(stationTypeFromName(name), 15) << name;
  // Near-identical names that select different types.
  for (const auto& [name, code] : {std::pair{"stationless wlk", 401}, {"reinhard", 36}, {"Reinhardt", 39},
                                   {"monitor", 45}, {"monitor new", 55}, {"DAVIS WMII", 4}, {"DAVIS WMII Standard", 6}})
    EXPECT_EQ(stationTypeFromName(name), code) << name;

  for (const char* name : {"davis vantage pro", "Conrad", "wmr968", "WMR968 ", " WMR968", "", "Stationless"})
    EXPECT_EQ(stationTypeFromName(name), 0) << '"' << name << '"';
  MemorySettingsStore store;
  const StationSelection none = selectNamed(store, "Davis Vantage Pro");
  EXPECT_EQ(none.code, 0);
  EXPECT_TRUE(none.caption.empty());
  EXPECT_EQ(none.storedName, "Davis Vantage Pro");
}

TEST(StationTypes, TableIsConsistentAndCaptionOnlyRowsAreNeverSelected) {
  std::set<std::string_view> names;
  std::set<std::uint16_t> codes;
  std::uint16_t previousCode = 0;
  std::vector<std::string_view> captionOnly;
  for (const StationTypeRow& row : stationTypeTable()) {
    EXPECT_GE(row.code, previousCode) << "rows out of code order at " << row.storedName;
    previousCode = row.code;
    codes.insert(row.code);
    EXPECT_TRUE(row.caption.empty() || row.caption.starts_with("  ")) << row.caption;
    EXPECT_EQ(row.line.dataBits, 8);
    EXPECT_TRUE(row.line.stopBits == 1 || row.line.stopBits == 2);
    if (row.storedName.empty()) {
      captionOnly.push_back(row.caption);
      continue;
    }
    EXPECT_TRUE(names.insert(row.storedName).second) << "\"" << row.storedName << "\" appears twice";
    EXPECT_EQ(stationTypeFromName(row.storedName), row.code) << row.storedName;
  }
  EXPECT_EQ(codes.size(), 72u);
  EXPECT_EQ(names.size(), 90u);
  EXPECT_EQ(captionOnly, (std::vector<std::string_view>{"  -Heavy Weather", "  -US Navy 15 sec serial update"}));
  EXPECT_EQ(findStationType(""), nullptr);
  MemorySettingsStore store;
  EXPECT_EQ(selectStation(store).code, 0);  // no "Name" at all
}

TEST(StationTypes, SerialLinesAndSpeedKeysPerModel) {
  struct Case {
    const char *name, *section, *key, *value;
    std::uint32_t baudWhenEmpty, baudWhenSet;
  };
  const Case cases[] = {
      {"DAVIS WMII", "Weather Station Type", "Davis wmii speed", "1200", 2400, 1200},
      {"DAVIS HEALTH", "Weather Station Type", "Davis wmii speed", "1200", 2400, 1200},
      {"vaisala", "Weather Station Type", "Vaisala speed", "4800", 9600, 4800},
      {"climatronics ultrasonic", "Weather Station Type", "climatronics speed", "19200", 9600, 19200},
      {"ASOS", "Weather Station Type asos speed", "speed", "2400", 9600, 2400},
      {"Texas Instruments WR-25", "Weather Station Type", "texas baud rate", "19200", 9600, 19200},
      {"UWS3000ws", "Weather Station Type", "UWS3000ws speed", "19200", 9600, 19200},
      {"Arduino", "Weather Station Type", "universal speed", "115200", 9600, 115200},
  };
  for (const Case& c : cases) {
    MemorySettingsStore store;
    EXPECT_EQ(selectNamed(store, c.name).line.baud, c.baudWhenEmpty) << c.name;
    store.WriteString(c.section, c.key, c.value);
    EXPECT_EQ(selectStation(store).line.baud, c.baudWhenSet) << c.name;
  }
  // The ASOS key lives in its own section; the same key beside "Name" is not it.
  MemorySettingsStore store;
  store.WriteString("Weather Station Type", "speed", "19200");
  EXPECT_EQ(selectNamed(store, "ASOS").line.baud, 9600u);
  // A speed key of one model does not change another.
  store.WriteString("Weather Station Type", "Davis vp speed", "2400");
  EXPECT_EQ(selectNamed(store, "WMR968").line, (SerialLine{9600, Parity::none, 1}));
  // Fixed lines of a few models.
  EXPECT_EQ(selectNamed(store, "WMR900H").line, (SerialLine{9600, Parity::even, 2}));
  EXPECT_EQ(selectNamed(store, "WS2500PC15").line, (SerialLine{19200, Parity::even, 2}));
  EXPECT_EQ(selectNamed(store, "US Navy 1 minute").line.baud, 2400u);
  EXPECT_EQ(selectNamed(store, "Texas Instruments WR-25 38400").line.baud, 38400u);
}

}  // namespace
}  // namespace nimbrel
