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

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

std::vector<std::string> namesIn(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) names.push_back(entry.path().filename());
  std::sort(names.begin(), names.end());
  return names;
}

TEST(InstanceLockFile, IsNamedAfterTheInstancesMainSettings) {
  EXPECT_EQ(instanceLockFileName(0), "NIMBREL.INI.lock");
  EXPECT_EQ(instanceLockFileName(2), "NIMBREL2.INI.lock");
  EXPECT_EQ(instanceLockFileName(10), "NIMBREL10.INI.lock");
}

TEST(ProgramFolderLock, ASecondStartIsRefusedInOneSentenceNamingFolderSettingsAndHolder) {
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
}

TEST(ProgramFolderLock, EachInstanceOfAFolderHasItsOwnLock) {
  TempFolder dir;
  const ProgramFolderLock plain = lockProgramFolder(dir.path());
  ASSERT_TRUE(plain.lock) << plain.problem;

  std::ofstream(dir / "2qz.txt");
  const ProgramFolderLock two = lockProgramFolder(dir.path());
  ASSERT_TRUE(two.lock) << two.problem;
  EXPECT_TRUE(std::filesystem::exists(dir / "NIMBREL2.INI.lock"));

  const ProgramFolderLock twoAgain = lockProgramFolder(dir.path());
  EXPECT_FALSE(twoAgain.lock);
  EXPECT_TRUE(contains(twoAgain.problem, "(instance settings \"NIMBREL2.INI\") is in use")) << twoAgain.problem;
}

TEST(ProgramFolderLock, AMissingFolderIsMadeAndAnUnusableOneExplained) {
  TempFolder dir;
  const ProgramFolderLock fresh = lockProgramFolder(dir / "new" / "station");
  ASSERT_TRUE(fresh.lock) << fresh.problem;
  EXPECT_TRUE(std::filesystem::exists(dir / "new" / "station" / "NIMBREL.INI.lock"));

  std::ofstream(dir / "a file");
  const ProgramFolderLock underFile = lockProgramFolder(dir / "a file" / "station");
  EXPECT_FALSE(underFile.lock);
  EXPECT_TRUE(contains(underFile.problem, "the program folder " + (dir / "a file" / "station").string() +
                                              " cannot be made ("))
      << underFile.problem;

  std::filesystem::create_directory(dir / "NIMBREL.INI.lock");  // a folder where the lock file belongs
  const ProgramFolderLock blocked = lockProgramFolder(dir.path());
  EXPECT_FALSE(blocked.lock);
  EXPECT_TRUE(contains(blocked.problem, "(instance settings \"NIMBREL.INI\") cannot hold the lock file "
                                        "\"NIMBREL.INI.lock\""))
      << blocked.problem;
  EXPECT_TRUE(contains(blocked.problem, "--dir")) << blocked.problem;
}

}  // namespace
}  // namespace nimbrel
