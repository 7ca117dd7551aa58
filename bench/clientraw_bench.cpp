#include <benchmark/benchmark.h>

#include <filesystem>

#include "core/ini_store.h"
#include "core/live_record.h"
#include "core/text_log.h"
#include "core/unit_settings.h"
#include "datafiles/clientraw.h"
#include "datafiles/clientraw_settings.h"
#include "datafiles/log_append.h"
#include "processing/statistics/station_statistics.h"

namespace {

using namespace nimbrel;

// A station with a day of extremes behind it, so that every field of the
// line has a value to format.
struct ClientrawWorld {
  ClientrawWorld()
      : folder(std::filesystem::temp_directory_path() / "nimbrel-clientraw-bench"),
        clock(fromLocalTime(2026, 6, 1, 14, 0, 0)),
        log(folder / "programerrorlog.txt", clock),
        settings(folder / "NIMBREL.INI", log),
        statistics(record, settings, units, log) {
    std::filesystem::create_directories(folder);
    record.outtemp = 18.4;
    record.outhum = 64;
    record.windspeed = 7.5;
    record.windgust = 12.1;
    record.winddir = 225;
    record.barometer = 1012.6;
    record.dailyrain = 3.2;
    record.solar = 540;
    record.stationname = "Hill Top";
    statistics.onReading();
    statistics.onesecondTimer(now);
    statistics.rollthedata();
  }
  ~ClientrawWorld() {
    std::error_code ec;
    std::filesystem::remove_all(folder, ec);
  }

  std::filesystem::path folder;
  ManualClock clock;
  LocalTime now = clock.local();
  TextLog log;
  IniStore settings;
  UnitSettings units;
  LiveRecord record;
  StationStatistics statistics;
  ClientrawOptions options;
  bool busy = false;
  IoStatus status;
};

// Formatting the line alone: what every interval costs before the disk.
void BM_ClientrawLine(benchmark::State& state) {
  ClientrawWorld world;
  for (auto _ : state) {
    world.record.outtemp += 0.01;
    benchmark::DoNotOptimize(
        buildClientrawText({world.record, world.statistics, world.now, world.record.stationname}, world.options));
  }
}
BENCHMARK(BM_ClientrawLine);

// One whole write: the line, the temporary file and the copy over the
// published file, each flushed to disk.
void BM_ClientrawWrite(benchmark::State& state) {
  ClientrawWorld world;
  for (auto _ : state) {
    world.record.outtemp += 0.01;
    benchmark::DoNotOptimize(updateclientrawfilenow(world.record, world.statistics, world.options, world.folder,
                                                    world.now, world.record.stationname,
                                                    {world.busy, world.status, world.log}));
  }
  if (world.status.lastResult != 0) state.SkipWithError(world.status.lastError.c_str());
}
BENCHMARK(BM_ClientrawWrite)->Unit(benchmark::kMicrosecond);

}  // namespace
