// A whole simulated day of the running program, as `nimbrel demo --speed max`
// runs it: one-second ticks, the simulated Vantage console sending a LOOP
// packet every two seconds over the in-memory link, and every file the
// program writes (monthly and CSV logs, clientraw every 10 s, settings and
// records each minute) on the disk of the benchmark's temporary folder. In
// simulated time nothing waits, so what is measured is the program's own
// work per day, the simulator's included.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>

#include "app/demo_command.h"

namespace {

using namespace nimbrel;

void BM_SimulatedDay(benchmark::State& state) {
  const auto folder = std::filesystem::temp_directory_path() / "nimbrel-day-bench";
  std::FILE* quiet = std::fopen("/dev/null", "w");
  for (auto _ : state) {
    state.PauseTiming();
    std::filesystem::remove_all(folder);
    DemoOptions options;
    options.dir = folder;
    options.start = fromLocalTime(2026, 3, 10, 0, 0, 0);
    options.speed = ClockSpeed::max();
    options.runForSeconds = 86400;
    state.ResumeTiming();
    runDemo(options, quiet);
  }
  std::fclose(quiet);
  std::filesystem::remove_all(folder);
}
BENCHMARK(BM_SimulatedDay)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
