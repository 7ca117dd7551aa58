#include "processing/cycle/schedule.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

#include "core/settings_store.h"

namespace nimbrel {

std::string scheduleKey(int hour, int minute) { return fmt::format("{:02}:{:02}", hour, minute); }

bool isScheduledNow(const SettingsStore& store, std::string_view section, int hour, int minute) {
  std::vector<std::string> times;
  store.ReadSection(section, times);
  const std::string now = scheduleKey(hour, minute);
  return std::find(times.begin(), times.end(), now) != times.end();
}

}  // namespace nimbrel
