#pragma once
// A copy of everything the tags read, taken on the station's thread at one
// moment, so that a template can be filled on another thread while the
// station goes on: the fill sees that moment's values, whole, and never
// touches the live state.
//
// The copy of the statistics is read only through its accessors, which
// answer from the copy's own members.

#include <filesystem>

#include "core/clock.h"
#include "core/document_settings_store.h"
#include "core/ini_document.h"
#include "core/live_record.h"
#include "core/unit_settings.h"
#include "processing/statistics/station_statistics.h"
#include "publish/tags/tag_caches.h"
#include "publish/tags/tag_context.h"
#include "publish/tags/tag_options.h"
#include "publish/template/raw_header.h"

namespace nimbrel {

struct TagSources {
  const LiveRecord& live;
  const StationStatistics& stats;
  const UnitSettings& units;
  const IniDocument& settings;  // the main settings as they stand
  SystemTime instant;
  bool readingsSeen = false;
  std::filesystem::path logFolder;
  bool runningProgram = true;  // false: taken from a folder's files, not from a running program
};

class TagSnapshot {
 public:
  explicit TagSnapshot(const TagSources& sources);
  TagSnapshot(const TagSnapshot&) = delete;
  TagSnapshot& operator=(const TagSnapshot&) = delete;

  // The context of one fill; the caches start empty for each, `memory` is
  // the filler's and outlives the fill.
  TagContext context(TagMemory& memory);
  const TagOptions& options() const { return options_; }
  const SettingsStore& settings() const { return settings_; }
  // The readings of the raw header line of "wx.html", in the units the page shows.
  RawHeaderValues rawHeader() const;

 private:
  LiveRecord live_;
  StationStatistics stats_;
  UnitSettings units_;
  DocumentSettingsStore settings_;
  TagOptions options_;
  SystemTime instant_;
  bool readingsSeen_;
  std::filesystem::path logFolder_;
  bool runningProgram_;
  TagCaches caches_;
};

}  // namespace nimbrel
