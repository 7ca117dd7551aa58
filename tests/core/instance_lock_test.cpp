#include "core/instance_lock.h"

#include <unistd.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "support/temp_folder.h"

namespace nimbrel {
namespace {

using testsupport::TempFolder;

std::vector<std::string> namesIn(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) names.push_back(entry.path().filename());
  std::sort(names.begin(), names.end());
  return names;
}

// Each instance of a folder has its own lock, named after its main settings,
// and a refused start says in one sentence which folder and instance is in
// use and by whom.
TEST(ProgramFolderLock, EachInstanceHasItsOwnLockAndARefusalIsOneSentence) {
  EXPECT_EQ(instanceLockFileName(0), "NIMBREL.INI.lock");
  EXPECT_EQ(instanceLockFileName(10), "NIMBREL10.INI.lock");
  TempFolder dir;
  const ProgramFolderLock first = lockProgramFolder(dir.path());
  ASSERT_TRUE(first.lock) << first.problem;
  EXPECT_EQ(first.problem, "");

  const ProgramFolderLock second = lockProgramFolder(dir.path() / ".");
  EXPECT_FALSE(second.lock);
  EXPECT_EQ(second.problem, "the program folder " + dir.path().string() +
                                " (instance settings \"NIMBREL.INI\") is in use by process " +
                                std::to_string(::getpid()) +
                                "; stop that program first or give this one another folder with --dir");
  // Only the lock file: no settings were made on the way.
  EXPECT_EQ(namesIn(dir.path()), std::vector<std::string>{"NIMBREL.INI.lock"});

  std::ofstream(dir / "2qz.txt");
  const ProgramFolderLock two = lockProgramFolder(dir.path());
  ASSERT_TRUE(two.lock) << two.problem;
  EXPECT_TRUE(std::filesystem::exists(dir / "NIMBREL2.INI.lock"));
  const ProgramFolderLock twoAgain = lockProgramFolder(dir.path());
  EXPECT_FALSE(twoAgain.lock);
  EXPECT_NE(twoAgain.problem.find("(instance settings \"NIMBREL2.INI\") is in use"), std::string::npos)
      << twoAgain.problem;
}

}  // namespace
}  // namespace nimbrel
