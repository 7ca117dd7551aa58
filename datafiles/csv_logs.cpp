#include "datafiles/csv_logs.h"

#include <cerrno>
#include <string>
#include <utility>

#include "core/file_io.h"
#include "core/log_formulas.h"
#include "core/settings_store.h"
#include "core/text_log.h"
#include "datafiles/log_context.h"
#include "datafiles/log_fields.h"
#include "datafiles/log_files.h"
#include "datafiles/log_headers.h"
#include "datafiles/sensor_log_lines.h"

namespace nimbrel {
namespace {

constexpr int kFirstCsvHourOfNineAmDay = 10;

// The monthly-log fields with the indoor sensor in the temperature,
// humidity, dew point and heat index columns.
LogFields indoorFields(LogFields fields, const LiveRecord& record, const LogOptions& options) {
  auto set = [&fields](LogColumn column, std::string text) {
    fields.text[static_cast<std::size_t>(column)] = std::move(text);
  };
  set(LogColumn::temperature, logTemperatureText(record.intemp, options.units));
  set(LogColumn::humidity, logHumidityText(record.inhum));
  set(LogColumn::dewpoint, logTemperatureText(logDewPoint(record.intemp, record.inhum), options.units));
  set(LogColumn::heatindex, logTemperatureText(logHeatIndex(record.intemp, record.inhum), options.units));
  return fields;
}

bool monthStartsNow(const ReadingTime& time, const LogOptions& options) {
  if (time.day != 1) return false;
  if (options.nineAmDay) return time.hour >= kFirstCsvHourOfNineAmDay;
  return time.hour == 0 && time.minute == 1;
}

// Gives the new month's CSV log its header before any line arrives.
void startMonthCsv(const ReadingTime& time, const LogOptions& options, LogSinks& sinks) {
  if (!monthStartsNow(time, options)) return;
  const auto file = monthFile(options, time, "lgcsv.csv");
  std::error_code ec;
  if (std::filesystem::exists(file, ec)) return;
  appendLogLine(file, std::string(kCsvLogHeader) + "\r\n", "", sinks.status, sinks.errorLog);
}

void noteCopyResult(bool copied, const std::string& why, const std::filesystem::path& target,
                    LogSinks& sinks) {
  if (copied) {
    sinks.status = IoStatus{};
    return;
  }
  sinks.status.lastResult = errno != 0 ? errno : EIO;
  sinks.status.lastError = why;
  if (!sinks.status.failing) sinks.errorLog.write("cannot copy the log to " + target.string() + ": " + why);
  sinks.status.failing = true;
}

// The day's ten-minute CSV is published under its own name so that the
// uploader never sends the file while a line is being appended.
bool queueTenMinuteCopy(const ReadingTime& time, const LogOptions& options, CsvLogStores stores,
                        LogSinks& sinks) {
  if (time.hour != 23 || time.minute != 50) return false;
  if (!stores.mainSettings.readSwitch("DDE send", "ftp log monthly")) return false;
  const auto source = monthFile(options, time, "lgcsv10.csv");
  const auto copy = monthFile(options, time, "lgcsv10ftp.csv");
  std::string why;
  errno = 0;
  const bool copied = copyFileAtomically(source, copy, &why);
  noteCopyResult(copied, why, copy, sinks);
  if (!copied) return false;
  stores.uploadStore.WriteString("Files", copy.string(), " ");
  stores.uploadStore.WriteString("Remote Files", copy.filename().string(), " ");
  return true;
}

void writeIntervalCopies(const std::string& line, const ReadingTime& time, const LogOptions& options,
                         LogSinks& sinks) {
  if (time.minute % 10 == 0)
    appendLogRecord(monthFile(options, time, "lgcsv10.csv"), kCsvLogHeader, line, sinks);
  if (time.minute % 30 == 0)
    appendLogRecord(monthFile(options, time, "lgcsv30.csv"), kCsvLogHeader, line, sinks);
  if (time.minute == 0) appendLogRecord(monthFile(options, time, "lgcsv60.csv"), kCsvLogHeader, line, sinks);
}

}  // namespace

CsvLogResult logfilecsv(const LiveRecord& record, const LogCall& call, const LogOptions& options,
                        bool solarSoilLogging, CsvLogStores stores, LogSinks& sinks) {
  const ReadingTime time = lineTime(call, record);
  const LogFields fields = makeLogFields(record, time, options);
  if (fields.datePrefix().empty()) return {};

  startMonthCsv(time, options, sinks);
  CsvLogResult result;
  const std::string line = fields.csv();
  result.written =
      appendLogRecord(monthFile(options, time, "lgcsv.csv"), kCsvLogHeader, line, sinks) != LogAppend::Failed;
  writeIntervalCopies(line, time, options, sinks);

  const std::string rainLastHour = "," + logRainTotalText(call.day.rainLastHourMm, 0, options.units);
  const auto& folder = options.logsFolder;
  appendLogRecord(folder / "dailylogcsv.csv", kDailyCsvHeader, line + rainLastHour, sinks);
  appendLogRecord(folder / "indoorlogcsv.csv", kIndoorCsvHeader,
                  indoorFields(fields, record, options).csv() + rainLastHour, sinks);
  if (solarSoilLogging) {
    appendLogRecord(monthFile(options, time, "vantagelogcsv.csv"), kVantageCsvHeader,
                    vantageCsvLine(fields, record, options), sinks);
    appendLogRecord(monthFile(options, time, "growlogcsv.csv"), kGrowCsvHeader,
                    growCsvLine(fields, call.day, record, options), sinks);
  }
  result.doupload = queueTenMinuteCopy(time, options, stores, sinks);
  return result;
}

}  // namespace nimbrel
