#pragma once
// Today's, this month's and this year's rain, and today's highest rain rate.
//
// The totals live in the live record (`dailyrain`, `monthlyrain`,
// `yearlyrain`); this class adds the increments to them, keeps them across
// restarts in section "new rain storage" ("dailyrain new", "monthlyrain new",
// "yearlyrain new") and resets them at the rollovers.
//
// Stations that report a running rain counter instead of increments go
// through addCounterReading, which turns the counter into increments against
// a baseline:
// - with no baseline yet, a reading only sets it;
// - a counter below the baseline means the station's counter was reset: the
//   new value becomes the baseline and nothing is added;
// - a rise of the "max rain spike" limit or more is not believed: it is
//   logged, the new value becomes the baseline and nothing is added;
// - any other rise is rain.
// The baseline is stored beside the totals ("new rain storage" / "rain
// counter baseline") and always in the same save, so that after a restart
// the counter continues from the point at which the totals were saved: rain
// that fell while the program was not running is counted once, never twice.
//
// The day's highest rain rate (in the unit of `rainrate`) is kept with its
// time ("Extreme conditions times" / "Max rainrate") and stored in "Last max
// rain rate" / "value".

#include <optional>
#include <string>

#include "core/clock.h"
#include "core/live_record.h"
#include "core/settings_store.h"
#include "core/text_log.h"

namespace nimbrel {

inline constexpr double kDefaultMaxRainSpikeMm = 50.0;

class RainTotals {
 public:
  // Refused counter jumps are written to `stationLog`.
  explicit RainTotals(TextLog& stationLog) : stationLog_(&stationLog) {}

  // Adds rain (mm) to the day, month and year; nothing for 0 or less.
  static void addIncrement(double mm, LiveRecord& record);
  // Returns the rain added.
  double addCounterReading(double counterMm, LiveRecord& record, double maxRainSpikeMm = kDefaultMaxRainSpikeMm);

  // Every tick: a rate strictly above today's highest becomes it, with the
  // present time, written to "Extreme conditions times" at once.
  void updateRainRate(const LiveRecord& record, const LocalTime& now, bool usaTimes, SettingsStore& main);

  // Start: the totals into the record, the baseline and today's highest
  // rate. Missing or unreadable values leave the record's totals as they are.
  void load(const SettingsStore& main, LiveRecord& record);
  // The totals, the baseline and today's highest rate.
  void save(const LiveRecord& record, SettingsStore& main) const;

  // Rollovers: each zeroes its total (the day also its highest rain rate)
  // and saves at once, so that a restart does not bring the old total back.
  void resetDay(LiveRecord& record, SettingsStore& main);
  void resetMonth(LiveRecord& record, SettingsStore& main);
  void resetYear(LiveRecord& record, SettingsStore& main);

  double maxRainRate() const { return maxRainRate_; }
  const std::string& maxRainRateTime() const { return maxRainRateTime_; }
  std::optional<double> counterBaseline() const { return baseline_; }

 private:
  TextLog* stationLog_;
  std::optional<double> baseline_;
  double maxRainRate_ = 0;
  std::string maxRainRateTime_;
};

}  // namespace nimbrel
