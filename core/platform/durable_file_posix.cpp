#include "core/platform/durable_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>

namespace nimbrel::platform {
namespace {

// Closes the descriptor, keeping the errno of what went wrong before.
bool closeAfter(int fd, bool ok) {
  const int saved = errno;
  const bool closed = ::close(fd) == 0;
  if (!ok) errno = saved;
  return ok && closed;
}

// Writes all of `parts`, going on after a short write that made progress.
bool writeAll(int fd, iovec* parts, int count) {
  while (count > 0 && parts->iov_len == 0) {
    ++parts;
    --count;
  }
  while (count > 0) {
    const ssize_t n = ::writev(fd, parts, count);
    if (n < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    if (n == 0) {
      errno = EIO;
      return false;
    }
    std::size_t left = static_cast<std::size_t>(n);
    while (count > 0 && left >= parts->iov_len) {  // whole parts written, and empty ones
      left -= parts->iov_len;
      ++parts;
      --count;
    }
    if (count > 0) {
      parts->iov_base = static_cast<char*>(parts->iov_base) + left;
      parts->iov_len -= left;
    }
  }
  return true;
}

iovec part(std::string_view text) { return {const_cast<char*>(text.data()), text.size()}; }

}  // namespace

bool writeWholeFile(const std::filesystem::path& path, std::string_view text, bool sync) {
  const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (fd < 0) return false;
  iovec parts[] = {part(text)};
  bool ok = writeAll(fd, parts, 1);
  if (ok && sync) ok = ::fsync(fd) == 0;
  return closeAfter(fd, ok);
}

bool appendWhole(const std::filesystem::path& path, std::string_view header, std::string_view text, bool* wasEmpty) {
  const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
  if (fd < 0) return false;
  struct stat before {};
  if (::fstat(fd, &before) != 0) return closeAfter(fd, false);
  const bool empty = before.st_size == 0;
  if (wasEmpty) *wasEmpty = empty;
  iovec parts[] = {part(header), part(text)};
  const bool ok = empty ? writeAll(fd, parts, 2) : writeAll(fd, parts + 1, 1);
  if (!ok) {
    const int saved = errno;
    // Take back what went in; should even that fail, the caller's report
    // of the failed write is all that can be done.
    [[maybe_unused]] const int cut = ::ftruncate(fd, before.st_size);
    errno = saved;
  }
  return closeAfter(fd, ok);
}

}  // namespace nimbrel::platform
