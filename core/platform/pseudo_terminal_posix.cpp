#include "core/platform/pseudo_terminal.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace nimbrel::platform {
namespace {

std::string systemError(const char* what) { return std::string(what) + ": " + std::strerror(errno); }

bool fail(std::string* error, const char* what) {
  if (error) *error = systemError(what);
  return false;
}

// Raw bytes both ways: the line discipline must not echo, translate CR/LF,
// buffer lines or turn control characters into signals.
bool makeRaw(int fd, std::string* error) {
  termios settings{};
  if (::tcgetattr(fd, &settings) != 0) return fail(error, "tcgetattr");
  ::cfmakeraw(&settings);
  settings.c_cflag |= CLOCAL | CREAD;
  settings.c_cc[VMIN] = 1;
  settings.c_cc[VTIME] = 0;
  if (::tcsetattr(fd, TCSANOW, &settings) != 0) return fail(error, "tcsetattr");
  return true;
}

}  // namespace

std::optional<PseudoTerminal> PseudoTerminal::open(std::string* error) {
  const int master = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (master < 0) {
    fail(error, "posix_openpt");
    return std::nullopt;
  }
  char path[128] = {};
  const bool ready = (::grantpt(master) == 0 || fail(error, "grantpt")) &&
                     (::unlockpt(master) == 0 || fail(error, "unlockpt")) &&
                     (::ptsname_r(master, path, sizeof path) == 0 || fail(error, "ptsname"));
  if (!ready) {
    ::close(master);
    return std::nullopt;
  }
  const int slave = ::open(path, O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (slave < 0 || !makeRaw(slave, error)) {
    if (slave < 0) fail(error, "open slave");
    if (slave >= 0) ::close(slave);
    ::close(master);
    return std::nullopt;
  }
  return PseudoTerminal(master, slave, path);
}

PseudoTerminal::PseudoTerminal(int master, int slave, std::string slavePath)
    : master_(master), slave_(slave), slavePath_(std::move(slavePath)) {}

PseudoTerminal::PseudoTerminal(PseudoTerminal&& other) noexcept
    : master_(std::exchange(other.master_, -1)),
      slave_(std::exchange(other.slave_, -1)),
      slavePath_(std::move(other.slavePath_)) {}

PseudoTerminal& PseudoTerminal::operator=(PseudoTerminal&& other) noexcept {
  if (this != &other) {
    closeAll();
    master_ = std::exchange(other.master_, -1);
    slave_ = std::exchange(other.slave_, -1);
    slavePath_ = std::move(other.slavePath_);
  }
  return *this;
}

PseudoTerminal::~PseudoTerminal() { closeAll(); }

int PseudoTerminal::releaseMaster() { return std::exchange(master_, -1); }

void PseudoTerminal::closeAll() {
  if (master_ >= 0) ::close(master_);
  if (slave_ >= 0) ::close(slave_);
  master_ = slave_ = -1;
}

}  // namespace nimbrel::platform
