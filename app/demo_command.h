#pragma once
// `nimbrel demo`: the real program reading a simulated Vantage console. In
// simulated time ("--speed max") the console lives in the program's own
// event loop on an in-memory link and a run is the same every time; at a
// real speed it serves its data on a loopback TCP port. A folder without
// settings gets a "NIMBREL.INI" for that station; a folder where a demo ran
// before goes on from the program time at which that demo stopped. At the
// end the demo lists the files it wrote and what they hold.

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <optional>

#include "app/run_command.h"
#include "core/clock.h"
#include "tools/vantage_sim/console.h"

namespace nimbrel {

// Faults of the simulated console, for long tests of the program.
struct DemoFaults {
  double rate = 0;  // share of LOOP packets with a bad CRC, split in two, or followed by garbage (each)
  std::chrono::seconds cutEvery{0};  // the cable (or the TCP connection) is cut this often...
  std::chrono::seconds cutFor{0};    // ...for this long
};

struct DemoOptions {
  std::filesystem::path dir = "nimbrel-demo";
  std::optional<SystemTime> start;  // default: where the last demo in the folder stopped, or now
  ClockSpeed speed{60.0, false};
  std::optional<double> runForSeconds;  // program seconds; default: until Ctrl-C
  std::uint64_t seed = 1;               // the simulated weather's and faults' seed
  DemoFaults faults;
  std::filesystem::path recordFile;  // when set: one JSON line per LOOP packet the console sent
  sim::PacketRewrite rewrite;        // for tests: packets the console changes before sending
};

int runDemo(const DemoOptions& options, std::FILE* out);

// Makes the demo's folder and settings, or checks that the settings there are
// the demo's; then, for a console on a TCP port, points them at
// `simulatorPort`. Returns an empty string or the one sentence that says why
// the folder cannot be used.
std::string prepareDemoFolder(const std::filesystem::path& dir, std::optional<std::uint16_t> simulatorPort,
                              const Clock& clock);

}  // namespace nimbrel
