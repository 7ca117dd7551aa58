#include "processing/rollover/daily_files.h"

#include <array>
#include <stdexcept>
#include <string>

#include "core/file_io.h"

namespace nimbrel {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

struct DailyLogStart {
  std::string_view fileName;
  std::string_view header;  // empty: the log starts empty
};

constexpr std::array<DailyLogStart, 5> kDailyLogs{{
    {"dailylog.txt",
     "day month year hour minute temperature   humidity     dewpoint   barometer    windspeed    gustspeed direction   "
     "rainlastmin    dailyrain  monthlyrain    yearlyrain   heatindex"},
    {"dailylogcsv.csv",
     "day,month,year,hour,minute,temperature,humidity,dewpoint,barometer,windspeed,gustspeed,direction,rainlastmin,"
     "dailyrain,monthlyrain,yearlyrain,heatindex"},
    {"indoorlog.txt", "day month year hour minute temperature   humidity"},
    {"lightninglog.txt", ""},
    {"lightninglognexstorm.txt", ""},
}};

void writeOrThrow(const std::filesystem::path& file, std::string_view content) {
  std::string error;
  if (!writeFileAtomically(file, content, &error))
    throw std::runtime_error("cannot write " + file.string() + ": " + error);
}

}  // namespace

void restartDailyLogs(const std::filesystem::path& logsFolder) {
  for (const DailyLogStart& log : kDailyLogs) {
    std::string content(log.header);
    if (!content.empty()) content += kLineEnd;
    writeOrThrow(logsFolder / log.fileName, content);
  }
}

void restartFtpLog(const std::filesystem::path& logsFolder) { writeOrThrow(logsFolder / "ftplog.txt", ""); }

void backupMainSettings(SettingsStore& main, const std::filesystem::path& mainSettingsFile,
                        const std::filesystem::path& programFolder) {
  if (!main.flush()) throw std::runtime_error("the main settings could not be written before the backup");
  std::string error;
  const std::filesystem::path backup = programFolder / kSettingsBackupName;
  if (!copyFileAtomically(mainSettingsFile, backup, &error))
    throw std::runtime_error("cannot copy " + mainSettingsFile.string() + " to " + backup.string() + ": " + error);
}

void resetUploadCounters(SettingsStore& main) {
  main.WriteString("Total bytes uploaded day", "number", "0");
  main.WriteString("FTP error count", "number", "0");
}

}  // namespace nimbrel
