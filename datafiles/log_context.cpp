#include "datafiles/log_context.h"

#include <utility>

#include "core/unit_settings.h"

namespace nimbrel {

LogOptions logOptionsFrom(const UnitSettings& settings, std::filesystem::path logsFolder,
                          std::uint16_t stationType, bool heatIndexFromStation) {
  LogOptions options;
  options.logsFolder = std::move(logsFolder);
  options.units = settings.units.logFile;
  options.nineAmDay = settings.resets.dayReset == DayResetTime::nineAm;
  options.heatIndexFromStation = heatIndexFromStation;
  options.stationType = stationType;
  return options;
}

ReadingTime lineTime(const LogCall& call, const LiveRecord& record) {
  if (call.replaying) return record.readingtime;
  auto field = [](int value) { return static_cast<std::uint16_t>(value); };
  return {field(call.now.day),  field(call.now.month),  field(call.now.year),
          field(call.now.hour), field(call.now.minute), field(call.now.second)};
}

}  // namespace nimbrel
