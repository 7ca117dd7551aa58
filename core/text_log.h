#pragma once
// A plain text log: each line starts with the program time. Used for the
// program's error log ("programerrorlog.txt") and the station log of received
// data. A log that cannot be written falls back to standard error once, so
// that a full disk never stops the program.

#include <filesystem>
#include <functional>
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
  // Where echoed lines go instead of standard error (the terminal status
  // line clears itself around them); empty for standard error again.
  using EchoSink = std::function<void(std::string_view line)>;
  void echoThrough(EchoSink sink) { echoSink_ = std::move(sink); }
  const std::filesystem::path& path() const { return file_; }
  // The clock that times the lines: the program clock.
  const Clock& clock() const { return *clock_; }
  bool failing() const { return failing_; }

 private:
  void echo(std::string_view line) const;

  std::filesystem::path file_;
  const Clock* clock_;
  bool failing_ = false;
  bool echo_ = false;
  EchoSink echoSink_;
};

inline constexpr const char* kProgramErrorLogName = "programerrorlog.txt";

}  // namespace nimbrel
