#pragma once
// A pseudo-terminal for serial-port tests: the code under test opens the
// slave path as if it were a serial port, the test writes to the master as if
// it were the station.

#include <fcntl.h>
#include <unistd.h>

#include <stdexcept>
#include <string>
#include <string_view>

#include "core/platform/pseudo_terminal.h"

namespace nimbrel::testsupport {

class PseudoTerminal {
 public:
  PseudoTerminal() : pair_(openPair()) {}

  const std::string& slavePath() const { return pair_.slavePath(); }

  // Sends bytes as the station would; false when not all were written.
  bool write(std::string_view bytes) {
    const int master = pair_.masterFd();
    return master >= 0 && ::write(master, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  }

  // What the code under test sent, as far as it has arrived (non-blocking).
  std::string readAvailable() {
    const int master = pair_.masterFd();
    std::string received;
    char chunk[256];
    const int flags = ::fcntl(master, F_GETFL);
    ::fcntl(master, F_SETFL, flags | O_NONBLOCK);
    for (ssize_t n; (n = ::read(master, chunk, sizeof chunk)) > 0;) received.append(chunk, static_cast<std::size_t>(n));
    ::fcntl(master, F_SETFL, flags);
    return received;
  }

  // The "device" goes away, as an unplugged adapter does.
  void closeMaster() {
    if (pair_.masterFd() >= 0) ::close(pair_.releaseMaster());
  }

 private:
  static platform::PseudoTerminal openPair() {
    std::string error;
    auto pair = platform::PseudoTerminal::open(&error);
    if (!pair) throw std::runtime_error("cannot open a pseudo-terminal: " + error);
    return std::move(*pair);
  }

  platform::PseudoTerminal pair_;
};

}  // namespace nimbrel::testsupport
