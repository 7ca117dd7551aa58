#pragma once
// The rollover of days, months and years. The per-minute pass calls
// housekeeping() once a minute with the program clock's time; it runs a
// fixed list of duties, each bound to a clock time or to the start of a new
// day, in list order, each through the duty wrapper so that one failing duty
// is logged and the others still run:
//
//   23:59          today's day number as "yesterdayday" (for the reports)
//   00:16          "ftplog.txt" started afresh
//   reset hour:00  the new day of the extremes: the day's extremes kept as
//                  yesterday's, "Normal daily resetting wind/temperature
//                  daily value , day: <day>" to the station log, the
//                  extremes back to their sentinels, the solar sums to 0
//   rain hour:00   the new rain day: today's rain filed as the previous
//                  day's and under its weekday, "Normal daily resetting rain
//                  daily value , day: <day> rain today <mm> mm" logged,
//                  today's rain and highest rain rate to 0 and saved at once
//   reset hour:00  when the new day starts a new month: the month's rain into
//                  "Rain chart", the month totals kept, the climate reports
//                  requested, "resetting month data file house keeping "
//                  logged, the monthly rain to 0; at the start of the rain
//                  season's month ("New year rain reset time") the yearly
//                  rain to 0; then the settings backup, the day's upload
//                  counters to 0, the daily logs started afresh
//
// The reset hours are those of reset_calendar.h. Duties whose work belongs to
// other parts of the program (reports, uploads, images, tide, webcam,
// memory release) hold empty, named places in the list.
//
// Each reset remembers the date of the reset day it started (section
// "House keeping", keys "last daily reset" and "last rain reset", as
// "YYYY-MM-DD") and does not run twice for the same day. With "do the daily
// reset when qz starts" (section "Weather Station Type") on, resetOnStart()
// runs the resets that were missed while the program was off, once, as they
// would have run at the last reset time that passed; a first start, with no
// date remembered, only remembers today's.

#include <filesystem>
#include <optional>
#include <span>
#include <string>

#include "core/clock.h"
#include "core/live_record.h"
#include "core/settings_store.h"
#include "core/text_log.h"
#include "core/unit_settings.h"
#include "processing/cycle/cycle_state.h"
#include "processing/statistics/daily_extremes.h"
#include "processing/statistics/rain_totals.h"
#include "processing/rollover/reset_calendar.h"

namespace nimbrel {

struct HousekeepingFiles {
  std::filesystem::path programFolder;     // where "nimbrelinibackup.ini" is written
  std::filesystem::path mainSettingsFile;  // the file the backup copies
  std::filesystem::path logsFolder;        // the daily logs and "ftplog.txt"
};

// What the rollover works on; all must outlive the Housekeeping.
struct HousekeepingParts {
  LiveRecord& record;
  DailyExtremes& extremes;
  RainTotals& rain;
  SettingsStore& main;
  CycleState& cycle;
  const UnitSettings& units;
  TextLog& stationLog;  // the rollover's own messages
  TextLog& errorLog;    // failures of its duties
  HousekeepingFiles files;
};

inline constexpr std::string_view kHousekeepingSection = "House keeping";

class Housekeeping {
 public:
  explicit Housekeeping(HousekeepingParts parts) : parts_(std::move(parts)) {}

  void housekeeping(const LocalTime& now);
  void resetOnStart(const LocalTime& now);

  // What the day's highest rain rate shows after the rain reset; empty until
  // the first rain reset of this run.
  const std::string& maxRainRateText() const { return maxRainRateText_; }

 private:
  struct DutySlot;
  static std::span<const DutySlot> duties();

  void runDuties(const LocalTime& now, bool clockDuties);
  std::optional<LocalTime> momentOf(const DutySlot& duty, const LocalTime& now, bool clockDuties) const;
  std::optional<DayChange> changeDue(const LocalTime& now, int hour, std::string_view markerKey) const;
  std::optional<DayChange> changeMissedOnStart(const LocalTime& now, int hour, std::string_view markerKey);
  void rememberChanges();
  bool usaTimes() const;

  void rememberYesterdayDay(const LocalTime& at);
  void startFtpLog(const LocalTime& at);
  void startNewExtremesDay(const LocalTime& at);
  void startNewRainDay(const LocalTime& at);
  void endMonth(const LocalTime& at);
  void startRainSeason(const LocalTime& at);
  void backupSettings(const LocalTime& at);
  void startDailyLogs(const LocalTime& at);
  void resetDailyUploadCounts(const LocalTime& at);

  HousekeepingParts parts_;
  std::optional<DayChange> newDay_;      // the reset of the extremes now due
  std::optional<DayChange> newRainDay_;  // the rain reset now due
  std::optional<LocalTime> previousPass_;  // the last minute pass, to notice a reset minute skipped
  std::string maxRainRateText_;
};

}  // namespace nimbrel
