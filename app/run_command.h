#pragma once
// `nimbrel run`: the station program, until stopped by a signal or after a
// chosen span of program time.

#include <filesystem>
#include <optional>

#include "core/clock.h"

namespace nimbrel {

struct RunOptions {
  std::filesystem::path dir = ".";
  std::optional<SystemTime> start;  // default: now
  double speed = 1.0;
  std::optional<double> runForSeconds;  // program seconds
};

int runStation(const RunOptions& options);

}  // namespace nimbrel
