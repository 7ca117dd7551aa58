#include "datafiles/clientraw_settings.h"

#include <algorithm>
#include <string>

#include "core/settings_fields.h"
#include "core/settings_store.h"

namespace nimbrel {
namespace {

// A switch whose empty value means `whenEmpty`; otherwise only "yes" is on.
bool switchOr(const SettingsStore& store, std::string_view key, bool whenEmpty) {
  const std::string stored = store.ReadString(kClientrawSection, key);
  return stored.empty() ? whenEmpty : stored == "yes";
}

}  // namespace

ClientrawOptions readClientrawOptions(const SettingsStore& mainSettings, bool stationRateIsPerHour) {
  ClientrawOptions options;
  FieldLoader loader(mainSettings);
  options.writingEnabled = switchOr(mainSettings, "writing of clientraw is enabled", true);
  loader.integer(kClientrawSection, "interval seconds", options.intervalSeconds, 1, kMaxClientrawIntervalSeconds);
  loader.onOff(kClientrawSection, "temperature two decimals", options.temperatureTwoDecimals);
  options.rainRatePerHour = switchOr(mainSettings, "rain rate per hour", stationRateIsPerHour);
  loader.onOff(kClientrawSection, "use alternative icon", options.alternativeIcon);
  std::string secondFolder;
  loader.text(kClientrawSection, "second folder", secondFolder);
  if (mainSettings.readSwitch(kClientrawSection, "copy to second folder") && !secondFolder.empty())
    options.secondFolder = secondFolder;
  loader.onOff(kClientrawSection, "copy customclientraw", options.copyCustomClientraw);
  return options;
}

ClientrawInterval::ClientrawInterval(int intervalSeconds)
    : interval_(std::max(intervalSeconds, 1)), ticksSinceWrite_(interval_ - 1) {}

bool ClientrawInterval::due() {
  if (++ticksSinceWrite_ < interval_) return false;
  ticksSinceWrite_ = 0;
  return true;
}

void ClientrawInterval::setInterval(int intervalSeconds) {
  interval_ = std::max(intervalSeconds, 1);
  ticksSinceWrite_ = std::min(ticksSinceWrite_, interval_ - 1);
}

}  // namespace nimbrel
