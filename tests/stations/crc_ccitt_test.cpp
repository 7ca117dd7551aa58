#include "stations/crc_ccitt.h"

#include <gtest/gtest.h>

#include <vector>

namespace nimbrel {
namespace {

TEST(CrcCcitt, MatchesTheCheckVectorsAndAPacketWithItsCrcHighByteFirstGivesZero) {
  EXPECT_EQ(crcCcitt(std::vector<std::uint8_t>{0xC6, 0xCE, 0xA2, 0x03}), 0xE2B4);  // the console manual's
  const std::string text = "123456789";  // the standard check string of the XMODEM variant
  EXPECT_EQ(crcCcitt({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}), 0x31C3);

  std::vector<std::uint8_t> packet{'L', 'O', 'O', 0, 1, 2, 250, 0x7F, 0xFF};
  const std::uint16_t crc = crcCcitt(packet);
  packet.push_back(static_cast<std::uint8_t>(crc >> 8));
  packet.push_back(static_cast<std::uint8_t>(crc & 0xFF));
  EXPECT_EQ(crcCcitt(packet), 0);
  packet[4] ^= 0x01;  // any single flipped bit is caught
  EXPECT_NE(crcCcitt(packet), 0);
}

}  // namespace
}  // namespace nimbrel
