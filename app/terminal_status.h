#pragma once
// Keeps the status line up to date in place on an interactive terminal,
// a few times a second of real time whatever the clock's speed. Lines of the
// error log, written to standard error, show above it. Off a terminal it does
// nothing.

#include <chrono>
#include <cstdio>
#include <string_view>

#include "core/clock.h"

namespace nimbrel {

class StationProgram;

class TerminalStatus {
 public:
  TerminalStatus(StationProgram& program, std::FILE* terminal);
  ~TerminalStatus();
  TerminalStatus(const TerminalStatus&) = delete;
  TerminalStatus& operator=(const TerminalStatus&) = delete;

  bool active() const { return active_; }
  void update(const LocalTime& now);
  // Leaves the last line standing and stops drawing.
  void close();

 private:
  void draw(const LocalTime& now);
  void printAbove(std::string_view line);

  StationProgram& program_;
  std::FILE* terminal_;
  std::chrono::steady_clock::time_point lastDrawnAt_{};
  bool active_;
  bool shown_ = false;
  LocalTime lastDrawn_;
};

}  // namespace nimbrel
