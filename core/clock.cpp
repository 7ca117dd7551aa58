#include "core/clock.h"

#include <fmt/format.h>

#include <cstdio>

#include "core/platform/local_time.h"

namespace nimbrel {

LocalTime toLocalTime(SystemTime t) {
  using namespace std::chrono;
  const auto secs = floor<seconds>(t);
  LocalTime lt = platform::breakDownLocal(system_clock::to_time_t(secs));
  lt.millisecond = static_cast<int>(duration_cast<milliseconds>(t - secs).count());
  return lt;
}

SystemTime fromLocalTime(int year, int month, int day, int hour, int minute, int second) {
  return std::chrono::system_clock::from_time_t(
      platform::composeLocal(year, month, day, hour, minute, second));
}

std::optional<SystemTime> parseLocalTime(std::string_view text) {
  int y = 0, mo = 0, d = 0, h = 0, mi = 0, s = 0;
  const std::string copy(text);
  char tail = 0;
  const int n = std::sscanf(copy.c_str(), "%4d-%2d-%2d %2d:%2d:%2d%c", &y, &mo, &d, &h, &mi, &s, &tail);
  if (n != 6 && n != 5) return std::nullopt;
  if (mo < 1 || mo > 12 || d < 1 || d > 31 || h < 0 || h > 23 || mi < 0 || mi > 59 || s < 0 || s > 59)
    return std::nullopt;
  const SystemTime t = fromLocalTime(y, mo, d, h, mi, s);
  // A day the month does not have (30 February) would carry into the next month.
  const LocalTime check = toLocalTime(t);
  if (check.year != y || check.month != mo || check.day != d) return std::nullopt;
  return t;
}

std::string formatLocalTime(const LocalTime& t) {
  return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", t.year, t.month, t.day, t.hour, t.minute,
                     t.second);
}

ScaledClock::ScaledClock(SystemTime start, double speed)
    : start_(start), realStart_(std::chrono::steady_clock::now()), speed_(speed > 0 ? speed : 1.0) {}

SystemTime ScaledClock::now() const {
  const auto real = std::chrono::steady_clock::now() - realStart_;
  const auto scaled = std::chrono::duration<double, std::nano>(real) * speed_;
  return start_ + std::chrono::duration_cast<SystemTime::duration>(scaled);
}

std::chrono::nanoseconds ScaledClock::realDuration(std::chrono::nanoseconds programTime) const {
  return std::chrono::duration_cast<std::chrono::nanoseconds>(
      std::chrono::duration<double, std::nano>(programTime) / speed_);
}

}  // namespace nimbrel
