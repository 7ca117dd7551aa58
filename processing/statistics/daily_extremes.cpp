#include "processing/statistics/daily_extremes.h"

#include <cmath>
#include <stdexcept>

#include "core/number_format.h"
#include "processing/records/monthly_temperature_records.h"
#include "processing/statistics/time_text.h"

namespace nimbrel {
namespace {

Extreme startOfDay(const ExtremeRow& row) { return Extreme{sentinelOf(row), "", false}; }

// An extreme still at its sentinel takes any reading: the sentinels are
// outside every reading's range except the barometer's, which never comes
// below the low sentinel of 100 and would otherwise never set a low.
bool beats(const ExtremeRow& row, const Extreme& current, double value) {
  if (!std::isfinite(value)) return false;
  if (!current.seen) return true;
  return row.side == Side::High ? value > current.value : value < current.value;
}

Extreme loaded(const ExtremeRow& row, const SettingsStore& main) {
  Extreme extreme = startOfDay(row);
  if (row.valueKey.empty()) {  // only the time is kept
    extreme.time = main.ReadString(row.section, row.timeKey);
    return extreme;
  }
  double value = 0;
  if (!parseDouble(main.ReadString(row.section, row.valueKey), value) || value == sentinelOf(row)) return extreme;
  extreme.value = value;
  extreme.time = main.ReadString(row.section, row.timeKey);
  extreme.seen = true;
  return extreme;
}

}  // namespace

DailyExtremes::DailyExtremes() {
  for (const ExtremeRow& row : extremeRows()) extremes_.push_back(startOfDay(row));
}

void DailyExtremes::check_data(const LiveRecord& record, const LocalTime& now, bool usaTimes, SettingsStore& main,
                               std::optional<double> tenMinuteAverage) {
  const auto rows = extremeRows();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const ExtremeRow& row = rows[i];
    const double value =
        row.quantity == Quantity::Average && tenMinuteAverage ? *tenMinuteAverage : row.reading(record);
    if (beats(row, extremes_[i], value)) replace(row, extremes_[i], value, now, usaTimes, main);
  }
}

void DailyExtremes::replace(const ExtremeRow& row, Extreme& extreme, double value, const LocalTime& now, bool usaTimes,
                            SettingsStore& main) {
  extreme = Extreme{value, timeconvert(now, usaTimes), true};
  store(row, extreme, main);
  if (row.quantity == Quantity::Temperature) updateMonthlyTemperatureRecord(main, row.side, value, now);
  if (allTimeRecordsHook_) allTimeRecordsHook_(NewExtreme{row.quantity, row.side, value, extreme.time, now});
}

void DailyExtremes::store(const ExtremeRow& row, const Extreme& extreme, SettingsStore& main) {
  if (!row.valueKey.empty()) main.WriteString(row.section, row.valueKey, floatText(extreme.value));
  main.WriteString(row.section, row.timeKey, extreme.time);
  if (!row.conditionsKey.empty()) main.WriteString(kExtremeTimesSection, row.conditionsKey, extreme.time);
}

void DailyExtremes::load(const SettingsStore& main) {
  const auto rows = extremeRows();
  for (std::size_t i = 0; i < rows.size(); ++i) extremes_[i] = loaded(rows[i], main);
}

void DailyExtremes::resetDay(SettingsStore& main) {
  const auto rows = extremeRows();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    extremes_[i] = startOfDay(rows[i]);
    store(rows[i], extremes_[i], main);
  }
}

std::size_t DailyExtremes::slotOf(Quantity quantity, Side side) const {
  const auto rows = extremeRows();
  for (std::size_t i = 0; i < rows.size(); ++i)
    if (rows[i].quantity == quantity && rows[i].side == side) return i;
  throw std::invalid_argument("this daily extreme is not followed");
}

const Extreme& DailyExtremes::extreme(Quantity quantity, Side side) const { return extremes_[slotOf(quantity, side)]; }

std::optional<double> DailyExtremes::todaysHighGust() const {
  const Extreme& gust = extreme(Quantity::Gust, Side::High);
  if (!gust.seen) return std::nullopt;
  return gust.value;
}

}  // namespace nimbrel
