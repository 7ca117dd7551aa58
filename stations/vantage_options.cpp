#include "stations/vantage_options.h"

#include <string>

#include "core/number_format.h"
#include "core/settings_store.h"

namespace nimbrel {
namespace {

constexpr const char* kSection = "Weather Station Type";

int readInt(const SettingsStore& s, const char* section, const std::string& key, int fallback) {
  long long value = 0;
  return parseInt(s.ReadString(section, key), value) ? static_cast<int>(value) : fallback;
}

}  // namespace

VantageOptions readVantageOptions(const SettingsStore& s) {
  VantageOptions o;
  o.revb = s.readSwitch(kSection, "use revb");
  o.extraSensors = s.readSwitch(kSection, "Vantage pro extra sensors");
  o.maxWindKnots = readInt(s, "New readings limits", "max speed", 150);
  o.insideHumidityOffset = readInt(s, kSection, "vp inside hum offset", 0);
  for (int i = 1; i <= 7; ++i)
    o.extraTempOffsetTenths[i] = readInt(s, kSection, "vp extra temp offset " + std::to_string(i), 0);
  for (int i = 1; i <= 3; ++i)
    o.extraHumidityOffset[i] = readInt(s, kSection, "vp extra hum offset " + std::to_string(i), 0);
  o.rainClicksPerInch = readInt(s, kSection, "vp rain clicks per inch", 100);
  if (o.rainClicksPerInch <= 0) o.rainClicksPerInch = 100;
  o.solarOff = s.readSwitch(kSection, "vp no solar");
  o.earlyHighGustCheck = s.readSwitch(kSection, "vp early high gust check");
  o.rawLogging = s.readSwitch(kSection, "raw data logging");
  return o;
}

}  // namespace nimbrel
