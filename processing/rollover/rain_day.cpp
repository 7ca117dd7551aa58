#include "processing/rollover/rain_day.h"

#include <array>

#include "core/number_format.h"
#include "processing/rollover/reset_calendar.h"
#include "processing/statistics/time_text.h"

namespace nimbrel {
namespace {

constexpr int kDaysPerWeek = 7;

struct WeekdayKeys {
  std::string_view rain;
  std::string_view date;
};

// Indexed by weekday, 0 = Sunday.
constexpr std::array<WeekdayKeys, kDaysPerWeek> kWeekdayKeys{{
    {"sunday", "sunday date"},
    {"monday", "monday date"},
    {"tuesday", "tuesday date"},
    {"wedensday", "wednesday date"},
    {"thursday", "thursday date"},
    {"friday", "friday date"},
    {"saturday", "saturday date"},
}};

const WeekdayKeys& keysOf(int weekday) {
  return kWeekdayKeys[static_cast<std::size_t>(((weekday % kDaysPerWeek) + kDaysPerWeek) % kDaysPerWeek)];
}

}  // namespace

std::string_view weekdayRainKey(int weekday) { return keysOf(weekday).rain; }
std::string_view weekdayRainDateKey(int weekday) { return keysOf(weekday).date; }

void fileRainOfEndedDay(const RainDayFiling& filing, const LocalTime& resetAt, SettingsStore& main) {
  const std::string amount = floatText(filing.rainMm);
  main.WriteString("Daily high average yest", "prevdayrain", amount);
  main.WriteString("Daily high average yest", "prevdayraintime", timeconvert(resetAt, filing.usaTimes));

  const CalendarDate today = dateOf(resetAt);
  const int endedWeekday = resetAt.hour == 0 ? weekdayOf(previousDay(today)) : weekdayOf(today);
  constexpr std::string_view kWeekdaySection = "Daily rain for each week day";
  main.WriteString(kWeekdaySection, weekdayRainKey(endedWeekday), amount);
  main.WriteString(kWeekdaySection, weekdayRainDateKey(endedWeekday),
                   shortDateText(rainDayEndingAt(resetAt), filing.dateOrder));
}

std::string_view maxRainRateResetText(RainUnit unit) {
  return unit == RainUnit::inches ? "0.000 in./min (0.000 in./hr)" : "0.0 mm/min (0.0 mm/hr)";
}

}  // namespace nimbrel
