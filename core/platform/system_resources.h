#pragma once
// Figures of the computer and of this process that the service tags show:
// the memory this program holds, the memory free for new programs, the time
// since the computer started. Nothing when the system does not tell.

#include <optional>
#include <string_view>

namespace nimbrel::platform {

// Resident memory of this process, kB.
std::optional<long long> residentMemoryKb();
// Memory the computer has available for new programs, kB.
std::optional<long long> availableMemoryKb();
// Seconds since the computer started.
std::optional<double> uptimeSeconds();

// The number of a "Key:   1234 kB" line of the kernel's status texts
// (/proc/meminfo, /proc/self/status), in kB; empty when the key is absent or
// has no number. Public for its tests.
std::optional<long long> kilobytesOf(std::string_view procText, std::string_view key);

}  // namespace nimbrel::platform
