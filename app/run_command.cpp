#include "app/run_command.h"

#include <fmt/format.h>

#include <csignal>

#include "app/station_program.h"
#include "app/terminal_status.h"
#include "core/number_format.h"
#include "core/instance_lock.h"
#include "processing/cycle/simulated_ticks.h"
#include "processing/cycle/tick_driver.h"

namespace nimbrel {
namespace {

constexpr double kFastestFactor = 1e6;

}  // namespace

std::optional<ClockSpeed> parseClockSpeed(std::string_view text) {
  if (text == "max") return ClockSpeed::max();
  double factor = 0;
  if (!parseDouble(std::string(text), factor) || factor <= 0 || factor > kFastestFactor) return std::nullopt;
  return ClockSpeed{factor, false};
}

int runStation(const RunOptions& options) {
  // Before anything is read or written: a folder without the station's
  // settings would start an empty station, and a second program on this
  // folder and instance would write every minute twice and undo the other's
  // settings.
  const ProgramFolderLock folderLock = lockProgramFolder(options.dir, FolderStart::existingStation);
  if (!folderLock.lock) {
    fmt::print(stderr, "nimbrel: {}\n", folderLock.problem);
    return 1;
  }
  asio::io_context io;
  const SystemTime start = options.start.value_or(std::chrono::system_clock::now());
  if (options.speed.simulated) {
    ManualClock clock(start);
    SimulatedTicks ticks(io, clock);
    return runStationOn(io, clock, ticks, options, {});
  }
  ScaledClock clock(start, options.speed.factor);
  TickDriver ticks(io, clock);
  return runStationOn(io, clock, ticks, options, {});
}

int runStationOn(asio::io_context& io, const Clock& clock, TickSource& ticks, const RunOptions& options,
                 const RunHooks& hooks) {
  const SystemTime start = clock.now();
  StationProgram program(io, clock, options.dir);
  if (ticks.simulated()) program.fillPagesOnTheTick();
  if (hooks.beforeStart) hooks.beforeStart(program);
  TerminalStatus status(program, stdout);
  program.start();

  asio::signal_set signals(io, SIGINT, SIGTERM);
  bool stopping = false;
  const auto stop = [&] {
    if (std::exchange(stopping, true)) return;
    ticks.stop();
    signals.cancel();
    status.close();
    if (hooks.onStop) hooks.onStop(program);
    program.exit1click();
  };
  signals.async_wait([&](const asio::error_code& error, int) {
    if (!error) stop();
  });
  std::optional<std::chrono::duration<double>> runFor;
  if (options.runForSeconds) runFor = std::chrono::duration<double>(*options.runForSeconds);
  ticks.run([&](const LocalTime& now) {
    if (hooks.beforeTick) hooks.beforeTick(program, now);
    program.tick(now);
    status.update(now);
    // Stop by the seconds ticked, not by the clock: a tick running behind the
    // clock still makes every minute's pass up to the end.
    if (runFor && ticks.lastTicked() - start >= *runFor) stop();
  });
  if (hooks.onFinished) hooks.onFinished(program);
  return 0;
}

}  // namespace nimbrel
