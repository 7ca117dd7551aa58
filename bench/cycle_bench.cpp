#include <benchmark/benchmark.h>

#include <filesystem>

#include "core/ini_store.h"
#include "core/text_log.h"
#include "core/unit_settings.h"
#include "processing/cycle/cycle_wiring.h"
#include "processing/cycle/main_cycle.h"
#include "processing/statistics/station_statistics.h"

namespace {

using namespace nimbrel;

// The cycle as the program wires it, with a station that sends a reading
// every other second (as a Vantage console does).
struct CycleWorld {
  CycleWorld()
      : folder(std::filesystem::temp_directory_path() / "nimbrel-cycle-bench"),
        clock(fromLocalTime(2026, 6, 1, 10, 0, 0)),
        log(folder / "log.txt", clock),
        settings(folder / "NIMBREL.INI", log),
        statistics(record, settings, units, log),
        cycle(state, receive, log, 31) {
    std::filesystem::create_directories(folder);
    attachStatistics(cycle, statistics, state, receive, 31, now);
    statistics.load(clock.local());
  }
  void second(int i) {
    clock.advance(std::chrono::seconds(1));
    now = clock.local();
    if (i % 2 == 0) {
      record.outtemp = 15 + (i % 100) * 0.01;
      record.outhum = static_cast<std::uint16_t>(60 + i % 5);
      record.windspeed = record.windgust = 5 + i % 7;
      record.winddir = static_cast<std::uint16_t>(i % 360);
      record.barometer = 1013 + (i % 10) * 0.1;
      record.raincounter = 100 + (i / 600) * 0.2;
      statistics.onReading();
      state.reading_received = true;
      receive.indicatorLime = true;
    }
    cycle.updatetimernewnow(now);
  }

  std::filesystem::path folder;
  ManualClock clock;
  LocalTime now;
  TextLog log;
  IniStore settings;
  UnitSettings units;
  LiveRecord record;
  ReceiveState receive;
  CycleState state;
  StationStatistics statistics;
  MainCycle cycle;
};

void BM_OneTick(benchmark::State& s) {
  CycleWorld world;
  int i = 0;
  for (auto _ : s) world.second(++i);
  s.counters["minute passes"] = static_cast<double>(world.cycle.minutePasses());
}
BENCHMARK(BM_OneTick);

void BM_MinutePass(benchmark::State& s) {
  CycleWorld world;
  for (int i = 0; i < 120; ++i) world.second(i);
  for (auto _ : s) world.cycle.Timer1Timer();
}
BENCHMARK(BM_MinutePass);

}  // namespace
