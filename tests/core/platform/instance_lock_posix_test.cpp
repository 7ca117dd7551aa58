#include "core/platform/instance_lock.h"

#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <csignal>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <variant>

#include "support/temp_folder.h"

namespace nimbrel::platform {
namespace {

using testsupport::TempFolder;

constexpr const char* kLockName = "NIMBREL.INI.lock";

std::string readText(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// The refusal, or a refusal with an empty reason when the lock was granted.
LockRefusal refusalOf(const std::variant<InstanceLock, LockRefusal>& result) {
  if (const auto* refusal = std::get_if<LockRefusal>(&result)) return *refusal;
  return {LockRefusal::Reason::CannotUseFile, -1, "the lock was granted"};
}

// Forks a child that takes the lock, says 'L' (or 'X' when refused) and then
// waits until it is killed or this test program ends (its pipe closes).
// Returns the child's pid, or -1 when it did not get the lock.
pid_t childHoldingTheLock(const std::filesystem::path& folder, int& keepAlive) {
  int said[2], wait[2];
  if (::pipe(said) != 0 || ::pipe(wait) != 0) return -1;
  const pid_t pid = ::fork();
  if (pid == 0) {
    ::close(wait[1]);
    const auto held = InstanceLock::acquire(folder, kLockName);
    const char answer = std::holds_alternative<InstanceLock>(held) ? 'L' : 'X';
    (void)!::write(said[1], &answer, 1);
    char ignored;
    while (::read(wait[0], &ignored, 1) > 0) {
    }
    ::_exit(0);
  }
  ::close(said[1]);
  ::close(wait[0]);
  keepAlive = wait[1];
  char answer = 0;
  const bool locked = pid > 0 && ::read(said[0], &answer, 1) == 1 && answer == 'L';
  ::close(said[0]);
  return locked ? pid : -1;
}

// Refused while another process holds it, naming that process; free again
// once the holder is killed (SIGKILL: nothing of it runs); held by this
// process until the lock object is destroyed.
TEST(InstanceLock, RefusedWhileHeldWithTheHoldersPidAndFreedByAKillOrTheDestructor) {
  TempFolder folder;
  std::ofstream(folder / kLockName) << "4000000000 left by a run long gone\n";  // a stale file is taken over
  int keepAlive = -1;
  const pid_t child = childHoldingTheLock(folder.path(), keepAlive);
  ASSERT_GT(child, 0);
  const LockRefusal whileAlive = refusalOf(InstanceLock::acquire(folder.path(), kLockName));
  EXPECT_EQ(whileAlive.reason, LockRefusal::Reason::HeldByAnother);
  EXPECT_EQ(whileAlive.holderPid, child);

  ::kill(child, SIGKILL);
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ::close(keepAlive);
  ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
  {
    const auto mine = InstanceLock::acquire(folder.path(), kLockName);
    ASSERT_TRUE(std::holds_alternative<InstanceLock>(mine)) << refusalOf(mine).systemError;
    EXPECT_EQ(readText(folder / kLockName), std::to_string(::getpid()) + "\n");
    const LockRefusal second = refusalOf(InstanceLock::acquire(folder.path(), kLockName));
    EXPECT_EQ(second.reason, LockRefusal::Reason::HeldByAnother);
    EXPECT_EQ(second.holderPid, ::getpid());
  }
  EXPECT_TRUE(std::holds_alternative<InstanceLock>(InstanceLock::acquire(folder.path(), kLockName)));
}

}  // namespace
}  // namespace nimbrel::platform
