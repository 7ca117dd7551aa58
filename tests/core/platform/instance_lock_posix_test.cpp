#include "core/platform/instance_lock.h"

#include <fcntl.h>
#include <sys/file.h>
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

bool acquired(const std::variant<InstanceLock, LockRefusal>& result) {
  return std::holds_alternative<InstanceLock>(result);
}

// The refusal, or a refusal with an empty reason when the lock was granted.
LockRefusal refusalOf(const std::variant<InstanceLock, LockRefusal>& result) {
  if (const auto* refusal = std::get_if<LockRefusal>(&result)) return *refusal;
  return {LockRefusal::Reason::CannotUseFile, -1, "the lock was granted"};
}

TEST(InstanceLock, ASecondAcquireIsRefusedAndNamesTheHolder) {
  TempFolder folder;
  std::ofstream(folder / kLockName) << "4000000000 left by a run long gone\n";  // a stale file is taken over
  const auto first = InstanceLock::acquire(folder.path(), kLockName);
  ASSERT_TRUE(acquired(first)) << refusalOf(first).systemError;
  EXPECT_EQ(readText(folder / kLockName), std::to_string(::getpid()) + "\n");

  const LockRefusal second = refusalOf(InstanceLock::acquire(folder.path(), kLockName));
  EXPECT_EQ(second.reason, LockRefusal::Reason::HeldByAnother);
  EXPECT_EQ(second.holderPid, ::getpid());
}

TEST(InstanceLock, DifferentLockFilesInOneFolderDoNotBlockEachOther) {
  TempFolder folder;
  const auto plain = InstanceLock::acquire(folder.path(), kLockName);
  const auto two = InstanceLock::acquire(folder.path(), "NIMBREL2.INI.lock");
  EXPECT_TRUE(acquired(plain));
  EXPECT_TRUE(acquired(two));
}

TEST(InstanceLock, HeldUntilTheLastOwnerIsDestroyedAndMovesWithTheObject) {
  TempFolder folder;
  {
    auto first = InstanceLock::acquire(folder.path(), kLockName);
    ASSERT_TRUE(acquired(first));
    std::optional<InstanceLock> moved(std::move(std::get<InstanceLock>(first)));
    first = LockRefusal{};  // destroys the moved-from object
    EXPECT_EQ(refusalOf(InstanceLock::acquire(folder.path(), kLockName)).reason,
              LockRefusal::Reason::HeldByAnother);
    moved.reset();
    auto again = InstanceLock::acquire(folder.path(), kLockName);
    ASSERT_TRUE(acquired(again));
    // A lock assigned over another releases the one it held.
    auto other = InstanceLock::acquire(folder.path(), "NIMBREL2.INI.lock");
    ASSERT_TRUE(acquired(other));
    std::get<InstanceLock>(again) = std::move(std::get<InstanceLock>(other));
    EXPECT_TRUE(acquired(InstanceLock::acquire(folder.path(), kLockName)));
    EXPECT_FALSE(acquired(InstanceLock::acquire(folder.path(), "NIMBREL2.INI.lock")));
  }
  EXPECT_TRUE(acquired(InstanceLock::acquire(folder.path(), kLockName)));
  EXPECT_TRUE(acquired(InstanceLock::acquire(folder.path(), "NIMBREL2.INI.lock")));
}

TEST(InstanceLock, AHolderThatHasNotWrittenItsPidYetIsReportedWithoutOne) {
  TempFolder folder;
  for (const char* content : {"", "12", "12x\n", "-5\n"}) {
    std::ofstream(folder / kLockName, std::ios::trunc) << content;
    const int fd = ::open((folder / kLockName).c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_GE(fd, 0);
    ASSERT_EQ(::flock(fd, LOCK_EX | LOCK_NB), 0);
    const LockRefusal refusal = refusalOf(InstanceLock::acquire(folder.path(), kLockName));
    ::close(fd);
    EXPECT_EQ(refusal.reason, LockRefusal::Reason::HeldByAnother) << '"' << content << '"';
    EXPECT_EQ(refusal.holderPid, 0) << '"' << content << '"';
    EXPECT_EQ(readText(folder / kLockName), content) << "the refused acquire changed the holder's file";
  }
}

TEST(InstanceLock, AFileThatCannotBeOpenedIsReportedWithTheSystemsReason) {
  TempFolder folder;
  std::filesystem::create_directory(folder / kLockName);  // even root cannot open a folder for writing
  const LockRefusal onFolder = refusalOf(InstanceLock::acquire(folder.path(), kLockName));
  EXPECT_EQ(onFolder.reason, LockRefusal::Reason::CannotUseFile);
  EXPECT_FALSE(onFolder.systemError.empty());

  const LockRefusal noFolder = refusalOf(InstanceLock::acquire(folder / "missing", kLockName));
  EXPECT_EQ(noFolder.reason, LockRefusal::Reason::CannotUseFile);
  EXPECT_FALSE(noFolder.systemError.empty());
}

// A child process that took the lock and waits to be killed; killed and
// reaped when the test ends, whatever happened. Should this test program die
// first, the child sees its pipe close and ends too.
class LockingChild {
 public:
  LockingChild(const std::filesystem::path& folder, const char* lockName) {
    int toParent[2];
    int fromParent[2];
    if (::pipe(toParent) != 0) return;
    if (::pipe(fromParent) != 0) {
      closeBoth(toParent);
      return;
    }
    pid_ = ::fork();
    if (pid_ == 0) holdLock(folder, lockName, toParent[1], fromParent[0]);
    ::close(toParent[1]);
    ::close(fromParent[0]);
    keepAlive_ = fromParent[1];
    char said = 0;
    if (pid_ > 0 && ::read(toParent[0], &said, 1) == 1) locked_ = said == 'L';
    ::close(toParent[0]);
  }
  ~LockingChild() { killAndReap(); }
  LockingChild(const LockingChild&) = delete;
  LockingChild& operator=(const LockingChild&) = delete;

  pid_t pid() const { return pid_; }
  bool locked() const { return locked_; }

  // True when the child ended by SIGKILL.
  bool killAndReap() {
    if (pid_ <= 0) return false;
    ::kill(pid_, SIGKILL);
    int status = 0;
    const bool reaped = ::waitpid(pid_, &status, 0) == pid_;
    pid_ = -1;
    ::close(keepAlive_);
    return reaped && WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
  }

 private:
  static void closeBoth(const int ends[2]) {
    ::close(ends[0]);
    ::close(ends[1]);
  }

  // The child: takes the lock, says 'L' (or 'X' when refused) and waits
  // until its parent closes the pipe or kills it.
  [[noreturn]] static void holdLock(const std::filesystem::path& folder, const char* lockName, int sayTo,
                                    int waitOn) {
    const auto held = InstanceLock::acquire(folder, lockName);
    const char said = acquired(held) ? 'L' : 'X';
    (void)!::write(sayTo, &said, 1);
    char ignored;
    while (::read(waitOn, &ignored, 1) > 0) {
    }
    ::_exit(0);
  }

  pid_t pid_ = -1;
  int keepAlive_ = -1;
  bool locked_ = false;
};

TEST(InstanceLock, AKilledHolderNeverBlocksTheNextAcquire) {
  TempFolder folder;
  LockingChild child(folder.path(), kLockName);
  ASSERT_GT(child.pid(), 0);
  ASSERT_TRUE(child.locked());

  const LockRefusal whileAlive = refusalOf(InstanceLock::acquire(folder.path(), kLockName));
  EXPECT_EQ(whileAlive.reason, LockRefusal::Reason::HeldByAnother);
  EXPECT_EQ(whileAlive.holderPid, child.pid());

  ASSERT_TRUE(child.killAndReap());
  EXPECT_TRUE(acquired(InstanceLock::acquire(folder.path(), kLockName)));
  EXPECT_EQ(readText(folder / kLockName), std::to_string(::getpid()) + "\n");
}

}  // namespace
}  // namespace nimbrel::platform
