#pragma once
// Raw Vantage packets for the tests, built byte by byte so that a test says
// exactly what the console sent.

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "stations/crc_ccitt.h"

namespace nimbrel::testsupport {

class LoopBytes {
 public:
  // A quiet packet: "LOOP" (or "LOO" + trend), no extra sensors, LF CR.
  explicit LoopBytes(bool revb = false, std::int8_t trend = 0) {
    bytes_.fill(0);
    bytes_[0] = 'L';
    bytes_[1] = 'O';
    bytes_[2] = 'O';
    bytes_[3] = revb ? static_cast<std::uint8_t>(trend) : 'P';
    for (int i = 18; i <= 40; ++i) bytes_[i] = 0xFF;  // no extra sensors
    for (int i = 62; i <= 69; ++i) bytes_[i] = 0xFF;
    bytes_[43] = 0xFF;
    word(44, 0x7FFF);
    word(48, 0xFFFF);
    bytes_[95] = 0x0A;
    bytes_[96] = 0x0D;
  }
  LoopBytes& byte(int offset, std::uint8_t v) {
    bytes_[offset] = v;
    return *this;
  }
  LoopBytes& word(int offset, std::uint16_t v) {
    bytes_[offset] = static_cast<std::uint8_t>(v & 0xFF);
    bytes_[offset + 1] = static_cast<std::uint8_t>(v >> 8);
    return *this;
  }
  // The packet with its CRC; `corrupt` flips a data byte after the CRC is made.
  std::vector<std::uint8_t> packet(bool corrupt = false) const {
    auto p = bytes_;
    const std::uint16_t crc = crcCcitt(std::span<const std::uint8_t>(p).first(97));
    p[97] = static_cast<std::uint8_t>(crc >> 8);
    p[98] = static_cast<std::uint8_t>(crc & 0xFF);
    if (corrupt) p[20] ^= 0x10;
    return {p.begin(), p.end()};
  }

 private:
  std::array<std::uint8_t, 99> bytes_{};
};

// The console's HILOWS answer: acknowledge byte, 436 data bytes, CRC.
inline std::vector<std::uint8_t> hilowsAnswer(std::uint8_t dayHighMph, std::uint16_t hhmm, bool corrupt = false) {
  std::vector<std::uint8_t> block(437, 0);
  block[0] = 0x06;
  block[17] = dayHighMph;
  block[18] = static_cast<std::uint8_t>(hhmm & 0xFF);
  block[19] = static_cast<std::uint8_t>(hhmm >> 8);
  const std::uint16_t crc = crcCcitt(std::span<const std::uint8_t>(block).subspan(1));
  block.push_back(static_cast<std::uint8_t>(crc >> 8));
  block.push_back(static_cast<std::uint8_t>(crc & 0xFF));
  if (corrupt) block[100] ^= 1;
  return block;
}

}  // namespace nimbrel::testsupport
