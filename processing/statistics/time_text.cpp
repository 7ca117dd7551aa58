#include "processing/statistics/time_text.h"

#include <fmt/format.h>

namespace nimbrel {

std::string timeconvert(const LocalTime& time, bool usaTimes) {
  if (!usaTimes) return fmt::format("{:02}:{:02}", time.hour, time.minute);
  const int twelveHour = time.hour % 12 == 0 ? 12 : time.hour % 12;
  return fmt::format("{}:{:02} {}", twelveHour, time.minute, time.hour < 12 ? "am" : "pm");
}

}  // namespace nimbrel
