#include "processing/rollover/housekeeping.h"

#include <array>
#include <string>

#include "core/duty.h"
#include "core/number_format.h"
#include "processing/rollover/daily_files.h"
#include "processing/rollover/period_totals.h"
#include "processing/rollover/rain_day.h"
#include "processing/rollover/yesterday_values.h"

namespace nimbrel {
namespace {

constexpr std::string_view kLastDailyReset = "last daily reset";
constexpr std::string_view kLastRainReset = "last rain reset";

enum class Anchor {
  ClockTime,    // at `hour`:`minute`
  EveryMinute,  // every call; the duty keeps its own times
  NewDay,       // when the extremes' day is reset
  NewRainDay,   // when today's rain is reset
};

}  // namespace

struct Housekeeping::DutySlot {
  std::string_view failureText;
  Anchor anchor;
  int hour = 0;
  int minute = 0;
  void (Housekeeping::*action)(const LocalTime&) = nullptr;  // none: the place of a duty done elsewhere
};

std::span<const Housekeeping::DutySlot> Housekeeping::duties() {
  using H = Housekeeping;
  // Entries without an action hold the place of work that other parts of
  // the program will do at that moment.
  static constexpr std::array<DutySlot, 23> kDuties{{
      {"error with station report jobs ", Anchor::ClockTime, 0, 5},  // station- and report-specific jobs
      {"error with ftp log reset ", Anchor::ClockTime, 0, 16, &H::startFtpLog},
      {"error with free memory ", Anchor::ClockTime, 6, 6},   // "Free memory daily" / "do it 2"
      {"error with free memory ", Anchor::ClockTime, 22, 1},  // "Free memory daily" / "do it"
      {"error with yesterday day ", Anchor::ClockTime, 23, 59, &H::rememberYesterdayDay},
      {"error with six hour extremes ", Anchor::EveryMinute},      // the records' 6-hour and night extremes
      {"error with update tide graph  ", Anchor::EveryMinute},     // tide graph
      {"error with daily webcam strip ", Anchor::EveryMinute},     // "dailywebcam.jpg" and its forms
      {"error with overnight frost reset ", Anchor::EveryMinute},  // "hours of overnight frost reset"
      {"error with av/extreme units  ", Anchor::NewDay, 0, 0, &H::startNewExtremesDay},
      {"error with daily rain reset ", Anchor::NewRainDay, 0, 0, &H::startNewRainDay},
      {"error with month end ", Anchor::NewDay, 0, 0, &H::endMonth},
      {"error with month data files ", Anchor::NewDay},  // the month's data files and "lastmonthdatafile.inf"
      {"error with print reports ", Anchor::NewDay},     // the climate reports printed ("Print reports")
      {"error with rain season reset ", Anchor::NewDay, 0, 0, &H::startRainSeason},
      {"error with year end totals ", Anchor::NewDay},  // the year's energy and sunshine, the snow season
      {"error with settings backup ", Anchor::NewDay, 0, 0, &H::backupSettings},
      {"error with upload counters reset ", Anchor::NewDay, 0, 0, &H::resetDailyUploadCounts},
      {"error with daily logs reset ", Anchor::NewDay, 0, 0, &H::startDailyLogs},
      {"error with daily webcam upload ", Anchor::NewDay},           // "animatedwebcamday.gif" and its second
      {"error with month to date graph ", Anchor::NewDay},           // "monthtodate.jpg"
      {"error with formalltimerecord.saveimage  ", Anchor::NewDay},  // the all-time records image
      {"error with my daily report ", Anchor::NewDay},               // "mydailyreport.txt"
  }};
  return kDuties;
}

void Housekeeping::housekeeping(const LocalTime& now) {
  newDay_ = changeDue(now, dailyResetHourOf(parts_.units.resets), kLastDailyReset);
  newRainDay_ = changeDue(now, rainResetHourOf(parts_.units.resets), kLastRainReset);
  runDuties(now, true);
  previousPass_ = now;
}

void Housekeeping::resetOnStart(const LocalTime& now) {
  if (!parts_.units.station.dailyResetWhenStarting) return;
  newDay_ = changeMissedOnStart(now, dailyResetHourOf(parts_.units.resets), kLastDailyReset);
  newRainDay_ = changeMissedOnStart(now, rainResetHourOf(parts_.units.resets), kLastRainReset);
  runDuties(now, false);
}

// The resets are remembered before they run, so that a failing duty is
// logged once rather than retried for the rest of the reset minute.
void Housekeeping::runDuties(const LocalTime& now, bool clockDuties) {
  rememberChanges();
  for (const DutySlot& duty : duties()) {
    const std::optional<LocalTime> at = momentOf(duty, now, clockDuties);
    if (!at || !duty.action) continue;
    runDutyWithMessage(parts_.errorLog, duty.failureText, [&] { (this->*duty.action)(*at); });
  }
  newDay_.reset();
  newRainDay_.reset();
}

std::optional<LocalTime> Housekeeping::momentOf(const DutySlot& duty, const LocalTime& now, bool clockDuties) const {
  switch (duty.anchor) {
    case Anchor::ClockTime:
      if (clockDuties && now.hour == duty.hour && now.minute == duty.minute) return now;
      return std::nullopt;
    case Anchor::EveryMinute:
      if (clockDuties) return now;
      return std::nullopt;
    case Anchor::NewDay:
      if (newDay_) return newDay_->at;
      return std::nullopt;
    case Anchor::NewRainDay:
      if (newRainDay_) return newRainDay_->at;
      return std::nullopt;
  }
  return std::nullopt;
}

// Due at minute 0 of the reset hour, unless this reset day has had its reset.
// A reset minute that passed while the program ran but got no minute pass
// (the machine stalled for minutes) is made up at the next pass.
std::optional<DayChange> Housekeeping::changeDue(const LocalTime& now, int hour, std::string_view markerKey) const {
  const CalendarDate resetDay = resetDateAt(now, hour);
  const LocalTime moment = momentAt(resetDay, hour);
  const auto instant = [](const LocalTime& t) {
    return fromLocalTime(t.year, t.month, t.day, t.hour, t.minute, t.second);
  };
  const bool atResetMinute = now.hour == hour && now.minute == 0;
  const bool skippedSinceLastPass = previousPass_ && instant(*previousPass_) < instant(moment);
  if (!atResetMinute && !skippedSinceLastPass) return std::nullopt;
  DayChange change{moment, std::nullopt};
  CalendarDate previous;
  if (parseIsoDate(parts_.main.ReadString(kHousekeepingSection, markerKey), previous)) {
    if (previous == resetDay) return std::nullopt;
    change.previous = previous;
  }
  return change;
}

std::optional<DayChange> Housekeeping::changeMissedOnStart(const LocalTime& now, int hour, std::string_view markerKey) {
  const CalendarDate resetDay = resetDateAt(now, hour);
  CalendarDate previous;
  if (!parseIsoDate(parts_.main.ReadString(kHousekeepingSection, markerKey), previous)) {
    parts_.main.WriteString(kHousekeepingSection, markerKey, isoDateText(resetDay));
    return std::nullopt;
  }
  if (previous == resetDay) return std::nullopt;
  return DayChange{momentAt(resetDay, hour), previous};
}

void Housekeeping::rememberChanges() {
  if (newDay_) parts_.main.WriteString(kHousekeepingSection, kLastDailyReset, isoDateText(dateOf(newDay_->at)));
  if (newRainDay_) parts_.main.WriteString(kHousekeepingSection, kLastRainReset, isoDateText(dateOf(newRainDay_->at)));
}

bool Housekeeping::usaTimes() const { return parts_.units.units.date == UnitSystem::usa; }

void Housekeeping::rememberYesterdayDay(const LocalTime& at) {
  parts_.main.WriteString(kHousekeepingSection, "yesterdayday", std::to_string(at.day));
}

void Housekeeping::startFtpLog(const LocalTime&) { restartFtpLog(parts_.files.logsFolder); }

void Housekeeping::startNewExtremesDay(const LocalTime& at) {
  keepExtremesAsYesterday(parts_.extremes, parts_.main);
  parts_.stationLog.write("Normal daily resetting wind/temperature daily value , day: " + std::to_string(at.day));
  parts_.extremes.resetDay(parts_.main);
  resetUnfollowedExtremes(parts_.main);
  resetDailySolarSums(parts_.main);
}

void Housekeeping::startNewRainDay(const LocalTime& at) {
  const double rainMm = parts_.record.dailyrain;
  fileRainOfEndedDay({rainMm, parts_.units.units.date, usaTimes()}, at, parts_.main);
  parts_.stationLog.write("Normal daily resetting rain daily value , day: " + std::to_string(at.day) + " rain today " +
                          floatText(rainMm) + " mm");
  parts_.rain.resetDay(parts_.record, parts_.main);
  parts_.record.maxrainrate = 0;
  maxRainRateText_ = maxRainRateResetText(parts_.units.units.rain);
}

void Housekeeping::endMonth(const LocalTime&) {
  if (!newDay_->startsNewMonth()) return;
  enterMonthInRainChart(newDay_->endedMonth(), parts_.record.monthlyrain, parts_.main);
  keepMonthTotals(parts_.main);
  parts_.cycle.noaa_request = true;
  parts_.stationLog.write("resetting month data file house keeping ");
  parts_.rain.resetMonth(parts_.record, parts_.main);
}

void Housekeeping::startRainSeason(const LocalTime&) {
  if (newDay_->startsMonth(parts_.units.resets.rainSeasonStartMonth)) parts_.rain.resetYear(parts_.record, parts_.main);
}

void Housekeeping::backupSettings(const LocalTime&) {
  backupMainSettings(parts_.main, parts_.files.mainSettingsFile, parts_.files.programFolder);
}

void Housekeeping::startDailyLogs(const LocalTime&) { restartDailyLogs(parts_.files.logsFolder); }

void Housekeeping::resetDailyUploadCounts(const LocalTime&) { resetUploadCounters(parts_.main); }

}  // namespace nimbrel
