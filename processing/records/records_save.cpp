#include "processing/records/records_save.h"

#include <fmt/format.h>

#include <stdexcept>
#include <string>

#include "core/file_io.h"
#include "core/number_format.h"

namespace nimbrel {
namespace {

constexpr std::string_view kRainStorageSections[] = {"new rain storage", "New rain storage"};

// Empty when the copy was made or there was nothing to copy yet.
std::string makeBackup(const RecordsBackup& backup) {
  std::error_code ec;
  if (!std::filesystem::exists(backup.mainSettingsFile, ec)) return {};
  std::string error;
  auto text = readWholeFile(backup.mainSettingsFile, &error);
  if (!text) return error.empty() ? "unknown error" : error;
  const auto copy = backup.programFolder / kRecordsBackupName;
  if (backup.lastCopied && *backup.lastCopied == *text && std::filesystem::exists(copy, ec)) return {};
  // The main settings are synced to the disk; their copy needs no sync of its own.
  if (!writeFileAtomically(copy, *text, &error, Durability::Cached)) return error.empty() ? "unknown error" : error;
  if (backup.lastCopied) *backup.lastCopied = std::move(*text);
  return {};
}

void writeRunningValues(const RunningValues& running, SettingsStore& main) {
  if (running.rain) {
    for (std::string_view section : kRainStorageSections) {
      main.WriteString(section, "dailyrain new", floatText(running.rain->today));
      main.WriteString(section, "monthlyrain new", floatText(running.rain->month));
      main.WriteString(section, "yearlyrain new", floatText(running.rain->year));
    }
    main.WriteString(kRainStorageSections[0], "dailyrain done it new 2", "done");
  }
  if (running.lastMaxRainRate) main.WriteString("Last max rain rate", "value", floatText(*running.lastMaxRainRate));
  if (running.dailySolarSum) main.WriteString("Daily solar", "value", floatText(*running.dailySolarSum));
  if (running.dailySolarCount) main.WriteString("Daily solar count", "value", fmt::format("{}", *running.dailySolarCount));
}

void writeBackAsRead(SettingsStore& main, std::string_view section, std::string_view key) {
  const std::string stored = main.ReadString(section, key);
  if (!stored.empty()) main.WriteString(section, key, stored);
}

void writePresent(const RecordRow& row, const HeldRecord& held, const std::string& section, SettingsStore& main) {
  if (!isFollowed(row) || !held.present) {
    writeBackAsRead(main, section, kRecordValuesKey);
    return;
  }
  main.WriteString(section, kRecordValuesKey, recordValueText(*held.present));
  if (row.keepsDirection && held.direction) main.WriteString(section, kRecordDirectionKey, directionText(*held.direction));
}

void writePrevious(const RecordRow& row, const HeldRecord& held, const std::string& section, SettingsStore& main) {
  if (!isFollowed(row) || !held.previous)
    writeBackAsRead(main, section, kRecordOldValuesKey);
  else
    main.WriteString(section, kRecordOldValuesKey, recordValueText(*held.previous));
}

template <class Write>
void forEachRecord(const RecordBook& records, SettingsStore& main, Write write) {
  const auto rows = recordRows();
  for (RecordSet set : kAllRecordSets)
    for (std::size_t i = 0; i < rows.size(); ++i)
      write(rows[i], records.held(set, i), recordSectionName(rows[i], set), main);
}

}  // namespace

void saverecordstoinifile(const RecordBook& records, const RunningValues& running, SettingsStore& main,
                          const RecordsBackup& backup, bool recordsChanged) {
  const std::string backupError = makeBackup(backup);
  writeRunningValues(running, main);
  if (recordsChanged) forEachRecord(records, main, writePresent);
  if (!backupError.empty())
    throw std::runtime_error("the backup copy " + std::string(kRecordsBackupName) + " was not made: " + backupError);
}

void saveoldrecordstoinifile(const RecordBook& records, SettingsStore& main) {
  forEachRecord(records, main, writePrevious);
}

}  // namespace nimbrel
