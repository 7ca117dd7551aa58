// The simulator's encodings, read back by the program's own decoders: what
// the console sends is what the program must make of it.

#include "tools/vantage_sim/loop_packet.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <tuple>

#include "stations/vantage_loop.h"
#include "tools/vantage_sim/faults.h"

namespace nimbrel::sim {
namespace {

// A distinct value in every field the program reads, so that a field written
// at the wrong offset shows; the values are worked out by hand below.
ConsoleReading everyFieldSet() {
  return {.barometerTrend = -60, .barometer = 29921, .insideTemperature = 725, .insideHumidity = 45,
          .outsideTemperature = 500, .windSpeed = 23, .windDirection = 271,
          .extraTemperatures = {158, 151, 152, 153, 154, 155, 122}, .soilTemperatures = {131, 161, 162, 140},
          .outsideHumidity = 81, .extraHumidities = {60, 82, 83, 84, 85, 86, 87}, .rainRate = 50, .uvIndex = 65,
          .solarRadiation = 812, .stormRain = 150, .stormStart = CalendarDate{2099, 12, 31}, .yearRain = 1234,
          .dayEt = 120, .soilMoistures = {21, 22, 23, 24}, .leafWetnesses = {1, 2, 3, 4},
          .transmitterBatteryStatus = 0x02, .consoleBattery = 0x0100, .forecastIcons = kIconRain | kIconCloud,
          .forecastRule = 123};
}

// Decodes an encoded packet placed as the framing leaves it: packet byte 3
// first, or with "use revb" one byte earlier.
std::optional<LiveRecord> decoded(const LoopPacket& packet, bool revb, LiveRecord record = {}) {
  ReceiveState state;
  std::copy(packet.begin() + (revb ? 2 : 3), packet.end(), state.buffer.begin());
  if (!vantagein(state, record, {.revb = revb, .extraSensors = true})) return std::nullopt;
  return record;
}

TEST(LoopPacketRoundTrip, EveryFieldComesBackWithEitherHeader) {
  for (const bool revb : {false, true}) {
    SCOPED_TRACE(revb ? "revb" : "LOOP");
    const auto r = decoded(encodeLoopPacket(everyFieldSet(), revb), revb);
    ASSERT_TRUE(r);
    EXPECT_EQ(r->barotrend, revb ? -60 : 0);
    EXPECT_NEAR(r->barometer, 1013.25, 0.01);  // 29.921 inHg
    EXPECT_NEAR(r->intemp, 22.5, 1e-9);        // 72.5 F
    EXPECT_EQ(r->inhum, 45);
    EXPECT_NEAR(r->outtemp, 10.0, 1e-9);    // 50.0 F
    EXPECT_NEAR(r->windspeed, 20.0, 1e-9);  // 23 mph
    EXPECT_EQ(r->winddir, 271);
    EXPECT_NEAR(r->extratemp[1], 20.0, 1e-9);  // 68 F
    EXPECT_NEAR(r->extratemp[7], 0.0, 1e-9);
    EXPECT_NEAR(r->soiltemp, 5.0, 1e-9);  // 41 F
    EXPECT_NEAR(r->soiltemps[4], 10.0, 1e-9);
    EXPECT_EQ(r->outhum, 81);
    EXPECT_EQ(r->extrahum[1], 60);
    EXPECT_EQ(r->extrahum[7], 87);
    EXPECT_NEAR(r->rainrate, 12.7, 1e-3);  // 0.50 in/h
    EXPECT_DOUBLE_EQ(r->uv, 6.5);
    EXPECT_DOUBLE_EQ(r->solar, 812);
    EXPECT_NEAR(r->stormrain, 38.1, 1e-9);  // 150 clicks of 0.01 in
    EXPECT_EQ(r->stormstartyear, 2099);
    EXPECT_NEAR(r->raincounter, 313.436, 1e-9);
    EXPECT_NEAR(r->dailyet, 3.048, 1e-9);  // 0.120 in
    EXPECT_EQ(r->soilmoisture[1], 21);
    EXPECT_EQ(r->soilmoisture[4], 24);
    EXPECT_EQ(r->leafwetness[1], 1);
    EXPECT_EQ(r->leafwetness[4], 4);
    EXPECT_EQ(r->transmitterbattery, 2);
    EXPECT_NEAR(r->consolebattery, 255 * 300.0 / 512 / 100, 1e-12);  // the high byte weighs 255
    EXPECT_EQ(r->forecasticon, 4);
    EXPECT_EQ(r->forecastrule, 123);
  }
}

TEST(LoopPacketRoundTrip, NegativeTemperaturesMissingSensorsAndASpoiltByte) {
  ConsoleReading reading = everyFieldSet();
  reading.outsideTemperature = -400;  // -40.0 F: a two's complement word
  reading.barometerTrend = 60;
  auto r = decoded(encodeLoopPacket(reading, true), true);
  ASSERT_TRUE(r);
  EXPECT_NEAR(r->outtemp, -40.0, 1e-9);
  EXPECT_EQ(r->barotrend, 60);

  LiveRecord before;
  before.uv = 3;
  before.solar = 400;
  before.extratemp[3] = 5;
  before.soilmoisture[4] = 9;
  before.stormstartyear = 2025;
  reading.uvIndex.reset();
  reading.solarRadiation.reset();
  reading.extraTemperatures[2].reset();
  reading.soilMoistures[3].reset();
  reading.stormStart.reset();
  r = decoded(encodeLoopPacket(reading, false), false, before);
  ASSERT_TRUE(r);
  EXPECT_EQ(std::tuple(r->uv, r->solar, r->extratemp[3], r->soilmoisture[4], r->stormstartyear),
            std::tuple(3.0, 400.0, 5.0, 9, 2025));
  EXPECT_NEAR(r->extratemp[2], (151 - 122) / 1.8, 1e-9);  // the neighbours keep their values
  EXPECT_EQ(r->leafwetness[1], 1);

  LoopPacket spoilt = encodeLoopPacket(reading, false);
  FaultDice(5).corrupt(spoilt, 4, 96);
  EXPECT_FALSE(decoded(spoilt, false));
}

TEST(HilowsRoundTrip, TheProgramTakesTheDailyHighWind) {
  ConsoleHighsLows h;
  h.dayHighWindSpeed = 23;  // 20 knots
  h.dayHighWindTime = 1435;
  ReceiveState state;
  state.buffer[0] = 0x06;  // the acknowledge byte
  const HilowsBlock block = encodeHilows(h);
  std::copy(block.begin(), block.end(), state.buffer.begin() + 1);
  EXPECT_EQ(consoleDailyMaxGust(state, {}, 15, 15), 20.0);
}

}  // namespace
}  // namespace nimbrel::sim
