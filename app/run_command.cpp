#include "app/run_command.h"

#include <fmt/format.h>

#include <csignal>

#include "app/station_program.h"
#include "app/terminal_status.h"
#include "core/instance_lock.h"
#include "processing/cycle/tick_driver.h"

namespace nimbrel {

int runStation(const RunOptions& options) {
  // Before anything is read or written: a second program on this folder and
  // instance would write every minute twice and undo the other's settings.
  const ProgramFolderLock folderLock = lockProgramFolder(options.dir);
  if (!folderLock.lock) {
    fmt::print(stderr, "nimbrel: {}\n", folderLock.problem);
    return 1;
  }
  asio::io_context io;
  ScaledClock clock(options.start.value_or(std::chrono::system_clock::now()), options.speed);
  return runStationOn(io, clock, options, {});
}

int runStationOn(asio::io_context& io, ScaledClock& clock, const RunOptions& options, const RunHooks& hooks) {
  const SystemTime start = clock.now();
  StationProgram program(io, clock, options.dir);
  TerminalStatus status(program, stdout, ticksPerRedrawAt(options.speed));
  program.start();

  asio::signal_set signals(io, SIGINT, SIGTERM);
  std::function<void()> stop;
  TickDriver ticks(io, clock, [&](const LocalTime& now) {
    program.tick(now);
    status.update(now);
    // Stop by the seconds ticked, not by the clock: a tick running behind the
    // clock still makes every minute's pass up to the end.
    if (options.runForSeconds && ticks.lastTicked() - start >= std::chrono::duration<double>(*options.runForSeconds))
      stop();
  });
  stop = [&] {
    ticks.stop();
    signals.cancel();
    status.close();
    program.exit1click();
    if (hooks.onStop) hooks.onStop();
    io.stop();
  };
  signals.async_wait([&](const asio::error_code& error, int) {
    if (!error) stop();
  });
  ticks.start();
  io.run();
  if (hooks.onFinished) hooks.onFinished(program);
  return 0;
}

}  // namespace nimbrel
