#pragma once
// Figures of the computer and of this program for the service tags: memory
// in use, memory free, time since the computer started, asked of the system
// (core/platform/system_resources.h) at each fill; what the system does not
// tell gives no value.

#include <optional>
#include <string>

namespace nimbrel::systemfigures {

// "3 days 4 hours 12 minutes" for a time in seconds ("1 day", "1 hour",
// "1 minute" in the singular).
std::string durationText(double seconds);

// Resident memory of this program, MB.
std::optional<double> memoryUsedMb();
// Memory the computer has available for new programs, MB.
std::optional<double> freeMemoryMb();
// Seconds since the computer started.
std::optional<double> uptimeSeconds();

}  // namespace nimbrel::systemfigures
