#pragma once
// The data-file writers as the running program uses them: the monthly log,
// its ten-minute variant and the CSV logs in the per-minute pass, and
// clientraw.txt in the second half of the tick at its own interval. Owns the
// writers' status word, the clientraw busy flag and interval, and moves the
// minute's rain counter on after the last log of the minute has used it.

#include <filesystem>
#include <optional>

#include "core/clock.h"
#include "core/live_record.h"
#include "core/unit_settings.h"
#include "datafiles/clientraw_settings.h"
#include "datafiles/log_append.h"
#include "datafiles/log_context.h"
#include "stations/receive_state.h"

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
  // `receive` holds the data watchdog's verdicts: nothing is logged before
  // the data are complete, nor while the station is silent (its readings are
  // then the last it sent, and a line of them would be made up). The error
  // log says once when the silence stops the logs and once when they go on.
  void attach(MainCycle& cycle, const LocalTime& now, const ReceiveState& receive);

  // At start: the minutes up to the monthly log's last line are logged
  // already. A program started again from a moment before that (a minute
  // whose pass an earlier run made, or a demo going on from its last saved
  // time) writes none of them a second time.
  void resumeAfterLogged(const LocalTime& now);

  const IoStatus& status() const { return status_; }
  const std::filesystem::path& lastLogFile() const { return lastLogFile_; }
  std::uint64_t clientrawWrites() const { return clientrawWrites_; }

 private:
  LogCall callFor(const LocalTime& now) const;
  std::optional<ReadingTime> lastLoggedAround(const LocalTime& now) const;
  // Whether the minute of `now` still needs its log lines.
  bool logsDue(const LocalTime& now);
  // Whether the station's readings may be logged now.
  bool readingsAreNew(const LocalTime& now);
  bool minuteLogsWanted(const LocalTime& now) {
    return receive_->processData && readingsAreNew(now) && logsDue(now);
  }
  void minuteLogs(const LocalTime& now);
  void clientraw(const LocalTime& now);

  DataFileParts parts_;
  const ReceiveState* receive_ = nullptr;  // set by attach
  bool silenceReported_ = false;
  LogOptions logOptions_;
  ClientrawOptions clientrawOptions_;
  ClientrawInterval clientrawInterval_;
  IoStatus status_;
  bool clientrawBusy_ = false;
  std::filesystem::path lastLogFile_;
  std::optional<ReadingTime> loggedThrough_;
  std::uint64_t clientrawWrites_ = 0;
};

}  // namespace nimbrel
