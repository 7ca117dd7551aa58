#pragma once
// Forcing written data out of the operating system's cache.

#include <cstdio>

namespace nimbrel::platform {

// Flushes the stream and asks the system to put its data on the disk.
bool syncToDisk(std::FILE* file);

}  // namespace nimbrel::platform
