#include "core/platform/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace nimbrel::platform {

bool isTerminal(std::FILE* stream) { return stream && ::isatty(::fileno(stream)) == 1; }

int terminalColumns(std::FILE* stream) {
  winsize size{};
  if (!stream || ::ioctl(::fileno(stream), TIOCGWINSZ, &size) != 0) return 0;
  return size.ws_col;
}

}  // namespace nimbrel::platform
