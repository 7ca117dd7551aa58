// The run and the demo stop at once on a folder another program holds,
// before they write anything there.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "app/demo_command.h"
#include "app/run_command.h"
#include "core/instance_lock.h"
#include "support/temp_folder.h"

namespace nimbrel {
namespace {

using testsupport::TempFolder;

// Whether the folder holds the lock file and nothing else but `kept`.
bool onlyTheLockFileIn(const std::filesystem::path& folder, const std::string& kept = "") {
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().filename() == kept) continue;
    if (entry.path().filename() != "NIMBREL.INI.lock") return false;
    ++count;
  }
  return count == 1;
}

// Both runs below are short and fast: should the lock not stop them, they end
// by themselves and the checks on the folder fail.

TEST(FolderInUse, TheRunStopsBeforeWritingAnything) {
  TempFolder dir;
  const ProgramFolderLock held = lockProgramFolder(dir.path());
  ASSERT_TRUE(held.lock) << held.problem;
  std::ofstream(dir / "NIMBREL.INI") << "[Weather Station Type]\nName=NONE\n";  // a station the run would start
  EXPECT_NE(runStation(RunOptions{dir.path(), std::nullopt, ClockSpeed::max(), 60.0}), 0);
  EXPECT_TRUE(onlyTheLockFileIn(dir.path(), "NIMBREL.INI"));
}

TEST(FolderInUse, TheDemoStopsBeforeWritingItsSettings) {
  TempFolder dir;
  const ProgramFolderLock held = lockProgramFolder(dir.path());
  ASSERT_TRUE(held.lock) << held.problem;
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> out(std::tmpfile(), std::fclose);
  ASSERT_TRUE(out);
  EXPECT_NE(runDemo(DemoOptions{dir.path(), std::nullopt, ClockSpeed::max(), 60.0}, out.get()), 0);
  EXPECT_TRUE(onlyTheLockFileIn(dir.path()));
}

}  // namespace
}  // namespace nimbrel
