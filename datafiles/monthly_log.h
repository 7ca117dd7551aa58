#pragma once
// The monthly log: one line per minute in month + year + "lg.txt", the
// program's primary history, and the logs written beside it on each call.
//
// `logfile` writes, each file created with its header when missing:
//   month + year + "lg.txt"   the seventeen fields (the monthly log itself)
//   month + year + "lg2.txt"  soil, temperature and snow extremes
//   month + year + "lgsun.txt" sunshine hours and evapotranspiration
//   "extralog.csv", "1wirelog.txt", "vantagelog.txt", "growlog.txt",
//   "dailylog.txt" (the monthly-log line again), "indoorlog.txt", and
//   "vantageextrasensorslog.csv" when section "option", key
//   "Davis VP extra logging" is "yes".
// A line whose time is unset writes nothing anywhere.
//
// `logfileten` writes the same line layout every ten minutes to
// month + year + "lgten.txt", with "vantagelogten.txt", "growlogten.txt",
// "growtendailylog.txt" and "dailylog10min.txt".

#include <filesystem>

#include "core/live_record.h"

namespace nimbrel {

class SettingsStore;
struct LogCall;
struct LogOptions;
struct LogSinks;

struct LogfileResult {
  bool written = false;  // the line reached the monthly log
  std::filesystem::path file;
};

// Also stores the heat index computed for the line in `record.heatindex`:
// the one value a log writer puts back into the record.
LogfileResult logfile(LiveRecord& record, const LogCall& call, const LogOptions& options,
                      const SettingsStore& mainSettings, LogSinks& sinks);

// Called every minute; writes at minutes 0, 10, 20, 30, 40 and 50 only.
// Returns whether the ten-minute log received a line.
bool logfileten(const LiveRecord& record, const LogCall& call, const LogOptions& options, LogSinks& sinks);

}  // namespace nimbrel
