#pragma once
// Summaries that several tags share and that cost more than a glance at the
// live record (a month of the log read back, the sun's times for today):
// worked out when a tag of the fill first asks, kept for the rest of that
// fill only. Each family of tags keeps its own member here.

#include <optional>

#include "publish/tags/almanac/almanac_day.h"
#include "publish/tags/almanac/last_rain.h"
#include "publish/tags/climate_logs.h"
#include "publish/tags/current_values.h"
#include "publish/tags/log_minutes.h"

namespace nimbrel {

struct TagCaches {
  // Whether the logs of the memory (TagMemory::logs) were told of this fill:
  // each month's file is looked at once per fill, when a tag first asks.
  bool logsChecked = false;

  // Current readings: the logged minutes from yesterday's midnight to now,
  // for the last hour's rain and the hour's and three hours' changes.
  std::optional<current::RecentLog> currentLog;

  // Today's family (tags_today.cpp): the recent minutes reach from the day
  // a month ago to now (yesterday, the last seven days, the last hours); the
  // year-ago minutes hold the day a year ago.
  std::optional<MinuteHistory> recentLogs;
  std::optional<MinuteHistory> yearAgoLogs;

  // Climate tags (tags_climate.cpp): the figures of each day of the months
  // the fill's tags ask for, and the minutes of the last eight days.
  std::optional<ClimateLogs> climate;

  // Almanac: the day's sun and moon at the station and the moon's phases
  // around the fill (publish/tags/almanac/almanac_day.h).
  std::optional<almanac::SunDay> sunDay;
  std::optional<almanac::MoonDay> moonDay;
  std::optional<almanac::MoonMonth> moonMonth;
  // When rain last fell, from the monthly logs (publish/tags/almanac/last_rain.h).
  std::optional<almanac::LastRain> lastRain;
};

}  // namespace nimbrel
