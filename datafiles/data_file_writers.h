#pragma once
// The data-file writers as the running program uses them: the monthly log,
// its ten-minute variant and the CSV logs in the per-minute pass, and
// clientraw.txt in the second half of the tick at its own interval. Owns the
// writers' status word, the clientraw busy flag and interval, and moves the
// minute's rain counter on after the last log of the minute has used it.

#include <filesystem>

#include "core/clock.h"
#include "core/live_record.h"
#include "core/unit_settings.h"
#include "datafiles/clientraw_settings.h"
#include "datafiles/log_append.h"
#include "datafiles/log_context.h"

namespace nimbrel {

class MainCycle;
class SettingsStore;
class StationStatistics;
class TextLog;

struct DataFileParts {
  LiveRecord& record;
  const StationStatistics& statistics;
  const SettingsStore& mainSettings;
  SettingsStore& uploadStore;
  const UnitSettings& units;
  TextLog& errorLog;
  TextLog& diagnostics;
  std::filesystem::path logsFolder;
  std::filesystem::path webFolder;
  std::uint16_t stationType = 0;
  bool rainRatePerHour = false;  // the station's rain rate is per hour (the Vantage's is)
};

class DataFileWriters {
 public:
  explicit DataFileWriters(DataFileParts parts);

  // Fills the cycle's slots. `now` is the time of the present tick;
  // `dataComplete` the data watchdog's verdict (nothing is logged before it).
  void attach(MainCycle& cycle, const LocalTime& now, const bool& dataComplete);

  // Whether the monthly log already holds a line for the minute of `now`:
  // a program started again within a minute it logged before must not log
  // that minute a second time.
  bool minuteAlreadyLogged(const LocalTime& now) const;

  const IoStatus& status() const { return status_; }
  const std::filesystem::path& lastLogFile() const { return lastLogFile_; }
  std::uint64_t clientrawWrites() const { return clientrawWrites_; }

 private:
  LogCall callFor(const LocalTime& now) const;
  void minuteLogs(const LocalTime& now);
  void clientraw(const LocalTime& now);

  DataFileParts parts_;
  LogOptions logOptions_;
  ClientrawOptions clientrawOptions_;
  ClientrawInterval clientrawInterval_;
  IoStatus status_;
  bool clientrawBusy_ = false;
  std::filesystem::path lastLogFile_;
  std::uint64_t clientrawWrites_ = 0;
};

}  // namespace nimbrel
