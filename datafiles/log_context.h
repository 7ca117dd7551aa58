#pragma once
// What the log writers need besides the live record: where the logs go and
// in which units, where failures and diagnostics are reported, the day's
// totals that the statistics keep outside the record, and the time that
// stamps a line.

#include <cstdint>
#include <filesystem>

#include "core/clock.h"
#include "core/live_record.h"
#include "core/unit_choices.h"

namespace nimbrel {

struct IoStatus;
class TextLog;
struct UnitSettings;

struct LogOptions {
  std::filesystem::path logsFolder;
  UnitSystem units = UnitSystem::metric;  // log in metric or US units
  bool nineAmDay = false;                 // the weather day starts at 9 am
  bool heatIndexFromStation = false;      // write the station's heat index (`heatindexalt`)
  std::uint16_t stationType = 0;
};

LogOptions logOptionsFrom(const UnitSettings& settings, std::filesystem::path logsFolder,
                          std::uint16_t stationType, bool heatIndexFromStation);

// Where the writers report: the status word of the last file operation, the
// program's error log (a failing spell is written there once) and the
// station log that receives the diagnostics lines.
struct LogSinks {
  IoStatus& status;
  TextLog& errorLog;
  TextLog& diagnostics;
};

// Totals of the day that the statistics keep outside the live record, in
// internal units. All start at zero, which is what the logs show when no
// statistic supplies them.
struct LogDayValues {
  double rainLastHourMm = 0;
  double windRunNauticalMiles = 0;  // knot-hours, like the record's knots
  double solarEnergy = 0;           // as the solar statistics keep it; written unconverted
  double degreeDaysC = 0;           // growing degree days, Celsius
  double sunshineHours = 0;
  double highSoilC = 0;
  double lowSoilC = 0;
  double highTempC = 0;
  double lowTempC = 0;
};

// One call of a log writer: the program clock's time, and whether a logger
// download or import is being replayed, in which case the record's own
// `readingtime` stamps the lines instead.
struct LogCall {
  LocalTime now;
  bool replaying = false;
  LogDayValues day;
};

ReadingTime lineTime(const LogCall& call, const LiveRecord& record);

}  // namespace nimbrel
