#include "publish/tags/almanac/last_rain.h"

#include <algorithm>

#include "publish/tags/log_minutes.h"
#include "publish/tags/tag_context.h"

namespace nimbrel::almanac {

namespace {

long long dayOf(long long minute) {
  return minute >= 0 ? minute / kMinutesPerDay : -((-minute + kMinutesPerDay - 1) / kMinutesPerDay);
}

const RainDays& rainDays(LogMinutes& logs, std::map<int, RainDays>& months, const LogMonth& month) {
  const auto version = logs.version(month).version;
  RainDays& days = months[month.year * 12 + month.month - 1];
  if (days.version == version) return days;
  days = RainDays{version, {}};
  for (const LoggedMinute& m : logs.month(month)) {
    if (!(m.rain() > 0)) continue;
    const long long day = dayOf(m.minute);
    auto it = std::find_if(days.lastByDay.begin(), days.lastByDay.end(), [day](const auto& d) { return d.first == day; });
    if (it == days.lastByDay.end())
      days.lastByDay.emplace_back(day, m.minute);
    else
      it->second = std::max<long long>(it->second, m.minute);
  }
  return days;
}

}  // namespace

LastRain findLastRain(LogMinutes& logs, std::map<int, RainDays>& months, const LocalTime& now) {
  const long long today = civilMinute(now.year, now.month, now.day, 0, 0);
  std::optional<long long> latest;
  std::optional<long long> beforeToday;
  LogMonth month{now.month, now.year};
  for (int i = 0; i < kRainMonthsSearched && !beforeToday; ++i) {
    // A day before today holds only minutes before today; the last of each
    // day is all the search needs.
    for (const auto& [day, minute] : rainDays(logs, months, month).lastByDay) {
      if (!latest || minute > *latest) latest = minute;
      if (minute < today && (!beforeToday || minute > *beforeToday)) beforeToday = minute;
    }
    month = month.month == 1 ? LogMonth{12, month.year - 1} : LogMonth{month.month - 1, month.year};
  }
  while (months.size() > 2 * kRainMonthsSearched) months.erase(months.begin());
  LastRain found;
  if (latest) found.latest = civilTime(*latest);
  if (beforeToday) found.beforeToday = civilTime(*beforeToday);
  return found;
}

const LastRain& lastRain(const TagContext& context) {
  auto& cached = context.caches.lastRain;
  if (!cached) cached = findLastRain(logMinutes(context), context.memory.rainMonths, context.now);
  return *cached;
}

}  // namespace nimbrel::almanac
