#pragma once
// The monthly totals that the month end files away:
// - "Rain chart": the month's rain (mm) under the month's key ("Jan ",
//   "Feb ", ... "Dec ", each with a trailing blank, as the chart reads them);
// - "Sunshine hours" and "Energy wind": each "month" total is kept under its
//   "month12" key and starts again at 0 ("month" -> "month12"; "0 month" to
//   "25 month" -> "0 month12" to "25 month12"). A missing total is kept as 0.

#include <string_view>

#include "core/settings_store.h"

namespace nimbrel {

// `month` 1-12.
std::string_view rainChartKey(int month);
void enterMonthInRainChart(int month, double rainMm, SettingsStore& main);

void keepMonthTotals(SettingsStore& main);

}  // namespace nimbrel
