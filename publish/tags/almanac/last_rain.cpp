#include "publish/tags/almanac/last_rain.h"

#include "datafiles/log_files.h"
#include "datafiles/monthly_log_reader.h"
#include "publish/tags/tag_context.h"

namespace nimbrel::almanac {

LastRain findLastRain(const std::filesystem::path& logFolder, const LocalTime& now) {
  const RainMinute today{now.year, now.month, now.day, 0, 0};
  LastRain found;
  LogMonth month{now.month, now.year};
  for (int i = 0; i < kRainMonthsSearched && !found.beforeToday; ++i) {
    // A month's lines come in time order, and every line of a month's log
    // is later than those of the logs before it.
    if (const auto log = readMonthlyLog(logFolder / (monthStem(month) + "lg.txt"))) {
      for (const MonthlyLogLine& line : log->lines()) {
        if (!(line.number(LogColumn::rainlastmin) > 0)) continue;
        const RainMinute at{static_cast<int>(line.number(LogColumn::year)),
                            static_cast<int>(line.number(LogColumn::month)),
                            static_cast<int>(line.number(LogColumn::day)),
                            static_cast<int>(line.number(LogColumn::hour)),
                            static_cast<int>(line.number(LogColumn::minute))};
        if (!found.latest || at > *found.latest) found.latest = at;
        if (at < today && (!found.beforeToday || at > *found.beforeToday)) found.beforeToday = at;
      }
    }
    month = month.month == 1 ? LogMonth{12, month.year - 1} : LogMonth{month.month - 1, month.year};
  }
  return found;
}

const LastRain& lastRain(const TagContext& context) {
  auto& cached = context.caches.lastRain;
  if (!cached) cached = findLastRain(context.logFolder, context.now);
  return *cached;
}

}  // namespace nimbrel::almanac
