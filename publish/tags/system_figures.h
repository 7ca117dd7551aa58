#pragma once
// Figures of the computer and of this program for the service tags: memory
// in use, memory free, time since the computer started. Read from the
// kernel's /proc files at each fill; a file that cannot be read gives no
// value.

#include <optional>
#include <string>
#include <string_view>

namespace nimbrel::systemfigures {

// The number of a "Key:   1234 kB" line of /proc/meminfo or
// /proc/self/status, in kB; empty when the key is absent or has no number.
std::optional<long long> kilobytesOf(std::string_view procText, std::string_view key);

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
