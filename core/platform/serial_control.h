#pragma once
// Serial-port controls that the portable serial port object does not offer.
// Both work on the open port's native descriptor.

#include <cstdint>
#include <string>

namespace nimbrel::platform {

// Turns the DTR and RTS lines on. Some data-logger cables take their power
// from them. False, with the reason in `error`, when the device refuses
// (pseudo-terminals and some adapters have no modem lines).
bool raiseDtrAndRts(int descriptor, std::string* error = nullptr);

// Sets a baud rate that is missing from the system's list of standard rates
// (14400, for one). False, with the reason in `error`, when it cannot be set.
bool setNonStandardBaudRate(int descriptor, std::uint32_t baud, std::string* error = nullptr);

}  // namespace nimbrel::platform
