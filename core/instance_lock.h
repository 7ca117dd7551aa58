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

// What a program folder must hold before it is locked.
enum class FolderStart {
  // The demo: a missing folder is made, and the demo writes its own settings.
  makeIfMissing,
  // A station's run: the folder and the instance's main settings must be
  // there already. Starting an empty station instead would read nothing and
  // tell nobody why.
  existingStation,
};

// Checks (or makes) `programFolder` as `start` says, selects its instance
// and locks it.
ProgramFolderLock lockProgramFolder(const std::filesystem::path& programFolder,
                                    FolderStart start = FolderStart::makeIfMissing);

}  // namespace nimbrel
