#pragma once
// A program folder's state as its files left it, for filling templates
// without running the station: the settings (extremes, records, rain
// totals), and the readings of the last "clientraw.txt". Nothing in the
// folder is changed: the settings are read into a copy held in memory.

#include <filesystem>
#include <memory>
#include <optional>

#include "app/program_folders.h"
#include "core/clock.h"
#include "core/document_settings_store.h"
#include "core/live_record.h"
#include "core/text_log.h"
#include "core/unit_settings.h"
#include "processing/statistics/station_statistics.h"
#include "publish/tags/tag_snapshot.h"

namespace nimbrel {

class FolderTagState {
 public:
  // Messages about the folder's files go to `log`. `now` is used when the
  // folder holds no readings; otherwise the time of the last reading is.
  FolderTagState(const std::filesystem::path& programFolder, TextLog& log, SystemTime now);

  const ProgramFolders& folders() const { return folders_; }
  bool hasReadings() const { return readingsSeen_; }
  SystemTime instant() const { return instant_; }
  std::unique_ptr<TagSnapshot> snapshot() const;
  // What the tags keep between fills from this folder (its logs read back).
  TagMemory& memory() { return memory_; }

 private:
  DocumentSettingsStore settings_;
  ProgramFolders folders_;
  UnitSettings units_;
  LiveRecord record_;
  bool readingsSeen_ = false;
  SystemTime instant_;
  std::unique_ptr<StationStatistics> statistics_;
  TagMemory memory_;
};

}  // namespace nimbrel
