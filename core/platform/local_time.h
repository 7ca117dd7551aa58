#pragma once
// Conversions between instants and local civil time, in the process's time zone.

#include <ctime>

#include "core/clock.h"

namespace nimbrel::platform {

LocalTime breakDownLocal(std::time_t t);
std::time_t composeLocal(int year, int month, int day, int hour, int minute, int second);

}  // namespace nimbrel::platform

namespace nimbrel::platform {

// Switches the process's time zone (a zone name or a POSIX TZ rule such as
// "GMT0BST,M3.5.0/1,M10.5.0"); an empty text restores the previous zone.
// Used by tests and tools that must run in a known zone.
void setProcessTimeZone(const char* zone);

}  // namespace nimbrel::platform
