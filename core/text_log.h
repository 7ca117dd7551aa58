#pragma once
// A plain text log: each line starts with the program time. Used for the
// program's error log ("programerrorlog.txt") and the station log of received
// data. A log that cannot be written falls back to standard error once, so
// that a full disk never stops the program.

#include <filesystem>
#include <string>
#include <string_view>

#include "core/clock.h"

namespace nimbrel {

class TextLog {
 public:
  TextLog(std::filesystem::path file, const Clock& clock) : file_(std::move(file)), clock_(&clock) {}

  void write(std::string_view message);
  // Also show each line on standard error (the program's error log does, so
  // that a settings mistake is seen on the terminal too).
  void echoToTerminal(bool on) { echo_ = on; }
  const std::filesystem::path& path() const { return file_; }
  bool failing() const { return failing_; }

 private:
  std::filesystem::path file_;
  const Clock* clock_;
  bool failing_ = false;
  bool echo_ = false;
};

inline constexpr const char* kProgramErrorLogName = "programerrorlog.txt";

}  // namespace nimbrel
