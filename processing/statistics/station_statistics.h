#pragma once
// Everything the cycle keeps from the readings: the absolute limits applied
// to each new reading, the derived quantities, the one-second sample rings,
// today's extremes, the last-hour and 10-minute wind, the rain totals and the
// short-term series of the spike filter. The main cycle calls it; the
// settings it persists to are the main settings.

#include <optional>
#include <string>
#include <vector>

#include "core/clock.h"
#include "core/live_record.h"
#include "core/unit_settings.h"
#include "processing/validation/absolute_limits.h"
#include "processing/statistics/daily_extremes.h"
#include "processing/statistics/rain_totals.h"
#include "processing/records/record_book.h"
#include "processing/records/records_save.h"
#include "processing/validation/spike_filter.h"
#include "processing/statistics/wind_average.h"
#include "processing/statistics/wind_history.h"

namespace nimbrel {

class SettingsStore;
class TextLog;

class StationStatistics {
 public:
  StationStatistics(LiveRecord& record, SettingsStore& mainSettings, const UnitSettings& units,
                    TextLog& stationLog);

  // Start: today's extremes, the rain storage and the records. Returns one
  // message for each stored record that lies outside the absolute limits:
  // such a record is not kept as the one to beat.
  std::vector<std::string> load(const LocalTime& now);
  // A decoded reading: limits, rain counter, derived quantities. The first
  // reading after the start, and one with `afterSilence` (the first since
  // the data watchdog found the station silent), only set where the
  // minute's rain is counted from.
  void onReading(bool afterSilence = false);
  // Every tick once readings flow (`Tmainform.onesecondTimer`): the minute's
  // wind accumulators and today's extremes.
  void onesecondTimer(const LocalTime& now);
  void updateRainRate(const LocalTime& now);
  // The spike filter, and the one-second samples of the minute log's wind
  // and gust taken from what it accepted.
  void rollthedata();
  LastHourMaximum updatemaxgustreadings(const LocalTime& now);
  void minuteWind();
  void saveRainStorage();
  // The records: written once a minute and at stop; their month and year
  // sets end with the calendar month and year (also one that ended while the
  // program was off).
  void saveRecords(const RecordsBackup& backup);
  void checkRecordPeriods(const LocalTime& now);

  double todaysHighGust() const { return extremes_.todaysHighGust().value_or(0.0); }
  void raiseHighGust(double knots, const LocalTime& now);
  double tenMinuteAverage() const { return mainform::avgwind10min(tenMinute_); }

  const DailyExtremes& extremes() const { return extremes_; }
  DailyExtremes& extremes() { return extremes_; }  // for the day's rollover
  const ShortTermSeries& series() const { return series_; }
  const RainTotals& rain() const { return rain_; }
  RainTotals& rain() { return rain_; }  // for the day's rollover
  const LastHourMaximum& lastHour() const { return lastHourMaximum_; }
  const RecordBook& records() const { return records_; }

 private:
  void derive();
  bool usaTimes() const;
  std::optional<double> averageForDailyMax() const;

  LiveRecord& record_;
  SettingsStore& main_;
  const UnitSettings& units_;
  TextLog& stationLog_;
  AbsoluteLimits limits_;
  ShortTermSeries series_;
  DailyExtremes extremes_;
  LastHourWind lastHourWind_;
  LastHourMaximum lastHourMaximum_;
  MinuteWindSeries tenMinute_;
  RainTotals rain_;
  RecordBook records_;
  std::optional<std::uint64_t> savedRecordsVersion_;  // the records' version last written
  LiveRecord accepted_;  // the last reading that passed the limits; before it, the starting values
  bool readingSeen_ = false;
};

}  // namespace nimbrel
