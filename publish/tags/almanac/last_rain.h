#pragma once
// When rain last fell, read back from the monthly logs: the last minute
// whose line records rain in that minute. The logs are searched from the
// present month back, a year at most.

#include <cstdint>
#include <map>
#include <optional>
#include <utility>
#include <vector>

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

// The days of one month's log with rain, each with its last minute of rain
// (civil minutes, in the order of the file), kept across fills while the
// log does not change.
struct RainDays {
  std::uint64_t version = 0;
  std::vector<std::pair<long long, long long>> lastByDay;  // day number, minute
};

LastRain findLastRain(LogMinutes& logs, std::map<int, RainDays>& months, const LocalTime& now);

// The fill's answer, from its cache.
const LastRain& lastRain(const TagContext& context);

}  // namespace nimbrel::almanac
