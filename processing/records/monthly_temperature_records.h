#pragma once
// The highest and lowest outdoor temperature ever seen in each calendar
// month, kept in the main settings: section "Record monthly high temp" (or
// "Record monthly low temp"), key "jan" ... "dec" for the value in °C, and
// "jan year", "jan day" ... for the year and day on which it was set.
//
// A missing or unreadable value means no record yet, so the first
// temperature of that month sets it.

#include "core/clock.h"
#include "core/settings_store.h"
#include "processing/statistics/daily_extremes_table.h"

namespace nimbrel {

// Writes `celsius` as the record of the month of `now` when it lies strictly
// beyond the stored one (above for Side::High, below for Side::Low); true
// when it did.
bool updateMonthlyTemperatureRecord(SettingsStore& main, Side side, double celsius, const LocalTime& now);

}  // namespace nimbrel
