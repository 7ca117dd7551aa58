#pragma once
// Appending lines to the logs. A log is created with its header line when it
// does not exist (or is empty); an existing log is never rewritten. File errors show no
// message: the result goes to the writers' status word, the first failure of
// a spell is written once to the error log, and the next interval tries again.

#include <filesystem>
#include <string>
#include <string_view>

namespace nimbrel {

class TextLog;

// The I/O result of the last file operation of the data-file writers
// (0 = success, otherwise the system's error number) and whether the writers
// are in a spell of failures.
struct IoStatus {
  int lastResult = 0;
  std::string lastError;
  bool failing = false;
};

enum class LogAppend { Appended, Created, Failed };

// Appends `line` (its line end included) to `file`, first writing `header`
// (its line end included) when the file does not exist yet or is empty.
LogAppend appendLogLine(const std::filesystem::path& file, std::string_view header, std::string_view line,
                        IoStatus& status, TextLog& errorLog);

}  // namespace nimbrel
