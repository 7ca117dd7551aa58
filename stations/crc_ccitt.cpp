#include "stations/crc_ccitt.h"

#include <array>

namespace nimbrel {
namespace {

constexpr std::array<std::uint16_t, 256> makeTable() {
  std::array<std::uint16_t, 256> table{};
  for (unsigned i = 0; i < 256; ++i) {
    std::uint16_t crc = static_cast<std::uint16_t>(i << 8);
    for (int bit = 0; bit < 8; ++bit)
      crc = static_cast<std::uint16_t>((crc & 0x8000) ? (crc << 1) ^ 0x1021 : crc << 1);
    table[i] = crc;
  }
  return table;
}

constexpr auto kTable = makeTable();

}  // namespace

std::uint16_t crcCcittUpdate(std::uint16_t crc, std::uint8_t byte) {
  return static_cast<std::uint16_t>(kTable[((crc >> 8) ^ byte) & 0xFF] ^ (crc << 8));
}

std::uint16_t crcCcitt(std::span<const std::uint8_t> bytes, std::uint16_t crc) {
  for (std::uint8_t b : bytes) crc = crcCcittUpdate(crc, b);
  return crc;
}

}  // namespace nimbrel
