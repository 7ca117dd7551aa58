#pragma once
// Everything a tag's value may come from, handed to every source in the
// vocabulary for one fill of a template: the live record, the statistics
// the cycle keeps (today's extremes, records, rain, wind history, short-term
// series), the owner's settings, the moment of the fill and the station's
// position. The context only reads; a fill never changes the station's state.

#include <filesystem>
#include <string_view>

#include "core/clock.h"
#include "core/live_record.h"
#include "core/settings_store.h"
#include "core/unit_settings.h"
#include "processing/statistics/station_statistics.h"
#include "publish/tags/tag_caches.h"
#include "publish/tags/tag_memory.h"
#include "publish/tags/tag_options.h"

namespace nimbrel {

struct TagContext {
  const LiveRecord& live;
  const StationStatistics& stats;
  const UnitSettings& units;
  const SettingsStore& settings;  // the main settings: stored extremes, yesterday's values, records
  const TagOptions& options;
  SystemTime instant;   // the moment of the fill
  LocalTime now;        // the same in local time
  bool readingsSeen;    // false until the station's first reading: live values are "---"
  std::filesystem::path logFolder;  // the monthly logs, for averages and counts over past days
  TagCaches& caches;    // summaries worked out once per fill, when a tag first needs them
  TagMemory& memory;    // what outlives the fill (logs read, summaries of past months), the filler's
  // False for a preview from a program folder's files: what the running
  // program keeps only in memory (the 10-minute average wind) is not there.
  bool runningProgram = true;
};

}  // namespace nimbrel
