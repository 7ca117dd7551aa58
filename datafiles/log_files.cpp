#include "datafiles/log_files.h"

#include <fmt/format.h>

#include "datafiles/log_context.h"

namespace nimbrel {
namespace {

constexpr int kFirstLogHourOfNineAmDay = 9;

}  // namespace

LogMonth logMonth(const ReadingTime& time, bool nineAmDay) {
  const bool previousMonth = nineAmDay && time.day == 1 && time.hour < kFirstLogHourOfNineAmDay;
  if (!previousMonth) return {time.month, time.year};
  if (time.month <= 1) return {12, time.year - 1};
  return {time.month - 1, time.year};
}

std::string monthStem(const LogMonth& month) { return fmt::format("{}{}", month.month, month.year); }

std::filesystem::path monthFile(const LogOptions& options, const ReadingTime& time, std::string_view suffix) {
  return monthFile(options.logsFolder, logMonth(time, options.nineAmDay), suffix);
}

std::filesystem::path monthFile(const std::filesystem::path& folder, const LogMonth& month, std::string_view suffix) {
  return folder / (monthStem(month) + std::string(suffix));
}

LogAppend appendLogRecord(const std::filesystem::path& file, std::string_view header, std::string_view line,
                          LogSinks& sinks) {
  const std::string headerLine = std::string(header) + "\r\n";
  const std::string dataLine = std::string(line) + "\r\n";
  return appendLogLine(file, headerLine, dataLine, sinks.status, sinks.errorLog);
}

}  // namespace nimbrel
