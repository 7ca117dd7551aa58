#pragma once
// The records as the program holds them between saves: for each row of
// recordRows() and each of the three sets, the present record, the one it
// replaced and, for the wind records, the wind direction.
//
// compare() runs on every tick with readings, after today's extremes have
// been checked. A reading is rounded to tenths, the resolution the records
// are stored with, so that a record read back after a restart compares
// exactly as before. It becomes the record when it lies strictly beyond the
// present one (above for highs, below for lows); an equal reading keeps the
// earlier date. The replaced record becomes the previous holder, unless it
// was itself set earlier the same day: a record broken again and again on
// one hot afternoon keeps, as its previous holder, the record that stood
// before that day.
//
// compare() writes nothing: saverecordstoinifile (records_save.h) writes the
// records once a minute and at stop. The month and year resets clear their
// set in the settings at once, so that a restart after the reset does not
// bring the old period's records back. They are meant for the rollover, at
// the month and year end (and at start, when one passed while the program
// was not running).
//
// Rows that are not followed yet are loaded for reading but never compared,
// reset or rewritten.

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/clock.h"
#include "core/live_record.h"
#include "core/settings_store.h"
#include "processing/records/record_text.h"
#include "processing/records/records.h"
#include "processing/validation/absolute_limits.h"

namespace nimbrel {

struct HeldRecord {
  std::optional<RecordValue> present;
  std::optional<RecordValue> previous;  // the record that `present` replaced
  std::optional<double> direction;      // degrees, with `present` of a wind record
};

class RecordBook {
 public:
  RecordBook();

  // Start: every set from the main settings; a missing or unreadable entry
  // is no record.
  void load(const SettingsStore& main);

  // After load: forgets each present record outside the absolute limits
  // (records.h, RecordBound), so that it is not the one to beat and the next
  // reading sets the record again; the settings keep it until then. Returns
  // one message for each, naming its section, value and limits.
  std::vector<std::string> dropImplausible(const AbsoluteLimits& limits);

  // `tenMinuteAverage`: pass the 10-minute average wind when the day's
  // highest average is taken from it; otherwise the record's `windspeed`
  // is the average wind.
  void compare(const LiveRecord& record, const LocalTime& now, std::optional<double> tenMinuteAverage = std::nullopt);

  // Month and year end: each followed record of the set ends; its holder
  // becomes the previous holder ("old values") and "values" and "direction"
  // are removed from the settings.
  void resetMonth(SettingsStore& main) { reset(RecordSet::ThisMonth, main); }
  void resetYear(SettingsStore& main) { reset(RecordSet::ThisYear, main); }

  // `row` indexes recordRows().
  const HeldRecord& held(RecordSet set, std::size_t row) const { return sets_[index(set)][row]; }
  // Throws std::invalid_argument for a name that is not in the table.
  const HeldRecord& held(RecordSet set, std::string_view allTimeName) const;
  // Goes up with every change to any record, so a saver can tell whether
  // there is anything new to write.
  std::uint64_t version() const { return version_; }

 private:
  static std::size_t index(RecordSet set) { return static_cast<std::size_t>(set); }
  void reset(RecordSet set, SettingsStore& main);

  std::array<std::vector<HeldRecord>, kRecordSets> sets_;
  std::uint64_t version_ = 0;
};

}  // namespace nimbrel
