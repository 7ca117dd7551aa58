#pragma once
// One program per program folder and instance. While it runs, the program
// holds the lock on a file beside the instance's main settings, named after
// it: "NIMBREL.INI.lock", "NIMBREL2.INI.lock". Not on the settings file
// itself: every save replaces that file by a rename, and a lock on the
// replaced file would keep nobody out.

#include <filesystem>
#include <optional>
#include <string>

#include "core/platform/instance_lock.h"

namespace nimbrel {

// The lock file of instance `instanceNumber` (0, or 2 to 10).
std::string instanceLockFileName(int instanceNumber);

// The held lock, or the one sentence that tells the user why the folder
// cannot be used.
struct ProgramFolderLock {
  std::optional<platform::InstanceLock> lock;
  std::string problem;
};

// Makes `programFolder` when it is missing, selects its instance and locks it.
ProgramFolderLock lockProgramFolder(const std::filesystem::path& programFolder);

}  // namespace nimbrel
