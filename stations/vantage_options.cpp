#include "stations/vantage_options.h"

#include <string>

#include "core/settings_fields.h"
#include "core/settings_store.h"

namespace nimbrel {
namespace {

constexpr const char* kSection = "Weather Station Type";

}  // namespace

VantageOptions readVantageOptions(const SettingsStore& s) {
  VantageOptions o;
  FieldLoader load(s);
  load.onOff(kSection, "use revb", o.revb);
  load.onOff(kSection, "Vantage pro extra sensors", o.extraSensors);
  int maxWind = static_cast<int>(o.maxWindKnots);
  load.integer("New readings limits", "max speed", maxWind, 1);
  o.maxWindKnots = maxWind;
  load.integer(kSection, "vp inside hum offset", o.insideHumidityOffset);
  for (int i = 1; i <= 7; ++i)
    load.integer(kSection, "vp extra temp offset " + std::to_string(i), o.extraTempOffsetTenths[i]);
  for (int i = 1; i <= 3; ++i)
    load.integer(kSection, "vp extra hum offset " + std::to_string(i), o.extraHumidityOffset[i]);
  load.integer(kSection, "vp rain clicks per inch", o.rainClicksPerInch);
  if (o.rainClicksPerInch <= 0) o.rainClicksPerInch = 100;  // 0 also means a 0.01 in bucket
  load.onOff(kSection, "vp no solar", o.solarOff);
  load.onOff(kSection, "vp early high gust check", o.earlyHighGustCheck);
  load.onOff(kSection, "raw data logging", o.rawLogging);
  return o;
}

}  // namespace nimbrel
