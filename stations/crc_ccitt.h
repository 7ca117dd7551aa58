#pragma once
// CRC-CCITT as the Davis consoles use it: polynomial 0x1021, initial value 0,
// most significant bit first, table-driven:
//   crc = table[(crc >> 8) ^ byte] ^ (crc << 8), kept to 16 bits.
// Run over a whole packet including its own two CRC bytes (high byte first)
// the result is 0.

#include <cstdint>
#include <span>

namespace nimbrel {

std::uint16_t crcCcittUpdate(std::uint16_t crc, std::uint8_t byte);
std::uint16_t crcCcitt(std::span<const std::uint8_t> bytes, std::uint16_t crc = 0);

}  // namespace nimbrel
