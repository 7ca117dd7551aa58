#include "stations/vantage_loop.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "stations/loop_bytes.h"

namespace nimbrel {
namespace {

using testsupport::hilowsAnswer;
using testsupport::LoopBytes;

// Puts a packet into the frame buffer as the framing leaves it (position 0
// holds packet byte 3) and decodes it.
bool decode(const LoopBytes& packet, LiveRecord& record, const VantageOptions& options = {}) {
  ReceiveState state;
  const auto bytes = packet.packet();
  std::copy(bytes.begin() + 3, bytes.end(), state.buffer.begin());
  return vantagein(state, record, options);
}

TEST(VantageLoop, ConvertsTheMainReadingsToInternalUnits) {
  LiveRecord r;
  ASSERT_TRUE(decode(LoopBytes()
                         .word(7, 29921)   // inHg / 1000
                         .word(9, 725)     // 72.5 F inside
                         .byte(11, 45)     // inside %
                         .word(12, 500)    // 50.0 F
                         .byte(14, 23)     // mph
                         .word(16, 270)    // degrees
                         .byte(33, 81)     // outside %
                         .word(41, 50)     // 0.50 in/h
                         .byte(43, 65)     // UV 6.5
                         .word(44, 812)    // W/m2
                         .word(54, 1234)   // year rain clicks
                         .word(56, 120),   // day ET, 0.120 in
                     r));
  EXPECT_NEAR(r.barometer, 1013.25, 0.01);
  EXPECT_NEAR(r.intemp, 22.5, 1e-9);
  EXPECT_EQ(r.inhum, 45);
  EXPECT_NEAR(r.outtemp, 10.0, 1e-9);
  EXPECT_NEAR(r.windspeed, 20.0, 1e-9);
  EXPECT_EQ(r.winddir, 270);
  EXPECT_EQ(r.outhum, 81);
  EXPECT_NEAR(r.rainrate, 0.5 / 0.03937, 1e-9);
  EXPECT_DOUBLE_EQ(r.uv, 6.5);
  EXPECT_DOUBLE_EQ(r.solar, 812);
  EXPECT_NEAR(r.raincounter, 313.436, 1e-9);
  EXPECT_NEAR(r.dailyet, 3.048, 1e-9);
}

TEST(VantageLoop, EdgeValuesOfTheConsole) {
  LiveRecord r;
  VantageOptions options;
  options.rainClicksPerInch = 100;
  ASSERT_TRUE(decode(LoopBytes()
                         .word(12, 0xFFF6)  // -1.0 F: 6552.6 - 6528 - 25.6
                         .byte(14, 251)     // above 250: calm
                         .word(46, 150)     // storm rain clicks
                         .word(87, 0x0100)  // high byte 1, low byte 0
                         .byte(33, 2),      // raised to 3
                     r, options));
  EXPECT_NEAR(r.outtemp, (-1.0 - 32) / 1.8, 1e-9);
  EXPECT_EQ(r.windspeed, 0.0);
  EXPECT_NEAR(r.stormrain, 38.1, 1e-9);
  EXPECT_NEAR(r.consolebattery, 255 * 300.0 / 512 / 100, 1e-12);  // 1.494..., not 1.5
  EXPECT_EQ(r.outhum, 3);
}

TEST(VantageLoop, AbsentSensorsAndRefusedValuesKeepThePreviousReading) {
  LiveRecord r;
  r.outhum = 77;
  r.uv = 3;
  r.solar = 400;
  r.intemp = 21;
  r.rainrate = 2;
  r.dailyet = 1;
  r.extratemp[1] = 5;
  VantageOptions options;
  options.extraSensors = true;
  ASSERT_TRUE(decode(LoopBytes()
                         .byte(33, 101)      // humidity above 100
                         .word(9, 1500)      // 150 F inside: out of range
                         .word(41, 30000)    // 7620 mm/h
                         .word(56, 4000),    // 101.6 mm ET
                     r, options));
  EXPECT_EQ(r.outhum, 77);
  EXPECT_EQ(r.uv, 3);        // 0xFF
  EXPECT_EQ(r.solar, 400);   // 0x7FFF
  EXPECT_EQ(r.intemp, 21);
  EXPECT_EQ(r.rainrate, 2);
  EXPECT_EQ(r.dailyet, 1);
  EXPECT_EQ(r.extratemp[1], 5);  // 0xFF
}

TEST(VantageLoop, ExtraSensorsAreReadOnlyWhenSwitchedOnWithTheirOffsets) {
  const auto packet = LoopBytes().byte(18, 90 + 68).byte(25, 122 + 9).byte(34, 60).byte(35, 99).byte(37, 50);
  LiveRecord off;
  ASSERT_TRUE(decode(packet, off));
  EXPECT_EQ(off.extratemp[1], 0);
  VantageOptions options;
  options.extraSensors = true;
  options.extraTempOffsetTenths[1] = -5;
  options.extraHumidityOffset[1] = 4;
  options.extraHumidityOffset[2] = 4;
  LiveRecord on;
  ASSERT_TRUE(decode(packet, on, options));
  EXPECT_NEAR(on.extratemp[1], 20.0 - 0.5, 1e-9);  // 68 F
  EXPECT_NEAR(on.soiltemp, 5.0, 1e-9);
  EXPECT_EQ(on.extrahum[1], 64);
  EXPECT_EQ(on.extrahum[2], 100);  // 99 + 4, kept to 100
  EXPECT_EQ(on.extrahum[4], 50);   // no offset beyond the third
}

TEST(VantageLoop, WindAtOrAboveTheOwnersLimitIsTakenAsCalm) {
  VantageOptions options;
  options.maxWindKnots = 40;
  LiveRecord r;
  ASSERT_TRUE(decode(LoopBytes().byte(14, 46), r, options));  // exactly 40 knots
  EXPECT_EQ(r.windspeed, 0);
  ASSERT_TRUE(decode(LoopBytes().byte(14, 45), r, options));
  EXPECT_NEAR(r.windspeed, 45 / 1.15, 1e-9);
}

TEST(VantageLoop, ForecastIconOnlyFromTheRainBit) {
  LiveRecord r;
  r.forecasticon = 7;
  ASSERT_TRUE(decode(LoopBytes().byte(89, 0x08).byte(90, 44), r));
  EXPECT_EQ(r.forecasticon, 7);
  EXPECT_EQ(r.forecastrule, 44);
  ASSERT_TRUE(decode(LoopBytes().byte(89, 0x03), r));
  EXPECT_EQ(r.forecasticon, 4);
}

TEST(VantageLoop, RevbPacketsAreRealignedWhereverTheFramingLeftThem) {
  for (std::size_t lead : {1u, 2u}) {
    ReceiveState state;
    const auto bytes = LoopBytes(true, -60).word(16, 123).packet();
    // lead 2: buffer starts at packet byte 1 ("OO..."); lead 1: at byte 2.
    std::copy(bytes.begin() + (3 - static_cast<long>(lead)), bytes.end(), state.buffer.begin());
    VantageOptions options;
    options.revb = true;
    LiveRecord r;
    ASSERT_TRUE(vantagein(state, r, options)) << lead;
    EXPECT_EQ(r.winddir, 123);
    EXPECT_EQ(r.barotrend, -60);
  }
}

TEST(VantageLoop, BadCrcUsesNothing) {
  ReceiveState state;
  const auto bytes = LoopBytes().word(16, 99).packet(true);
  std::copy(bytes.begin() + 3, bytes.end(), state.buffer.begin());
  LiveRecord r;
  EXPECT_FALSE(vantageintcpip(state, r, {}));
  EXPECT_EQ(r.winddir, 0);
}

ReceiveState blockInBuffer(std::uint8_t mph, std::uint16_t hhmm) {
  ReceiveState state;
  const auto block = hilowsAnswer(mph, hhmm);
  std::copy(block.begin(), block.end(), state.buffer.begin());
  return state;
}

TEST(VantageHilows, TheConsolesDailyGustIsTakenWithinItsLimits) {
  VantageOptions options;
  // 23 mph is 20 knots.
  EXPECT_EQ(consoleDailyMaxGust(blockInBuffer(23, 1200), options, 15, 12), 20.0);
  EXPECT_EQ(consoleDailyMaxGust(blockInBuffer(23, 1200), options, 10, 12), 20.0);  // exactly 10 more
  EXPECT_FALSE(consoleDailyMaxGust(blockInBuffer(23, 1200), options, 9, 12));      // 11 more
  EXPECT_FALSE(consoleDailyMaxGust(blockInBuffer(23, 1200), options, 21, 12));     // below today's
  EXPECT_FALSE(consoleDailyMaxGust(blockInBuffer(85, 1200), options, 70, 12));     // raw byte 85
  options.maxWindKnots = 20;
  EXPECT_FALSE(consoleDailyMaxGust(blockInBuffer(23, 1200), options, 15, 12));
}

TEST(VantageHilows, AnEarlyMorningHighIsIgnoredLateInTheDayWhenAsked) {
  VantageOptions options;
  options.earlyHighGustCheck = true;
  // A 0 high byte and low byte 0x20 give a time value below 600.
  EXPECT_FALSE(consoleDailyMaxGust(blockInBuffer(23, 0x0020), options, 15, 14));
  EXPECT_EQ(consoleDailyMaxGust(blockInBuffer(23, 0x0020), options, 15, 8), 20.0);
}

}  // namespace
}  // namespace nimbrel

#include "support/memory_settings_store.h"

namespace nimbrel {
namespace {

TEST(VantageOptionsTest, ReadsTheOwnersKeysAndKeepsDefaultsForBadText) {
  testsupport::MemorySettingsStore s;
  s.WriteString("Weather Station Type", "use revb", "yes");
  s.WriteString("Weather Station Type", "vp rain clicks per inch", "0");
  s.WriteString("Weather Station Type", "vp extra temp offset 2", "-5");
  s.WriteString("New readings limits", "max speed", "fast");
  const VantageOptions o = readVantageOptions(s);
  EXPECT_TRUE(o.revb);
  EXPECT_EQ(o.rainClicksPerInch, 100);
  EXPECT_EQ(o.extraTempOffsetTenths[2], -5);
  EXPECT_EQ(o.maxWindKnots, 150);
  EXPECT_FALSE(o.extraSensors);
}

}  // namespace
}  // namespace nimbrel
