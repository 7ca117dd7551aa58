#pragma once
// Where the daily rain reset files the rain of the day that ends:
// - "Daily high average yest": "prevdayrain" (mm) and "prevdayraintime"
//   (the time of the reset);
// - "Daily rain for each week day": the weekday key of that day ("monday",
//   "tuesday", "wedensday" - the stored key has always been spelt so -
//   "thursday", ...) with the amount, and its companion " date" key
//   ("wednesday date" spelt right) with the day's date (see rainDayEndingAt).
//
// A reset at midnight files the rain under the day before: its weekday is
// the real previous weekday, its date the fixed-table one, so that on
// 1 March of a leap year the Thursday key gets the date 28/2.

#include <string_view>

#include "core/clock.h"
#include "core/settings_store.h"
#include "core/unit_choices.h"

namespace nimbrel {

struct RainDayFiling {
  double rainMm = 0;
  UnitSystem dateOrder = UnitSystem::metric;  // the date setting: day/month or month/day
  bool usaTimes = false;
};

void fileRainOfEndedDay(const RainDayFiling& filing, const LocalTime& resetAt, SettingsStore& main);

// The weekday key (0 = Sunday) and its date key.
std::string_view weekdayRainKey(int weekday);
std::string_view weekdayRainDateKey(int weekday);

// What the maximum rain rate shows once it has been reset.
std::string_view maxRainRateResetText(RainUnit unit);

}  // namespace nimbrel
