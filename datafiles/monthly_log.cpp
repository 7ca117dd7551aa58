#include "datafiles/monthly_log.h"

#include <string>

#include "core/settings_store.h"
#include "core/text_log.h"
#include "datafiles/log_context.h"
#include "datafiles/log_fields.h"
#include "datafiles/log_files.h"
#include "datafiles/log_headers.h"
#include "datafiles/sensor_log_lines.h"

namespace nimbrel {
namespace {

// A clock that is not set yet gives no date prefix; a prefix this short is
// never a real date.
constexpr std::size_t kShortestUnsetPrefix = 2;
constexpr int kTenMinutes = 10;
// The ten-minute logs carry the monthly log's columns under the header whose
// blank runs differ from it.
constexpr std::string_view kTenMinuteLogHeader = kDailyLogHeader;

bool timeIsUsable(const LogFields& fields) { return fields.datePrefix().size() > kShortestUnsetPrefix; }

void writeCompanions(const LogFields& fields, const LiveRecord& record, const LogCall& call,
                     const ReadingTime& time, const LogOptions& options, LogSinks& sinks) {
  appendLogRecord(monthFile(options, time, "lg2.txt"), kSoilLogHeader,
                  soilLogLine(fields, call.day, record, options), sinks);
  appendLogRecord(monthFile(options, time, "lgsun.txt"), kSunLogHeader,
                  sunLogLine(fields, call.day, record, options), sinks);
}

void writeSensorLogs(const LogFields& fields, const LiveRecord& record, const LogCall& call,
                     const LogOptions& options, const SettingsStore& mainSettings, LogSinks& sinks) {
  const auto& folder = options.logsFolder;
  appendLogRecord(folder / "extralog.csv", kExtraLogHeader, extraLogLine(fields, record, options), sinks);
  if (mainSettings.readSwitch("option", "Davis VP extra logging"))
    appendLogRecord(folder / "vantageextrasensorslog.csv", kVantageExtraSensorsHeader,
                    vantageExtraSensorsLine(fields, record, options), sinks);
  appendLogRecord(folder / "1wirelog.txt", kOneWireLogHeader, oneWireLogLine(fields, record, options), sinks);
  appendLogRecord(folder / "vantagelog.txt", kVantageLogHeader, vantageLogLine(fields, record, options),
                  sinks);
  appendLogRecord(folder / "growlog.txt", kGrowLogHeader, growLogLine(fields, call.day, record, options),
                  sinks);
  appendLogRecord(folder / "dailylog.txt", kDailyLogHeader, fields.line(), sinks);
  appendLogRecord(folder / "indoorlog.txt", kIndoorLogHeader, indoorLogLine(fields, record, options), sinks);
}

}  // namespace

LogfileResult logfile(LiveRecord& record, const LogCall& call, const LogOptions& options,
                      const SettingsStore& mainSettings, LogSinks& sinks) {
  const ReadingTime time = lineTime(call, record);
  const LogFields fields = makeLogFields(record, time, options);
  record.heatindex = fields.heatIndexC;
  if (!timeIsUsable(fields)) return {};

  LogfileResult result;
  result.file = monthFile(options, time, "lg.txt");
  const LogAppend appended = appendLogRecord(result.file, kMonthlyLogHeader, fields.line(), sinks);
  if (appended == LogAppend::Created)
    sinks.diagnostics.write("re creating the main logfile, does not exist " + result.file.string());
  result.written = appended != LogAppend::Failed;

  writeCompanions(fields, record, call, time, options, sinks);
  writeSensorLogs(fields, record, call, options, mainSettings, sinks);
  return result;
}

bool logfileten(const LiveRecord& record, const LogCall& call, const LogOptions& options, LogSinks& sinks) {
  const ReadingTime time = lineTime(call, record);
  if (time.minute % kTenMinutes != 0) return false;
  const LogFields fields = makeLogFields(record, time, options);
  if (!timeIsUsable(fields)) return false;

  const auto& folder = options.logsFolder;
  const std::string line = fields.line();
  const bool written = appendLogRecord(monthFile(options, time, "lgten.txt"), kTenMinuteLogHeader, line,
                                       sinks) != LogAppend::Failed;
  appendLogRecord(folder / "vantagelogten.txt", kVantageLogHeader, vantageLogLine(fields, record, options),
                  sinks);
  const std::string growLine = growLogLine(fields, call.day, record, options);
  appendLogRecord(folder / "growlogten.txt", kGrowLogHeader, growLine, sinks);
  appendLogRecord(folder / "growtendailylog.txt", kGrowLogHeader, growLine, sinks);
  appendLogRecord(folder / "dailylog10min.txt", kTenMinuteLogHeader, line, sinks);
  return written;
}

}  // namespace nimbrel
