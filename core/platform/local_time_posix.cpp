#include "core/platform/local_time.h"

namespace nimbrel::platform {

LocalTime breakDownLocal(std::time_t t) {
  std::tm tm{};
  localtime_r(&t, &tm);
  LocalTime lt;
  lt.year = tm.tm_year + 1900;
  lt.month = tm.tm_mon + 1;
  lt.day = tm.tm_mday;
  lt.hour = tm.tm_hour;
  lt.minute = tm.tm_min;
  lt.second = tm.tm_sec;
  lt.weekday = tm.tm_wday;
  lt.yearday = tm.tm_yday;
  return lt;
}

std::time_t composeLocal(int year, int month, int day, int hour, int minute, int second) {
  std::tm tm{};
  tm.tm_year = year - 1900;
  tm.tm_mon = month - 1;
  tm.tm_mday = day;
  tm.tm_hour = hour;
  tm.tm_min = minute;
  tm.tm_sec = second;
  tm.tm_isdst = -1;  // let the zone rules decide
  return mktime(&tm);
}

}  // namespace nimbrel::platform

#include <cstdlib>
#include <ctime>

namespace nimbrel::platform {

void setProcessTimeZone(const char* zone) {
  if (zone && *zone)
    ::setenv("TZ", zone, 1);
  else
    ::unsetenv("TZ");
  ::tzset();
}

}  // namespace nimbrel::platform
