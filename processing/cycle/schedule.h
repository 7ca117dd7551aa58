#pragma once
// Schedule lists: a job is due when the present time, written "HH:MM", is one
// of the key names of the job's schedule section (for example "07:05" in
// "Weather Wunderground Times").

#include <string>
#include <string_view>

namespace nimbrel {

class SettingsStore;

std::string scheduleKey(int hour, int minute);
bool isScheduledNow(const SettingsStore& store, std::string_view section, int hour, int minute);

}  // namespace nimbrel
