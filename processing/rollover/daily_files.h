#pragma once
// The files the day's rollover starts afresh, each written whole through a
// temporary file so that an uploader never reads half of one:
// - the daily logs in the logs folder: "dailylog.txt", "dailylogcsv.csv"
//   and "indoorlog.txt" holding only their header line (CR LF ended), and
//   the lightning logs "lightninglog.txt" and "lightninglognexstorm.txt"
//   empty;
// - the FTP log "ftplog.txt" in the logs folder, empty;
// - "nimbrelinibackup.ini" in the program folder, a copy of the main
//   settings file taken after the settings have been written to disk.
// Each throws std::runtime_error naming the file when it cannot be written.

#include <filesystem>
#include <string_view>

#include "core/settings_store.h"

namespace nimbrel {

void restartDailyLogs(const std::filesystem::path& logsFolder);
void restartFtpLog(const std::filesystem::path& logsFolder);

inline constexpr std::string_view kSettingsBackupName = "nimbrelinibackup.ini";

void backupMainSettings(SettingsStore& main, const std::filesystem::path& mainSettingsFile,
                        const std::filesystem::path& programFolder);

// The day's upload byte count and the FTP error count back to 0.
void resetUploadCounters(SettingsStore& main);

}  // namespace nimbrel
