#pragma once
// Appending lines to the logs. A log is created with its header line when it
// does not exist (or is empty); an existing log is never rewritten. A line
// goes in whole or not at all (a full disk leaves no torn line). File errors
// show no message box: the result goes to the writers' status word, a log
// that cannot be written is reported in the error log once an hour while it
// stays so, and the next interval tries again.

#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>

#include "core/clock.h"

namespace nimbrel {

class TextLog;

// The I/O result of the last file operation of the data-file writers
// (0 = success, otherwise the system's error number) and whether the writers
// are in a spell of failures.
struct IoStatus {
  int lastResult = 0;
  std::string lastError;
  bool failing = false;
  // The logs in a spell of failures, and when each was last reported.
  std::unordered_map<std::string, SystemTime> failureReported;
};

inline constexpr std::chrono::hours kLogFailureReportEvery{1};

enum class LogAppend { Appended, Created, Failed };

// Appends `line` (its line end included) to `file`, first writing `header`
// (its line end included) when the file does not exist yet or is empty.
LogAppend appendLogLine(const std::filesystem::path& file, std::string_view header, std::string_view line,
                        IoStatus& status, TextLog& errorLog);

}  // namespace nimbrel
