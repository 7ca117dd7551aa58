#pragma once
// `nimbrel run`: the station program, until stopped by a signal or after a
// chosen span of program time.

#include <asio.hpp>

#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>

#include "core/clock.h"

namespace nimbrel {

// How fast program time runs: `factor` times real time, or, in simulated
// time ("max"), as fast as the machine computes it, the clock jumping from
// one due event to the next.
struct ClockSpeed {
  double factor = 1.0;
  bool simulated = false;

  static constexpr ClockSpeed max() { return {1.0, true}; }
};
// "max", or a number of program seconds per real second (0 < N <= 1e6).
std::optional<ClockSpeed> parseClockSpeed(std::string_view text);

struct RunOptions {
  std::filesystem::path dir = ".";
  std::optional<SystemTime> start;  // default: now
  ClockSpeed speed;
  std::optional<double> runForSeconds;  // program seconds
};

int runStation(const RunOptions& options);

class StationProgram;
class TickSource;

// What a run on a caller's event loop may add: something to give the
// program before it starts (the demo's simulated console), something to do
// before each tick, something to stop with the program (the demo's
// simulator), and a look at the program when it is done.
struct RunHooks {
  std::function<void(StationProgram&)> beforeStart;
  std::function<void(StationProgram&, const LocalTime&)> beforeTick;
  std::function<void(StationProgram&)> onStop;
  std::function<void(const StationProgram&)> onFinished;
};

// Runs the program on `io` with `clock`, ticked by `ticks`, until a signal or
// the end of `options.runForSeconds`; the caller may have put more on the
// same loop.
int runStationOn(asio::io_context& io, const Clock& clock, TickSource& ticks, const RunOptions& options,
                 const RunHooks& hooks);

}  // namespace nimbrel
