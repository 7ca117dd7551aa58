#pragma once
// A station's whole state for tag tests: live record, settings, statistics
// and the context a fill reads, at a fixed moment. A test sets readings,
// feeds them through `reading()` so that today's extremes and records
// follow, and asks for a tag's text as a template would get it.

#include <string>
#include <string_view>

#include "core/clock.h"
#include "core/live_record.h"
#include "core/text_log.h"
#include "core/unit_settings.h"
#include "processing/statistics/station_statistics.h"
#include "publish/tags/tag_context.h"
#include "publish/tags/vocabulary.h"
#include "support/memory_settings_store.h"
#include "support/temp_folder.h"

namespace nimbrel::testsupport {

class TagWorld {
 public:
  explicit TagWorld(SystemTime at = fromLocalTime(2026, 6, 15, 14, 30, 0))
      : clock(at), log(folder.path() / "stationlog.txt", clock), statistics(record, settings, units, log) {
    statistics.load(clock.local());
  }

  // The live record's present values as a reading: limits, derived values,
  // today's extremes and the records follow it.
  void reading() {
    statistics.onReading();
    statistics.onesecondTimer(clock.local());
    readingsSeen = true;
  }

  // The tag's text for a fill now, `name` without its "%" signs; "<unknown>"
  // for a name the vocabulary does not hold.
  std::string text(std::string_view name, bool displayUnits = false) {
    const TagDef* def = vocabulary().find(name);
    if (def == nullptr) return "<unknown>";
    caches = TagCaches{};
    const TagContext context = this->context();
    return tagText(*def, context, displayUnits);
  }

  TagContext context() {
    return TagContext{record,       statistics,    units,  settings, options, clock.now(), clock.local(),
                      readingsSeen, folder.path(), caches, memory};
  }

  TempFolder folder;
  ManualClock clock;
  TextLog log;
  MemorySettingsStore settings;
  UnitSettings units;
  LiveRecord record;
  StationStatistics statistics;
  TagOptions options;
  TagCaches caches;
  TagMemory memory;  // kept across fills, as the program keeps it
  bool readingsSeen = false;
};

}  // namespace nimbrel::testsupport
