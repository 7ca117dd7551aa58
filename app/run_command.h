#pragma once
// `nimbrel run`: the station program, until stopped by a signal or after a
// chosen span of program time.

#include <asio.hpp>

#include <filesystem>
#include <functional>
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

class StationProgram;

// What a run on a caller's event loop may add: something to stop with the
// program (the demo's simulator), and a look at the program when it is done.
struct RunHooks {
  std::function<void()> onStop;
  std::function<void(const StationProgram&)> onFinished;
};

// Runs the program on `io` with `clock` until a signal or the end of
// `options.runForSeconds`; the caller may have put more on the same loop.
int runStationOn(asio::io_context& io, ScaledClock& clock, const RunOptions& options, const RunHooks& hooks);

}  // namespace nimbrel
