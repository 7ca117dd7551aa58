#pragma once
// Runs a piece of a test in a child process bound by file permissions. The
// tests may run as root, whom a file without read permission does not stop;
// the child then gives up root for the "nobody" user before it acts, so that
// such a file really cannot be read. Only the child's effects on disk come
// back: the parent checks those.

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

namespace nimbrel::testsupport {

inline constexpr uid_t kNobody = 65534;
// The child's exit status when it could not give up root.
inline constexpr int kCannotDropRoot = 125;

// The child's exit status: 0 when `action` ran and returned, 1 when it threw,
// kCannotDropRoot, or -1 when there was no child.
inline int runUnprivilegedChild(const std::function<void()>& action) {
  const pid_t child = ::fork();
  if (child < 0) return -1;
  if (child == 0) {
    if (::geteuid() == 0 && (::setgroups(0, nullptr) != 0 || ::setgid(kNobody) != 0 || ::setuid(kNobody) != 0))
      ::_exit(kCannotDropRoot);
    try {
      action();
    } catch (...) {
      ::_exit(1);
    }
    ::_exit(0);
  }
  int status = 0;
  if (::waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
  return WEXITSTATUS(status);
}

}  // namespace nimbrel::testsupport
