#include "processing/statistics/station_statistics.h"

#include <fmt/format.h>

#include "core/log_formulas.h"
#include "core/text_log.h"
#include "core/weather_utils.h"
#include "processing/validation/spike_filter.h"

namespace nimbrel {
namespace {

constexpr double kKmhPerKnot = 1.852;

}  // namespace

StationStatistics::StationStatistics(LiveRecord& record, SettingsStore& mainSettings, const UnitSettings& units,
                                     TextLog& stationLog)
    : record_(record),
      main_(mainSettings),
      units_(units),
      stationLog_(stationLog),
      limits_(readAbsoluteLimits(mainSettings)),
      series_(readSpikeLimits(mainSettings)),
      rain_(stationLog),
      accepted_(record) {}

std::vector<std::string> StationStatistics::load(const LocalTime& now) {
  extremes_.load(main_);
  rain_.load(main_, record_);
  records_.load(main_);
  checkRecordPeriods(now);
  accepted_ = record_;
  return records_.dropImplausible(limits_);
}

bool StationStatistics::usaTimes() const { return units_.units.date == UnitSystem::usa; }

std::optional<double> StationStatistics::averageForDailyMax() const {
  if (units_.wind.useTenMinuteAverageForMax) return tenMinuteAverage();
  return std::nullopt;
}

void StationStatistics::onReading(bool afterSilence) {
  applyAbsoluteLimits(record_, accepted_, limits_);
  // The station's counter may have risen while the program was off or the
  // station silent: that rain goes to the totals, not to this one minute.
  if (!readingSeen_ || afterSilence) record_.raincounterprev = record_.raincounter;
  rain_.addCounterReading(record_.raincounter, record_, limits_.maxRainSpike);
  derive();
  accepted_ = record_;
  readingSeen_ = true;
}

void StationStatistics::derive() {
  if (record_.outhum > 0) record_.dewpoint = TWeatherUtils::DewPoint(record_.outhum, 0, record_.outtemp);
  const double chillWind = units_.wind.chillFromGust ? record_.windgust : record_.windspeed;
  record_.windchill = TWeatherUtils::WindChill(chillWind * kKmhPerKnot, record_.outtemp);
  record_.heatindex = logHeatIndex(record_.outtemp, record_.outhum);
}

void StationStatistics::onesecondTimer(const LocalTime& now) {
  lastHourWind_.noteReading(record_.windspeed, record_.windgust);
  extremes_.check_data(record_, now, usaTimes(), main_, averageForDailyMax());
  records_.compare(record_, now, averageForDailyMax());
}

void StationStatistics::updateRainRate(const LocalTime& now) {
  rain_.updateRainRate(record_, now, usaTimes(), main_);
  record_.maxrainrate = rain_.maxRainRate();
}

// The short-term rain series holds the rain of the present minute so far. A
// refused spike repeats the last accepted sample in the minute log as well.
void StationStatistics::rollthedata() {
  series_.rollthedata(record_, record_.raincounter - record_.raincounterprev, stationLog_);
  record_.windsamples.push(series_.latestSpeed());
  record_.gustsamples.push(series_.latestGust());
}

LastHourMaximum StationStatistics::updatemaxgustreadings(const LocalTime& now) {
  MinuteWindInputs inputs;
  inputs.directionDegrees = record_.winddir;
  inputs.todaysHighGust = extremes_.todaysHighGust();
  inputs.resetHour = extremesResetHour(units_.resets.dayReset);
  inputs.now = now;
  inputs.usaTimes = usaTimes();
  lastHourMaximum_ = lastHourWind_.updatemaxgustreadings(inputs, main_);
  return lastHourMaximum_;
}

void StationStatistics::minuteWind() { tenMinute_.push(record_.windsamples.mean()); }

void StationStatistics::saveRainStorage() { rain_.save(record_, main_); }

void StationStatistics::saveRecords(const RecordsBackup& backup) {
  RunningValues running;
  running.rain = RunningValues::Rain{record_.dailyrain, record_.monthlyrain, record_.yearlyrain};
  running.lastMaxRainRate = rain_.maxRainRate();
  const bool recordsChanged = savedRecordsVersion_ != records_.version();
  saverecordstoinifile(records_, running, main_, backup, recordsChanged);
  if (recordsChanged) saveoldrecordstoinifile(records_, main_);
  savedRecordsVersion_ = records_.version();
}

// "House keeping"/"records month" holds the month (YYYY-MM) the month and
// year sets belong to.
void StationStatistics::checkRecordPeriods(const LocalTime& now) {
  const std::string month = fmt::format("{:04}-{:02}", now.year, now.month);
  const std::string stored = main_.ReadString("House keeping", "records month");
  if (stored == month) return;
  if (!stored.empty()) {
    if (stored.substr(0, 4) != month.substr(0, 4)) records_.resetYear(main_);
    records_.resetMonth(main_);
  }
  main_.WriteString("House keeping", "records month", month);
}

// The console's own daily high gust; it waits for the first reading, so that
// the other quantities compared alongside it are real.
void StationStatistics::raiseHighGust(double knots, const LocalTime& now) {
  if (!readingSeen_) return;
  LiveRecord withConsoleHigh = accepted_;
  withConsoleHigh.windgust = knots;
  extremes_.check_data(withConsoleHigh, now, usaTimes(), main_, averageForDailyMax());
}

}  // namespace nimbrel
