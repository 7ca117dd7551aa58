#include "datafiles/data_file_writers.h"

#include <fmt/format.h>

#include <tuple>

#include "core/settings_store.h"
#include "datafiles/clientraw.h"
#include "datafiles/csv_logs.h"
#include "datafiles/log_files.h"
#include "datafiles/monthly_log.h"
#include "datafiles/monthly_log_reader.h"
#include "processing/cycle/main_cycle.h"
#include "processing/statistics/station_statistics.h"
#include "stations/data_watchdog.h"

namespace nimbrel {
namespace {

// How far past the start a restart looks for lines logged already.
constexpr int kResumeLookAhead = 180;

auto minuteOrder(const ReadingTime& t) { return std::tie(t.year, t.month, t.day, t.hour, t.minute); }

}  // namespace

DataFileWriters::DataFileWriters(DataFileParts parts)
    : parts_(std::move(parts)),
      logOptions_(logOptionsFrom(parts_.units, parts_.logsFolder, parts_.stationType, false)),
      clientrawOptions_(readClientrawOptions(parts_.mainSettings, parts_.rainRatePerHour)),
      clientrawInterval_(clientrawOptions_.intervalSeconds) {}

void DataFileWriters::attach(MainCycle& cycle, const LocalTime& now, const ReceiveState& receive) {
  receive_ = &receive;
  auto& minute = cycle.minutePass;
  minute.logfile.run = [this, &now] {
    if (!minuteLogsWanted(now)) return;
    LogSinks sinks{status_, parts_.errorLog, parts_.diagnostics};
    const LogfileResult result = logfile(parts_.record, callFor(now), logOptions_, parts_.mainSettings, sinks);
    if (result.written) lastLogFile_ = result.file;
  };
  minute.csvLogfile.run = [this, &now] {
    if (minuteLogsWanted(now)) minuteLogs(now);
  };
  // The last log of the minute: then this minute's rain counter becomes the
  // previous minute's.
  minute.logTenMinutes.run = [this, &now] {
    if (minuteLogsWanted(now)) {
      LogSinks sinks{status_, parts_.errorLog, parts_.diagnostics};
      logfileten(parts_.record, callFor(now), logOptions_, sinks);
    }
    parts_.record.raincounterprev = parts_.record.raincounter;
  };
  cycle.secondHalf.clientraw.run = [this, &now] {
    if (clientrawInterval_.due()) clientraw(now);
  };
}

std::optional<ReadingTime> DataFileWriters::lastLoggedAround(const LocalTime& now) const {
  // The month of `now`, and of a moment shortly after it: the last lines
  // logged may already be in the next month's file.
  std::optional<ReadingTime> latest;
  for (const auto later : {std::chrono::seconds(0), std::chrono::seconds(kResumeLookAhead)}) {
    const LocalTime t = toLocalTime(fromLocalTime(now.year, now.month, now.day, now.hour, now.minute, now.second) + later);
    const auto last = lastLoggedTime(monthFile(logOptions_, lineTime(callFor(t), parts_.record), "lg.txt"));
    if (last && (!latest || minuteOrder(*last) > minuteOrder(*latest))) latest = last;
  }
  return latest;
}

void DataFileWriters::resumeAfterLogged(const LocalTime& now) { loggedThrough_ = lastLoggedAround(now); }

bool DataFileWriters::logsDue(const LocalTime& now) {
  if (!loggedThrough_) return true;
  const ReadingTime time = lineTime(callFor(now), parts_.record);
  if (minuteOrder(time) <= minuteOrder(*loggedThrough_)) return false;
  loggedThrough_.reset();  // past the logged minutes: from now on every minute is new
  return true;
}

bool DataFileWriters::readingsAreNew(const LocalTime& now) {
  const bool silent = receive_->stationSilent;
  if (silent == silenceReported_) return !silent;
  silenceReported_ = silent;
  if (silent)
    parts_.errorLog.write(fmt::format("no data from the station for more than {} seconds: the minutes are not "
                                      "logged until it sends again",
                                      kNoDataTickLimit));
  else
    parts_.errorLog.write(fmt::format("the station sends again: logging goes on from {:02}:{:02}", now.hour,
                                      now.minute));
  return !silent;
}

LogCall DataFileWriters::callFor(const LocalTime& now) const {
  LogCall call;
  call.now = now;
  const DailyExtremes& extremes = parts_.statistics.extremes();
  call.day.highTempC = extremes.high(Quantity::Temperature);
  call.day.lowTempC = extremes.low(Quantity::Temperature);
  call.day.highSoilC = extremes.high(Quantity::SoilTemp);
  call.day.lowSoilC = extremes.low(Quantity::SoilTemp);
  return call;
}

void DataFileWriters::minuteLogs(const LocalTime& now) {
  LogSinks sinks{status_, parts_.errorLog, parts_.diagnostics};
  const bool solarSoil = parts_.stationType == 31;
  logfilecsv(parts_.record, callFor(now), logOptions_, solarSoil, {parts_.mainSettings, parts_.uploadStore}, sinks);
}

void DataFileWriters::clientraw(const LocalTime& now) {
  if (updateclientrawfilenow(parts_.record, parts_.statistics, clientrawOptions_, parts_.webFolder, now,
                             parts_.record.stationname, {clientrawBusy_, status_, parts_.errorLog}))
    ++clientrawWrites_;
}

}  // namespace nimbrel
