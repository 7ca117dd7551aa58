#pragma once
// When rain last fell, read back from the monthly logs: the last minute
// whose line records rain in that minute. The logs are searched from the
// present month back, a year at most.

#include <optional>

#include "core/clock.h"

namespace nimbrel {
struct TagContext;
class LogMinutes;
}

namespace nimbrel::almanac {

struct LastRain {
  std::optional<LocalTime> latest;       // today included
  std::optional<LocalTime> beforeToday;  // the last rain on an earlier day
};

inline constexpr int kRainMonthsSearched = 13;  // this month and the twelve before

LastRain findLastRain(LogMinutes& logs, const LocalTime& now);

// The fill's answer, from its cache.
const LastRain& lastRain(const TagContext& context);

}  // namespace nimbrel::almanac
