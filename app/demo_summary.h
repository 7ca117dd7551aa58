#pragma once
// The list a demo ends with: every file in the program, logs and web folders,
// its size, its line count for text logs, and what it holds.

#include <filesystem>
#include <string>
#include <string_view>

#include "app/program_folders.h"
#include "core/clock.h"

namespace nimbrel {

// What a file of this name holds; empty for a name the program does not write.
std::string_view describeFileName(std::string_view name);

std::string describeWrittenFiles(const ProgramFolders& folders, SystemTime from, SystemTime to);

}  // namespace nimbrel
