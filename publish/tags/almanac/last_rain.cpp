#include "publish/tags/almanac/last_rain.h"

#include "publish/tags/log_minutes.h"
#include "publish/tags/tag_context.h"

namespace nimbrel::almanac {

LastRain findLastRain(LogMinutes& logs, const LocalTime& now) {
  const long long today = civilMinute(now.year, now.month, now.day, 0, 0);
  std::optional<long long> latest;
  std::optional<long long> beforeToday;
  LogMonth month{now.month, now.year};
  for (int i = 0; i < kRainMonthsSearched && !beforeToday; ++i) {
    // Every line of a month's log is later than those of the logs before it.
    for (const LoggedMinute& m : logs.month(month)) {
      if (!(m.rain > 0)) continue;
      if (!latest || m.minute > *latest) latest = m.minute;
      if (m.minute < today && (!beforeToday || m.minute > *beforeToday)) beforeToday = m.minute;
    }
    month = month.month == 1 ? LogMonth{12, month.year - 1} : LogMonth{month.month - 1, month.year};
  }
  LastRain found;
  if (latest) found.latest = civilTime(*latest);
  if (beforeToday) found.beforeToday = civilTime(*beforeToday);
  return found;
}

const LastRain& lastRain(const TagContext& context) {
  auto& cached = context.caches.lastRain;
  if (!cached) cached = findLastRain(logMinutes(context), context.now);
  return *cached;
}

}  // namespace nimbrel::almanac
