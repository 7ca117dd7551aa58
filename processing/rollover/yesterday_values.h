#pragma once
// What the daily reset keeps of the day that ends, before it starts the new
// one: each daily extreme's value ("number2") and time ("number2time") go to
// the section of the same name with " yest" appended, and the day's highest
// temperature also to "Daily high temperature yest" / "number2actual".
//
// The sections of grass temperature and the THSW index have no reading to
// follow yet; their stored values are kept as yesterday's too and start the
// new day at the sentinels, like the followed extremes.

#include "core/settings_store.h"
#include "processing/statistics/daily_extremes.h"

namespace nimbrel {

void keepExtremesAsYesterday(const DailyExtremes& extremes, SettingsStore& main);

// The daily sections that DailyExtremes does not follow, back to their
// starting sentinels with no time.
void resetUnfollowedExtremes(SettingsStore& main);

// The running sum and count of today's solar samples ("Daily solar",
// "Daily solar count") back to 0.
void resetDailySolarSums(SettingsStore& main);

}  // namespace nimbrel
