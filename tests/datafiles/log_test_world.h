#pragma once
// A logs folder, the logs the writers report to and a live record, for the
// log writers' tests; plus the golden header lines of tests/data.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>

#include "core/clock.h"
#include "core/file_io.h"
#include "core/live_record.h"
#include "core/text_log.h"
#include "datafiles/log_append.h"
#include "datafiles/log_context.h"
#include "support/memory_settings_store.h"
#include "support/temp_folder.h"

namespace nimbrel::testsupport {

// File name (without the month and year of the monthly files) to its header line.
inline std::map<std::string, std::string> goldenHeaders() {
  const char* fromEnvironment = std::getenv("NIMBREL_TEST_DATA");
  const std::filesystem::path data =
      fromEnvironment ? std::filesystem::path(fromEnvironment)
                      : std::filesystem::path(__FILE__).parent_path().parent_path() / "data";
  std::ifstream in(data / "log_headers.tsv");
  if (!in) throw std::runtime_error("cannot read log_headers.tsv");
  std::map<std::string, std::string> headers;
  for (std::string line; std::getline(in, line);) {
    const auto tab = line.find('\t');
    if (line.starts_with('#') || tab == std::string::npos) continue;
    headers[line.substr(0, tab)] = line.substr(tab + 1);
  }
  return headers;
}

struct LogWorld {
  LogWorld() {
    std::filesystem::create_directory(dir / "logs");
    options.logsFolder = dir / "logs";
  }

  LogCall at(int year, int month, int day, int hour, int minute, LogDayValues values = {}) const {
    return LogCall{.now = LocalTime{year, month, day, hour, minute, 0, 0, 0, 0}, .day = values};
  }
  std::string logFile(const std::string& name) const { return readWholeFile(dir / "logs" / name).value_or("<missing>"); }
  std::string firstLine(const std::string& name) const {
    const std::string text = logFile(name);
    return text.substr(0, text.find("\r\n"));
  }
  // The line after the header, without its line end.
  std::string dataLine(const std::string& name) const {
    const std::string text = logFile(name);
    const auto start = text.find("\r\n") + 2;
    return text.substr(start, text.find("\r\n", start) - start);
  }
  bool exists(const std::string& name) const { return std::filesystem::exists(dir / "logs" / name); }
  std::string errorLogText() const { return readWholeFile(errors.path()).value_or(""); }
  std::string stationLogText() const { return readWholeFile(stationLog.path()).value_or(""); }

  TempFolder dir;
  ManualClock clock;
  TextLog errors{dir / "programerrorlog.txt", clock};
  TextLog stationLog{dir / "stationlog.txt", clock};
  IoStatus status;
  LogSinks sinks{status, errors, stationLog};
  MemorySettingsStore mainSettings;
  MemorySettingsStore uploadStore;
  LogOptions options;
  LiveRecord record;
};

// A cool autumn minute whose monthly-log line was worked out by hand:
//   "14 11 2026  9  5 05.3  65 -0.8 1013.3 3.1 12.4   7 0.2 2.4 35.6 412.0 05.3"
inline void fillAutumnMinute(LiveRecord& record) {
  record.outtemp = 5.25;
  record.outhum = 65;
  record.barometer = 1013.25;
  record.windsamples.fill(3.0);
  record.windsamples.push(9.0);  // mean (59 x 3 + 9) / 60 = 3.1
  record.gustsamples.fill(5.0);
  record.gustsamples.push(12.4);
  record.winddir = 7;
  record.raincounterprev = 100.2;
  record.raincounter = 100.4;
  record.dailyrain = 2.4;
  record.monthlyrain = 35.6;
  record.yearlyrain = 412.0;
}

}  // namespace nimbrel::testsupport
