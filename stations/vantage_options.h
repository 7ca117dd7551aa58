#pragma once
// The owner's settings that the Vantage driver applies while decoding.

#include <array>
#include <cstdint>

namespace nimbrel {

class SettingsStore;

struct VantageOptions {
  bool revb = false;             // "use revb": packets carry the barometric trend at byte 3
  bool extraSensors = false;     // "Vantage pro extra sensors"
  double maxWindKnots = 150.0;   // "New readings limits"/"max speed": faster readings are taken as 0
  int insideHumidityOffset = 0;  // percent
  std::array<int, 8> extraTempOffsetTenths{};  // [1] ... [7], tenths of a degree
  std::array<int, 4> extraHumidityOffset{};    // [1] ... [3], percent
  int rainClicksPerInch = 100;                 // 0 in the settings also means 100
  bool solarOff = false;
  bool earlyHighGustCheck = false;  // ignore a console daily high gust of the early morning late in the day
  bool rawLogging = false;
};

// Reads the options from the main settings. Keys of section
// "Weather Station Type": "use revb", "Vantage pro extra sensors",
// "vp inside hum offset", "vp extra temp offset 1" ... "7" (tenths of a
// degree), "vp extra hum offset 1" ... "3", "vp rain clicks per inch",
// "vp no solar", "vp early high gust check", "raw data logging"; the wind
// limit is "max speed" of "New readings limits" (knots).
VantageOptions readVantageOptions(const SettingsStore& settings);

}  // namespace nimbrel
