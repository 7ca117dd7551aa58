#pragma once
// A pseudo-terminal pair for serial-port tests: the code under test opens the
// slave path as if it were a serial port, the test writes to the master as if
// it were the station.

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <string_view>

namespace nimbrel::testsupport {

class PseudoTerminal {
 public:
  PseudoTerminal() {
    master_ = ::posix_openpt(O_RDWR | O_NOCTTY);
    if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0) fail("cannot open a pseudo-terminal");
    const char* name = ::ptsname(master_);
    if (!name) fail("pseudo-terminal without a slave name");
    slavePath_ = name;
    // Raw mode, so that the line discipline passes bytes through unchanged.
    termios settings{};
    if (::tcgetattr(master_, &settings) == 0) {
      ::cfmakeraw(&settings);
      ::tcsetattr(master_, TCSANOW, &settings);
    }
  }
  ~PseudoTerminal() { closeMaster(); }
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  const std::string& slavePath() const { return slavePath_; }

  // Sends bytes as the station would; false when not all were written.
  bool write(std::string_view bytes) {
    return master_ >= 0 && ::write(master_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  }

  // What the code under test sent, as far as it has arrived (non-blocking).
  std::string readAvailable() {
    std::string received;
    char chunk[256];
    const int flags = ::fcntl(master_, F_GETFL);
    ::fcntl(master_, F_SETFL, flags | O_NONBLOCK);
    for (ssize_t n; (n = ::read(master_, chunk, sizeof chunk)) > 0;)
      received.append(chunk, static_cast<std::size_t>(n));
    ::fcntl(master_, F_SETFL, flags);
    return received;
  }

  // The "device" goes away, as an unplugged adapter does.
  void closeMaster() {
    if (master_ >= 0) ::close(master_);
    master_ = -1;
  }

 private:
  [[noreturn]] void fail(const char* what) {
    closeMaster();
    throw std::runtime_error(what);
  }

  int master_ = -1;
  std::string slavePath_;
};

}  // namespace nimbrel::testsupport
