#include "core/platform/serial_device.h"

#include <fmt/format.h>

namespace nimbrel::platform {

// Linux numbers its on-board serial ports from 0: COM1 is /dev/ttyS0.
std::string serialDeviceForComNumber(int n) {
  if (n < 1) return {};
  return fmt::format("/dev/ttyS{}", n - 1);
}

}  // namespace nimbrel::platform
