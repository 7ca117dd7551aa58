#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "core/clock.h"
#include "core/file_io.h"
#include "core/ini_store.h"
#include "core/live_record.h"
#include "core/text_log.h"
#include "datafiles/log_append.h"
#include "datafiles/log_context.h"
#include "datafiles/log_fields.h"
#include "datafiles/log_headers.h"
#include "datafiles/monthly_log.h"
#include "datafiles/monthly_log_reader.h"

namespace {

using namespace nimbrel;

constexpr int kMinutesInAMonth = 31 * 24 * 60;  // 44,640 lines

std::filesystem::path benchFolder(const char* name) {
  const auto folder = std::filesystem::temp_directory_path() / name;
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  return folder;
}

LiveRecord sampleRecord() {
  LiveRecord record;
  record.outtemp = 12.3;
  record.outhum = 71;
  record.barometer = 1009.8;
  record.windsamples.fill(6.2);
  record.gustsamples.fill(11.5);
  record.winddir = 245;
  record.dailyrain = 3.4;
  record.monthlyrain = 41.2;
  record.yearlyrain = 512.6;
  return record;
}

// A full month of minute lines, as the views that draw history read it.
void BM_ReadMonthOfMinuteLines(benchmark::State& state) {
  const auto file = benchFolder("nimbrel-monthly-log-read") / "12026lg.txt";
  LiveRecord record = sampleRecord();
  std::string text = std::string(kMonthlyLogHeader) + "\r\n";
  for (int minute = 0; minute < kMinutesInAMonth; ++minute) {
    record.outtemp = 5.0 + (minute % 400) * 0.05;
    const ReadingTime time{
        static_cast<std::uint16_t>(1 + minute / 1440), 1, 2026, static_cast<std::uint16_t>(minute / 60 % 24),
        static_cast<std::uint16_t>(minute % 60),       0};
    text += makeLogFields(record, time, LogOptions{}).line() + "\r\n";
  }
  writeFileAtomically(file, text);
  for (auto _ : state) {
    const auto log = readMonthlyLog(file);
    benchmark::DoNotOptimize(log->lines().size());
  }
  state.SetItemsProcessed(state.iterations() * kMinutesInAMonth);
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(BM_ReadMonthOfMinuteLines)->Unit(benchmark::kMillisecond);

// One call of the per-minute log writer: the monthly log and every file
// written beside it.
void BM_WriteOneLogLine(benchmark::State& state) {
  const auto folder = benchFolder("nimbrel-monthly-log-write");
  ManualClock clock(fromLocalTime(2026, 1, 14, 10, 0, 0));
  TextLog errors(folder / "programerrorlog.txt", clock);
  TextLog stationLog(folder / "stationlog.txt", clock);
  IoStatus status;
  LogSinks sinks{status, errors, stationLog};
  IniStore noSettings(folder / "NIMBREL.INI", errors);
  LogOptions options;
  options.logsFolder = folder;
  LiveRecord record = sampleRecord();
  LogCall call;
  call.now = clock.local();
  for (auto _ : state) {
    benchmark::DoNotOptimize(logfile(record, call, options, noSettings, sinks).written);
  }
  std::filesystem::remove_all(folder);
}
BENCHMARK(BM_WriteOneLogLine)->Unit(benchmark::kMicrosecond);

// Only the formatting of one line, without the files.
void BM_FormatOneLogLine(benchmark::State& state) {
  const LiveRecord record = sampleRecord();
  const ReadingTime time{14, 1, 2026, 10, 0, 0};
  for (auto _ : state) benchmark::DoNotOptimize(makeLogFields(record, time, LogOptions{}).line());
}
BENCHMARK(BM_FormatOneLogLine);

}  // namespace
