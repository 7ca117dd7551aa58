#pragma once
// Names of serial devices on this system. The settings store ports as the
// numbers of the port chooser (COM1 to COM16); this is where such a number
// becomes a device the system can open.

#include <string>

namespace nimbrel::platform {

// The device of port number `n` (1 = the first serial port); empty when `n`
// is below 1.
std::string serialDeviceForComNumber(int n);

}  // namespace nimbrel::platform
