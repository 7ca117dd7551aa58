#pragma once
// Names of the log files and the one way every log line reaches its file.
//
// Monthly files are named month + four-digit year + suffix with the month not
// padded ("112026lg.txt", "12027lg.txt"). With the weather day starting at
// 9 am, the first hours of a month (day 1 before 9:00) still belong to the
// previous month's files, and those of 1 January to December of the year
// before.

#include <filesystem>
#include <string>
#include <string_view>

#include "core/live_record.h"
#include "datafiles/log_append.h"

namespace nimbrel {

struct LogOptions;
struct LogSinks;

struct LogMonth {
  int month = 0;
  int year = 0;
  friend bool operator==(const LogMonth&, const LogMonth&) = default;
};

LogMonth logMonth(const ReadingTime& time, bool nineAmDay);
// "112026" for November 2026.
std::string monthStem(const LogMonth& month);
// The logs folder's file month + year + suffix for the month the line belongs to.
std::filesystem::path monthFile(const LogOptions& options, const ReadingTime& time, std::string_view suffix);
// The file month + year + suffix of `month` in `folder` ("112026lg.txt").
std::filesystem::path monthFile(const std::filesystem::path& folder, const LogMonth& month, std::string_view suffix);

// Appends `line` and a CR LF to `file`, creating the file with `header` and
// a CR LF first when it does not exist.
LogAppend appendLogRecord(const std::filesystem::path& file, std::string_view header, std::string_view line,
                          LogSinks& sinks);

}  // namespace nimbrel
