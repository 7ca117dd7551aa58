#include "processing/statistics/rain_totals.h"

#include <cmath>

#include "core/number_format.h"
#include "core/settings_fields.h"
#include "processing/statistics/daily_extremes_table.h"
#include "processing/statistics/time_text.h"

namespace nimbrel {
namespace {

constexpr std::string_view kRainStorage = "new rain storage";
constexpr std::string_view kBaselineKey = "rain counter baseline";
constexpr std::string_view kMaxRateSection = "Last max rain rate";
constexpr std::string_view kMaxRateTimeKey = "Max rainrate";

std::optional<double> storedBaseline(const SettingsStore& main) {
  double value = 0;
  if (!parseDouble(main.ReadString(kRainStorage, kBaselineKey), value)) return std::nullopt;
  return value;
}

}  // namespace

void RainTotals::addIncrement(double mm, LiveRecord& record) {
  if (!(mm > 0)) return;
  record.dailyrain += mm;
  record.monthlyrain += mm;
  record.yearlyrain += mm;
}

double RainTotals::addCounterReading(double counterMm, LiveRecord& record, double maxRainSpikeMm) {
  if (!std::isfinite(counterMm)) return 0;
  const std::optional<double> previous = baseline_;
  baseline_ = counterMm;
  if (!previous || counterMm <= *previous) return 0;
  const double rise = counterMm - *previous;
  if (rise >= maxRainSpikeMm) {
    stationLog_->write("rain counter jump refused: " + fixed(rise, 1, 1) + " mm (limit " + fixed(maxRainSpikeMm, 1, 1) +
                       " mm)");
    return 0;
  }
  addIncrement(rise, record);
  return rise;
}

void RainTotals::updateRainRate(const LiveRecord& record, const LocalTime& now, bool usaTimes, SettingsStore& main) {
  if (!(record.rainrate > maxRainRate_)) return;
  maxRainRate_ = record.rainrate;
  maxRainRateTime_ = timeconvert(now, usaTimes);
  main.WriteString(kExtremeTimesSection, kMaxRateTimeKey, maxRainRateTime_);
}

void RainTotals::load(const SettingsStore& main, LiveRecord& record) {
  FieldLoader fields(main);
  fields.decimal(kRainStorage, "dailyrain new", record.dailyrain, kNotNegativeAmount);
  fields.decimal(kRainStorage, "monthlyrain new", record.monthlyrain, kNotNegativeAmount);
  fields.decimal(kRainStorage, "yearlyrain new", record.yearlyrain, kNotNegativeAmount);
  fields.decimal(kMaxRateSection, "value", maxRainRate_, kNotNegativeAmount);
  maxRainRateTime_ = main.ReadString(kExtremeTimesSection, kMaxRateTimeKey);
  baseline_ = storedBaseline(main);
}

void RainTotals::save(const LiveRecord& record, SettingsStore& main) const {
  FieldSaver fields(main);
  fields.decimal(kRainStorage, "dailyrain new", record.dailyrain);
  fields.decimal(kRainStorage, "monthlyrain new", record.monthlyrain);
  fields.decimal(kRainStorage, "yearlyrain new", record.yearlyrain);
  fields.decimal(kMaxRateSection, "value", maxRainRate_);
  if (baseline_)
    fields.decimal(kRainStorage, kBaselineKey, *baseline_);
  else
    main.DeleteKey(kRainStorage, kBaselineKey);
}

void RainTotals::resetDay(LiveRecord& record, SettingsStore& main) {
  record.dailyrain = 0;
  maxRainRate_ = 0;
  maxRainRateTime_.clear();
  main.WriteString(kExtremeTimesSection, kMaxRateTimeKey, maxRainRateTime_);
  save(record, main);
}

void RainTotals::resetMonth(LiveRecord& record, SettingsStore& main) {
  record.monthlyrain = 0;
  save(record, main);
}

void RainTotals::resetYear(LiveRecord& record, SettingsStore& main) {
  record.yearlyrain = 0;
  save(record, main);
}

}  // namespace nimbrel
