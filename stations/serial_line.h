#pragma once
// The line parameters of a serial port: speed, parity, stop bits and data
// bits. Every station type comes with one; the serial link applies it when it
// opens the port.

#include <cstdint>

namespace nimbrel {

enum class Parity : std::uint8_t { none, odd, even };

struct SerialLine {
  std::uint32_t baud = 9600;
  Parity parity = Parity::none;
  std::uint8_t stopBits = 1;  // 1 or 2
  std::uint8_t dataBits = 8;  // eight for every station

  friend constexpr bool operator==(const SerialLine&, const SerialLine&) = default;
};

}  // namespace nimbrel
