#pragma once
// Conversions between instants and local civil time, in the process's time zone.

#include <ctime>

#include "core/clock.h"

namespace nimbrel::platform {

LocalTime breakDownLocal(std::time_t t);
std::time_t composeLocal(int year, int month, int day, int hour, int minute, int second);

}  // namespace nimbrel::platform
