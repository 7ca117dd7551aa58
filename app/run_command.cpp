#include "app/run_command.h"

#include <asio.hpp>
#include <fmt/format.h>

#include <csignal>

#include "app/station_program.h"
#include "processing/tick_driver.h"

namespace nimbrel {

int runStation(const RunOptions& options) {
  asio::io_context io;
  const SystemTime start = options.start.value_or(std::chrono::system_clock::now());
  ScaledClock clock(start, options.speed);
  StationProgram program(io, clock, options.dir);
  program.start();

  asio::signal_set signals(io, SIGINT, SIGTERM);
  std::function<void()> stop;
  TickDriver ticks(io, clock, [&](const LocalTime& now) {
    program.tick(now);
    if (options.runForSeconds && clock.now() - start >= std::chrono::duration<double>(*options.runForSeconds))
      stop();
  });
  stop = [&] {
    ticks.stop();
    signals.cancel();
    program.exit1click();
    io.stop();
  };
  signals.async_wait([&](const asio::error_code& error, int) {
    if (!error) stop();
  });
  ticks.start();
  io.run();
  return 0;
}

}  // namespace nimbrel
