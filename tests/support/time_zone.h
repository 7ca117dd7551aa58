#pragma once
// Pins the process's time zone for one test: the tests run in a zone with
// daylight-saving changes, so that a day of 23 or 25 hours is exercised.

#include <cstdlib>
#include <string>

#include "core/platform/local_time.h"

namespace nimbrel::testsupport {

// United Kingdom rules: clocks go forward at 01:00 on the last Sunday of
// March and back at 02:00 on the last Sunday of October.
inline constexpr const char* kUkZone = "GMT0BST,M3.5.0/1,M10.5.0";

class ScopedTimeZone {
 public:
  explicit ScopedTimeZone(const char* zone = kUkZone) {
    if (const char* old = std::getenv("TZ")) saved_ = old, hadZone_ = true;
    platform::setProcessTimeZone(zone);
  }
  ~ScopedTimeZone() { platform::setProcessTimeZone(hadZone_ ? saved_.c_str() : nullptr); }
  ScopedTimeZone(const ScopedTimeZone&) = delete;
  ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;

 private:
  std::string saved_;
  bool hadZone_ = false;
};

}  // namespace nimbrel::testsupport
