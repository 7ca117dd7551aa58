#include "datafiles/data_file_writers.h"

#include "core/settings_store.h"
#include "datafiles/clientraw.h"
#include "datafiles/csv_logs.h"
#include "datafiles/log_files.h"
#include "datafiles/monthly_log.h"
#include "datafiles/monthly_log_reader.h"
#include "processing/cycle/main_cycle.h"
#include "processing/statistics/station_statistics.h"

namespace nimbrel {

DataFileWriters::DataFileWriters(DataFileParts parts)
    : parts_(std::move(parts)),
      logOptions_(logOptionsFrom(parts_.units, parts_.logsFolder, parts_.stationType, false)),
      clientrawOptions_(readClientrawOptions(parts_.mainSettings, parts_.rainRatePerHour)),
      clientrawInterval_(clientrawOptions_.intervalSeconds) {}

void DataFileWriters::attach(MainCycle& cycle, const LocalTime& now, const bool& dataComplete) {
  auto& minute = cycle.minutePass;
  minute.logfile.run = [this, &now, &dataComplete] {
    if (!dataComplete) return;
    LogSinks sinks{status_, parts_.errorLog, parts_.diagnostics};
    const LogfileResult result = logfile(parts_.record, callFor(now), logOptions_, parts_.mainSettings, sinks);
    if (result.written) lastLogFile_ = result.file;
  };
  minute.csvLogfile.run = [this, &now, &dataComplete] {
    if (dataComplete) minuteLogs(now);
  };
  // The last log of the minute: then this minute's rain counter becomes the
  // previous minute's.
  minute.logTenMinutes.run = [this, &now, &dataComplete] {
    if (dataComplete) {
      LogSinks sinks{status_, parts_.errorLog, parts_.diagnostics};
      logfileten(parts_.record, callFor(now), logOptions_, sinks);
    }
    parts_.record.raincounterprev = parts_.record.raincounter;
  };
  cycle.secondHalf.clientraw.run = [this, &now] {
    if (clientrawInterval_.due()) clientraw(now);
  };
}

bool DataFileWriters::minuteAlreadyLogged(const LocalTime& now) const {
  const LogCall call = callFor(now);
  const ReadingTime time = lineTime(call, parts_.record);
  const auto last = lastLoggedTime(monthFile(logOptions_, time, "lg.txt"));
  return last && last->year == time.year && last->month == time.month && last->day == time.day &&
         last->hour == time.hour && last->minute == time.minute;
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
