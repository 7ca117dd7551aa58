#pragma once
// Writing the records and the running values that travel with them to the
// main settings, once a minute from the per-minute pass and at stop.
//
// saverecordstoinifile:
//   1. copies the main settings file, as it is on disk, to
//      "nimbrelbackup.ini" in the program folder (nothing to copy before the
//      first flush);
//   2. writes the running values the caller has;
//   3. writes "values" (and "direction" for the wind records) of every
//      record of set 1, then set 2, then set 3, in the table's order.
// saveoldrecordstoinifile writes "old values", the previous holders.
//
// A record with no value in memory keeps whatever text its section holds,
// and the rows that are not followed yet are written back exactly as read:
// nothing is invented and nothing is lost.
//
// Both write into the store only; the caller flushes it (the per-minute pass
// ends with the flush, the stop flushes after the records). A failing store
// write propagates as an exception to the caller's duty wrapper and leaves
// the backup copy in place.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "core/settings_store.h"
#include "processing/records/record_book.h"

namespace nimbrel {

inline constexpr std::string_view kRecordsBackupName = "nimbrelbackup.ini";

struct RecordsBackup {
  std::filesystem::path mainSettingsFile;
  std::filesystem::path programFolder;  // where the copy goes
  // The text last copied, when the caller keeps it: a backup that would be
  // the same again is not rewritten (the settings change only now and then,
  // the records are saved every minute).
  std::string* lastCopied = nullptr;
};

// The running values that are saved with the records. Each one is written
// only when given; what the program does not keep yet stays as it is.
struct RunningValues {
  struct Rain {
    double today = 0;  // mm
    double month = 0;
    double year = 0;
  };
  std::optional<Rain> rain;                // "new rain storage" and "New rain storage"
  std::optional<double> lastMaxRainRate;  // "Last max rain rate"
  std::optional<double> dailySolarSum;    // "Daily solar"
  std::optional<int> dailySolarCount;     // "Daily solar count"
};

// Throws std::runtime_error, after writing everything, when the backup copy
// could not be made. With `recordsChanged` false only the backup and the
// running values are written: the records in the settings are still those of
// the last save.
void saverecordstoinifile(const RecordBook& records, const RunningValues& running, SettingsStore& main,
                          const RecordsBackup& backup, bool recordsChanged = true);
void saveoldrecordstoinifile(const RecordBook& records, SettingsStore& main);

}  // namespace nimbrel
