#pragma once
// When rain last fell, read back from the monthly logs: the last minute
// whose line records rain in that minute. The logs are searched from the
// present month back, a year at most.

#include <filesystem>
#include <optional>

#include "core/clock.h"

namespace nimbrel {
struct TagContext;
}

namespace nimbrel::almanac {

struct RainMinute {
  int year = 0;
  int month = 0;
  int day = 0;
  int hour = 0;
  int minute = 0;
  friend auto operator<=>(const RainMinute&, const RainMinute&) = default;
};

struct LastRain {
  std::optional<RainMinute> latest;       // today included
  std::optional<RainMinute> beforeToday;  // the last rain on an earlier day
};

inline constexpr int kRainMonthsSearched = 13;  // this month and the twelve before

LastRain findLastRain(const std::filesystem::path& logFolder, const LocalTime& now);

// The fill's answer, from its cache.
const LastRain& lastRain(const TagContext& context);

}  // namespace nimbrel::almanac
