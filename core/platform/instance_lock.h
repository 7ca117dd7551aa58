#pragma once
// An exclusive lock on a file, held as long as the object holding it lives.
// The program takes one per program folder and instance, so that a second
// copy started on the same folder stops before it writes anything. The
// system drops the lock when the holding process ends, however it ends: a
// killed program never blocks the next start, and the file left on disk means
// nothing while nobody holds its lock. The holder writes its process id into
// the file, for a refused start to name it.

#include <filesystem>
#include <string>
#include <variant>

namespace nimbrel::platform {

// Why `InstanceLock::acquire` did not get the lock.
struct LockRefusal {
  enum class Reason { HeldByAnother, CannotUseFile };
  Reason reason = Reason::CannotUseFile;
  // HeldByAnother: the holder's process id; 0 when it has not written it yet.
  long holderPid = 0;
  // CannotUseFile: the system's reason ("Permission denied", ...).
  std::string systemError;
};

class InstanceLock {
 public:
  // Opens `folder`/`lockFileName` (creating it when missing) and locks it
  // without waiting; then writes this process's id into it.
  static std::variant<InstanceLock, LockRefusal> acquire(const std::filesystem::path& folder,
                                                         const std::string& lockFileName);

  InstanceLock(InstanceLock&& other) noexcept;
  InstanceLock& operator=(InstanceLock&& other) noexcept;
  InstanceLock(const InstanceLock&) = delete;
  InstanceLock& operator=(const InstanceLock&) = delete;
  ~InstanceLock();  // releases the lock

 private:
  explicit InstanceLock(int fd) : fd_(fd) {}
  void release();

  int fd_ = -1;
};

}  // namespace nimbrel::platform
