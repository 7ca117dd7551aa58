#include "tools/vantage_sim/loop_packet.h"

#include <gtest/gtest.h>

#include "stations/crc_ccitt.h"

namespace nimbrel::sim {
namespace {

std::uint16_t wordAt(const LoopPacket& p, std::size_t offset) {
  return static_cast<std::uint16_t>(p[offset] | (p[offset + 1] << 8));
}

// A reading with a distinct value in every field, so that a field written at
// the wrong offset shows.
ConsoleReading everyFieldSet() {
  return {.barometerTrend = -20, .nextArchiveRecord = 0x0102, .barometer = 30012, .insideTemperature = 712,
          .insideHumidity = 41, .outsideTemperature = 655, .windSpeed = 17, .windAverage10 = 9, .windDirection = 271,
          .extraTemperatures = {150, 151, 152, 153, 154, 155, 156}, .soilTemperatures = {160, 161, 162, 163},
          .leafTemperatures = {170, 171, 172, 173}, .outsideHumidity = 77,
          .extraHumidities = {81, 82, 83, 84, 85, 86, 87}, .rainRate = 0x0203, .uvIndex = 45, .solarRadiation = 812,
          .stormRain = 0x0304, .stormStart = CalendarDate{2026, 7, 4}, .dayRain = 0x0405, .monthRain = 0x0506,
          .yearRain = 0x0607, .dayEt = 0x0708, .monthEt = 0x0809, .yearEt = 0x090A, .soilMoistures = {21, 22, 23, 24},
          .leafWetnesses = {1, 2, 3, 4}, .transmitterBatteryStatus = 0x02, .consoleBattery = 802,
          .forecastIcons = kIconCloud | kIconPartlyCloudy, .forecastRule = 123, .sunrise = 532, .sunset = 2117};
}

TEST(LoopPacketEncoding, PutsEveryFieldAtItsOffset) {
  const LoopPacket p = encodeLoopPacket(everyFieldSet(), false);
  EXPECT_EQ(std::string(p.begin(), p.begin() + 4), "LOOP");
  EXPECT_EQ(p[4], 0);
  const std::pair<std::size_t, std::uint16_t> words[] = {
      {5, 0x0102}, {7, 30012},  {9, 712},     {12, 655},    {16, 271},    {41, 0x0203}, {44, 812},
      {46, 0x0304}, {50, 0x0405}, {52, 0x0506}, {54, 0x0607}, {56, 0x0708}, {58, 0x0809}, {60, 0x090A},
      {87, 802},   {91, 532},    {93, 2117}};
  for (const auto& [offset, value] : words) EXPECT_EQ(wordAt(p, offset), value) << "offset " << offset;
  const std::pair<std::size_t, std::uint8_t> bytes[] = {
      {11, 41},  {14, 17},  {15, 9},  {18, 150}, {24, 156}, {25, 160}, {28, 163}, {29, 170}, {32, 173},
      {33, 77},  {34, 81},  {40, 87}, {43, 45},  {62, 21},  {65, 24},  {66, 1},   {69, 4},   {86, 0x02},
      {89, 0x06}, {90, 123}, {95, '\n'}, {96, '\r'}};
  for (const auto& [offset, value] : bytes) EXPECT_EQ(p[offset], value) << "offset " << offset;
  for (std::size_t alarm = 70; alarm <= 85; ++alarm) EXPECT_EQ(p[alarm], 0) << "alarm byte " << alarm;
}

TEST(LoopPacketEncoding, CrcTakesTheHighByteFirstAndByteThreeIsPOrTheBarometerTrend) {
  for (const bool revb : {false, true}) {
    const LoopPacket p = encodeLoopPacket(everyFieldSet(), revb);
    EXPECT_EQ(crcCcitt(p), 0) << "revb " << revb;
    const std::uint16_t crc = crcCcitt(std::span<const std::uint8_t>(p).first(97));
    EXPECT_EQ(p[97], crc >> 8);
    EXPECT_EQ(p[98], crc & 0xFF);
  }
  ConsoleReading r = everyFieldSet();
  r.barometerTrend = -60;
  EXPECT_EQ(encodeLoopPacket(r, false)[3], 'P');
  EXPECT_EQ(encodeLoopPacket(r, true)[3], 0xC4);  // -60 as a signed byte
  EXPECT_EQ(std::string_view(reinterpret_cast<const char*>(encodeLoopPacket(r, true).data()), 3), "LOO");
  r.barometerTrend = 60;
  EXPECT_EQ(encodeLoopPacket(r, true)[3], 60);
}

TEST(LoopPacketEncoding, NegativeTemperaturesAreTwosComplementWordsAndTheStormDateIsPacked) {
  ConsoleReading r = everyFieldSet();
  r.outsideTemperature = -10;  // -1.0 deg F
  r.insideTemperature = -325;
  const LoopPacket p = encodeLoopPacket(r, false);
  EXPECT_EQ(wordAt(p, 12), 0xFFF6);
  EXPECT_EQ(wordAt(p, 9), 0xFEBB);
}

TEST(LoopPacketEncoding, MissingSensorsCarryTheirNoSensorMarks) {
  ConsoleReading r = everyFieldSet();
  r.outsideTemperature.reset();
  r.outsideHumidity.reset();
  r.solarRadiation.reset();
  r.uvIndex.reset();
  r.extraTemperatures[2].reset();
  r.soilMoistures[3].reset();
  r.leafWetnesses[0].reset();
  r.stormStart.reset();
  const LoopPacket p = encodeLoopPacket(r, false);
  EXPECT_EQ(wordAt(p, 12), 0x7FFF);
  EXPECT_EQ(wordAt(p, 44), 0x7FFF);
  EXPECT_EQ(wordAt(p, 48), 0xFFFF);
  for (const std::size_t offset : {33u, 43u, 20u, 65u, 66u}) EXPECT_EQ(p[offset], 0xFF) << "offset " << offset;
  EXPECT_EQ(p[19], 151);  // the neighbours keep their values
  EXPECT_EQ(p[67], 2);
  EXPECT_EQ(crcCcitt(p), 0);
}

TEST(LoopPacketEncoding, PacksTheStormStartDate) {
  EXPECT_EQ(packStormDate({2026, 7, 4}), (7 << 12) | (4 << 7) | 26);
  EXPECT_EQ(packStormDate({2099, 12, 31}), 0xCFE3);
  EXPECT_EQ(packStormDate({2000, 1, 1}), 0x1080);
  EXPECT_EQ(wordAt(encodeLoopPacket(everyFieldSet(), false), 48), 0x721A);
}

TEST(HilowsEncoding, IsTheFullBlockWithTheDailyHighWindAndItsTime) {
  ConsoleHighsLows h;
  h.dayLowBarometer = 29801;
  h.dayHighBarometer = 30105;
  h.dayHighWindSpeed = 38;
  h.dayHighWindTime = 1435;
  h.monthHighWindSpeed = 44;
  const HilowsBlock block = encodeHilows(h);
  ASSERT_EQ(block.size(), 438u);
  EXPECT_EQ(crcCcitt(block), 0);
  EXPECT_EQ(block[16], 38);
  EXPECT_EQ(block[17] | (block[18] << 8), 1435);
  EXPECT_EQ(block[19], 44);
  EXPECT_EQ(block[0] | (block[1] << 8), 29801);
  EXPECT_EQ(block[2] | (block[3] << 8), 30105);
}

TEST(ConsoleTimeEncoding, RoundTripsAndRefusesDamage) {
  LocalTime t{.year = 2031, .month = 5, .day = 6, .hour = 7, .minute = 8, .second = 9};
  const ConsoleTimeBytes bytes = encodeConsoleTime(t);
  EXPECT_EQ(bytes[5], 131);  // years since 1900
  EXPECT_EQ(crcCcitt(bytes), 0);
  const auto back = decodeConsoleTime(bytes);
  ASSERT_TRUE(back);
  EXPECT_EQ(back->year, 2031);
  EXPECT_EQ(back->second, 9);

  ConsoleTimeBytes damaged = bytes;
  damaged[1] ^= 0x01;
  EXPECT_FALSE(decodeConsoleTime(damaged));
  t.month = 13;  // a good CRC over a bad date
  EXPECT_FALSE(decodeConsoleTime(encodeConsoleTime(t)));
  EXPECT_FALSE(decodeConsoleTime(std::span(bytes).first(7)));
}

}  // namespace
}  // namespace nimbrel::sim
