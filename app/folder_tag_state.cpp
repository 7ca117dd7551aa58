#include "app/folder_tag_state.h"

#include "core/instance.h"
#include "core/number_format.h"
#include "datafiles/clientraw_layout.h"
#include "datafiles/clientraw_reader.h"
#include "datafiles/clientraw_record.h"
#include "stations/station_types.h"

namespace nimbrel {
namespace {

DocumentSettingsStore copyOfMainSettings(const std::filesystem::path& programFolder, TextLog& log) {
  const SettingsStores stores(programFolder, log);
  return DocumentSettingsStore(stores.main.document());
}

// The local time the file's date and time fields give.
std::optional<SystemTime> readingInstant(const ClientrawReading& reading) {
  using namespace clientraw;
  long long fields[6] = {};
  const Field order[6] = {year, month, day, hour, minute, second};
  for (int i = 0; i < 6; ++i) {
    const auto text = reading.field(order[i]);
    if (!text || !parseInt(std::string(*text), fields[i])) return std::nullopt;
  }
  if (fields[0] < 1970 || fields[1] < 1 || fields[1] > 12 || fields[2] < 1 || fields[2] > 31) return std::nullopt;
  return fromLocalTime(static_cast<int>(fields[0]), static_cast<int>(fields[1]), static_cast<int>(fields[2]),
                       static_cast<int>(fields[3]), static_cast<int>(fields[4]), static_cast<int>(fields[5]));
}

}  // namespace

FolderTagState::FolderTagState(const std::filesystem::path& programFolder, TextLog& log, SystemTime now)
    : settings_(copyOfMainSettings(programFolder, log)),
      folders_(locateFolders(programFolder, settings_)),
      units_(loadsettings(settings_)),
      instant_(now) {
  const bool perHour = selectStation(settings_).code == stationtype::vantagePro;
  if (const auto reading = readClientrawFile(folders_.webfiles / clientraw::kFileName)) {
    record_ = liveRecordFromClientraw(*reading, perHour);
    readingsSeen_ = true;
    if (const auto at = readingInstant(*reading)) instant_ = *at;
  }
  if (record_.stationname.empty()) record_.stationname = units_.connections.stationName;
  statistics_ = std::make_unique<StationStatistics>(record_, settings_, units_, log);
  for (const std::string& message : statistics_->load(toLocalTime(instant_))) log.write(message);
}

std::unique_ptr<TagSnapshot> FolderTagState::snapshot() const {
  return std::make_unique<TagSnapshot>(
      TagSources{record_, *statistics_, units_, settings_.document(), instant_, readingsSeen_, folders_.logs, false});
}

}  // namespace nimbrel
