#include "core/platform/instance_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <fmt/format.h>

#include <cerrno>
#include <charconv>
#include <system_error>
#include <utility>

namespace nimbrel::platform {
namespace {

LockRefusal cannotUse(int error) {
  return {LockRefusal::Reason::CannotUseFile, 0, std::error_code(error, std::generic_category()).message()};
}

// The process id the holder wrote, "1234\n"; 0 while the file is still empty
// or half written (the holder truncates it after taking the lock).
long pidWrittenIn(int fd) {
  char text[32];
  const ssize_t length = ::pread(fd, text, sizeof text, 0);
  if (length <= 0) return 0;
  long pid = 0;
  const auto [end, error] = std::from_chars(text, text + length, pid);
  if (error != std::errc() || end == text + length || *end != '\n' || pid <= 0) return 0;
  return pid;
}

// Replaces what an earlier holder left with this process's id. A failure
// (a full disk) only costs a refused start the holder's id, so the lock is
// kept either way.
void writeOwnPid(int fd) {
  const std::string text = fmt::format("{}\n", ::getpid());
  if (::ftruncate(fd, 0) == 0) (void)!::pwrite(fd, text.data(), text.size(), 0);
}

}  // namespace

std::variant<InstanceLock, LockRefusal> InstanceLock::acquire(const std::filesystem::path& folder,
                                                              const std::string& lockFileName) {
  const std::string path = (folder / lockFileName).string();
  int fd;
  do {
    // Close-on-exec: a program started from this one must not keep the lock
    // after this one has ended.
    fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  } while (fd < 0 && errno == EINTR);
  if (fd < 0) return cannotUse(errno);
  if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
    const int error = errno;
    const LockRefusal refusal = error == EWOULDBLOCK ? LockRefusal{LockRefusal::Reason::HeldByAnother,
                                                                   pidWrittenIn(fd), {}}
                                                     : cannotUse(error);
    ::close(fd);
    return refusal;
  }
  writeOwnPid(fd);
  return InstanceLock(fd);
}

InstanceLock::InstanceLock(InstanceLock&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}

InstanceLock& InstanceLock::operator=(InstanceLock&& other) noexcept {
  if (this != &other) {
    release();
    fd_ = std::exchange(other.fd_, -1);
  }
  return *this;
}

InstanceLock::~InstanceLock() { release(); }

// Closing the only descriptor of the lock releases it.
void InstanceLock::release() {
  if (fd_ >= 0) ::close(std::exchange(fd_, -1));
}

}  // namespace nimbrel::platform
