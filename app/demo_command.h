#pragma once
// `nimbrel demo`: the real program reading a simulated Vantage console that
// runs on the same event loop over a loopback TCP port. A folder without
// settings gets a "NIMBREL.INI" for that station; at the end the demo lists
// the files it wrote and what they hold.

#include <cstdio>
#include <filesystem>
#include <optional>

#include "core/clock.h"

namespace nimbrel {

struct DemoOptions {
  std::filesystem::path dir = "nimbrel-demo";
  std::optional<SystemTime> start;  // default: now
  double speed = 60.0;
  std::optional<double> runForSeconds;  // program seconds; default: until Ctrl-C
};

int runDemo(const DemoOptions& options, std::FILE* out);

// Makes the demo's folder and settings, or checks that the settings there are
// the demo's; then points them at `simulatorPort`. Returns an empty string or
// the one sentence that says why the folder cannot be used.
std::string prepareDemoFolder(const std::filesystem::path& dir, std::uint16_t simulatorPort, const Clock& clock);

}  // namespace nimbrel
