#include "stations/vantage_loop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <tuple>

#include "stations/loop_bytes.h"
#include "support/memory_settings_store.h"

namespace nimbrel {
namespace {

using testsupport::hilowsAnswer;
using testsupport::LoopBytes;

// Puts a packet into the frame buffer as the framing leaves it (position 0
// holds packet byte 3 when `lead` is 0) and decodes it into `record`.
bool decodeInto(LiveRecord& record, const LoopBytes& packet, const VantageOptions& options = {}, long lead = 0,
                bool corrupt = false) {
  ReceiveState state;
  const auto bytes = packet.packet(corrupt);
  std::copy(bytes.begin() + 3 - lead, bytes.end(), state.buffer.begin());
  return vantagein(state, record, options);
}
LiveRecord decoded(const LoopBytes& packet, const VantageOptions& options = {}) {
  LiveRecord record;
  EXPECT_TRUE(decodeInto(record, packet, options));
  return record;
}

TEST(VantageLoop, EdgeValuesOfTheConsoleAndTheForecastIconOnlyFromTheRainBit) {
  LiveRecord r;
  r.forecasticon = 7;
  ASSERT_TRUE(decodeInto(r,
                         LoopBytes()
                             .word(12, 0xFFF6)  // -1.0 F: 6552.6 - 6528 - 25.6
                             .byte(14, 251)     // above 250: calm
                             .word(46, 150)     // storm rain clicks
                             .word(87, 0x0100)  // high byte 1, low byte 0
                             .byte(33, 2)       // raised to 3
                             .byte(89, 0x08)    // no rain bit: the icon stays
                             .byte(90, 44),
                         {.rainClicksPerInch = 100}));
  EXPECT_NEAR(r.outtemp, (-1.0 - 32) / 1.8, 1e-9);
  EXPECT_EQ(r.windspeed, 0.0);
  EXPECT_NEAR(r.stormrain, 38.1, 1e-9);
  EXPECT_NEAR(r.consolebattery, 255 * 300.0 / 512 / 100, 1e-12);  // 1.494..., not 1.5
  EXPECT_EQ(r.outhum, 3);
  EXPECT_EQ(r.forecasticon, 7);
  EXPECT_EQ(r.forecastrule, 44);
  ASSERT_TRUE(decodeInto(r, LoopBytes().byte(89, 0x03)));
  EXPECT_EQ(r.forecasticon, 4);
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
  const LiveRecord before = r;
  ASSERT_TRUE(decodeInto(r,
                         LoopBytes()
                             .byte(33, 101)    // humidity above 100
                             .word(9, 1500)    // 150 F inside: out of range
                             .word(41, 30000)  // 7620 mm/h
                             .word(56, 4000),  // 101.6 mm ET
                         {.extraSensors = true}));
  // UV 0xFF, solar 0x7FFF and the extra temperature 0xFF are absent.
  EXPECT_EQ(std::tuple(r.outhum, r.uv, r.solar, r.intemp, r.rainrate, r.dailyet, r.extratemp[1]),
            std::tuple(before.outhum, before.uv, before.solar, before.intemp, before.rainrate, before.dailyet,
                       before.extratemp[1]));
}

TEST(VantageLoop, ExtraSensorsAreReadOnlyWhenSwitchedOnWithTheirOffsets) {
  const auto packet = LoopBytes().byte(18, 90 + 68).byte(25, 122 + 9).byte(34, 60).byte(35, 99).byte(37, 50);
  EXPECT_EQ(decoded(packet).extratemp[1], 0);
  VantageOptions options{.extraSensors = true};
  options.extraTempOffsetTenths[1] = -5;
  options.extraHumidityOffset[1] = 4;
  options.extraHumidityOffset[2] = 4;
  const LiveRecord on = decoded(packet, options);
  EXPECT_NEAR(on.extratemp[1], 20.0 - 0.5, 1e-9);  // 68 F
  EXPECT_NEAR(on.soiltemp, 5.0, 1e-9);
  EXPECT_EQ(on.extrahum[1], 64);
  EXPECT_EQ(on.extrahum[2], 100);  // 99 + 4, kept to 100
  EXPECT_EQ(on.extrahum[4], 50);   // no offset beyond the third
}

TEST(VantageLoop, WindAtOrAboveTheOwnersLimitIsTakenAsCalm) {
  const VantageOptions options{.maxWindKnots = 40};
  EXPECT_EQ(decoded(LoopBytes().byte(14, 46), options).windspeed, 0);  // exactly 40 knots
  EXPECT_NEAR(decoded(LoopBytes().byte(14, 45), options).windspeed, 45 / 1.15, 1e-9);
}

TEST(VantageLoop, RevbPacketsAreRealignedWhereverTheFramingLeftThemAndABadCrcUsesNothing) {
  // Lead 2: the buffer starts at packet byte 1 ("OO..."); lead 1: at byte 2.
  for (long lead : {1, 2}) {
    LiveRecord r;
    ASSERT_TRUE(decodeInto(r, LoopBytes(true, -60).word(16, 123), {.revb = true}, lead)) << lead;
    EXPECT_EQ(r.winddir, 123);
    EXPECT_EQ(r.barotrend, -60);
  }
  ReceiveState state;
  const auto bytes = LoopBytes().word(16, 99).packet(true);
  std::copy(bytes.begin() + 3, bytes.end(), state.buffer.begin());
  LiveRecord r;
  EXPECT_FALSE(vantageintcpip(state, r, {}));
  EXPECT_EQ(r.winddir, 0);
}

std::optional<double> consoleGust(std::uint8_t mph, std::uint16_t hhmm, const VantageOptions& options,
                                  double todaysGust, int hour) {
  ReceiveState state;
  const auto block = hilowsAnswer(mph, hhmm);
  std::copy(block.begin(), block.end(), state.buffer.begin());
  return consoleDailyMaxGust(state, options, todaysGust, hour);
}

TEST(VantageHilows, TheConsolesDailyGustIsTakenWithinItsLimits) {
  // 23 mph is 20 knots.
  EXPECT_EQ(consoleGust(23, 1200, {}, 15, 12), 20.0);
  EXPECT_EQ(consoleGust(23, 1200, {}, 10, 12), 20.0);  // exactly 10 more
  EXPECT_FALSE(consoleGust(23, 1200, {}, 9, 12));      // 11 more
  EXPECT_FALSE(consoleGust(23, 1200, {}, 21, 12));     // below today's
  EXPECT_FALSE(consoleGust(85, 1200, {}, 70, 12));     // raw byte 85
  EXPECT_FALSE(consoleGust(23, 1200, {.maxWindKnots = 20}, 15, 12));
  // With the early check, a high of the early morning (a 0 high byte and low
  // byte 0x20 give a time below 600) is ignored late in the day.
  EXPECT_FALSE(consoleGust(23, 0x0020, {.earlyHighGustCheck = true}, 15, 14));
  EXPECT_EQ(consoleGust(23, 0x0020, {.earlyHighGustCheck = true}, 15, 8), 20.0);
}

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
