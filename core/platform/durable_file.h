#pragma once
// Forcing written data out of the operating system's cache.

#include <cstdio>

namespace nimbrel::platform {

// Flushes the stream and asks the system to put its data on the disk.
bool syncToDisk(std::FILE* file);

}  // namespace nimbrel::platform

#include <filesystem>

namespace nimbrel::platform {

// Swaps two files' names in one step, so that a reader opening either name
// always finds a whole file. False when the system or the file system cannot
// (the caller then renames instead).
bool exchangeFiles(const std::filesystem::path& first, const std::filesystem::path& second);

}  // namespace nimbrel::platform
