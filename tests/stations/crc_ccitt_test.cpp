#include "stations/crc_ccitt.h"

#include <gtest/gtest.h>

#include <vector>

namespace nimbrel {
namespace {

TEST(CrcCcitt, MatchesTheConsoleManualsCheckVector) {
  const std::vector<std::uint8_t> bytes{0xC6, 0xCE, 0xA2, 0x03};
  EXPECT_EQ(crcCcitt(bytes), 0xE2B4);
}

TEST(CrcCcitt, APacketFollowedByItsCrcHighByteFirstGivesZero) {
  std::vector<std::uint8_t> packet{'L', 'O', 'O', 0, 1, 2, 250, 0x7F, 0xFF};
  const std::uint16_t crc = crcCcitt(packet);
  packet.push_back(static_cast<std::uint8_t>(crc >> 8));
  packet.push_back(static_cast<std::uint8_t>(crc & 0xFF));
  EXPECT_EQ(crcCcitt(packet), 0);
  packet[4] ^= 0x01;  // any single flipped bit is caught
  EXPECT_NE(crcCcitt(packet), 0);
}

TEST(CrcCcitt, StandardCheckStringOfTheXmodemVariant) {
  const std::string text = "123456789";
  EXPECT_EQ(crcCcitt({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}), 0x31C3);
}

}  // namespace
}  // namespace nimbrel
