#include "core/platform/serial_control.h"

#include <sys/ioctl.h>

#include <cerrno>
#include <cstring>

#if defined(__linux__)
#include <asm/termbits.h>  // termios2: the kernel's form that carries any speed
#endif

namespace nimbrel::platform {
namespace {

bool failed(std::string* error) {
  if (error) *error = std::strerror(errno);
  return false;
}

}  // namespace

bool raiseDtrAndRts(int descriptor, std::string* error) {
  int lines = TIOCM_DTR | TIOCM_RTS;
  if (::ioctl(descriptor, TIOCMBIS, &lines) != 0) return failed(error);
  return true;
}

bool setNonStandardBaudRate(int descriptor, std::uint32_t baud, std::string* error) {
#if defined(__linux__)
  struct termios2 settings {};
  if (::ioctl(descriptor, TCGETS2, &settings) != 0) return failed(error);
  settings.c_cflag &= ~(CBAUD | (CBAUD << IBSHIFT));  // no input speed bits: input follows output
  settings.c_cflag |= BOTHER;
  settings.c_ispeed = baud;
  settings.c_ospeed = baud;
  if (::ioctl(descriptor, TCSETS2, &settings) != 0) return failed(error);
  return true;
#else
  (void)descriptor;
  (void)baud;
  if (error) *error = "this system has no way to set a non-standard baud rate";
  return false;
#endif
}

}  // namespace nimbrel::platform
