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
// at the wrong offset shows.
ConsoleReading everyFieldSet() {
  return {.barometerTrend = -60, .barometer = 30012, .insideTemperature = 712, .insideHumidity = 41,
          .outsideTemperature = 655, .windSpeed = 17, .windDirection = 271,
          .extraTemperatures = {150, 151, 152, 153, 154, 155, 156}, .soilTemperatures = {160, 161, 162, 163},
          .outsideHumidity = 77, .extraHumidities = {81, 82, 83, 84, 85, 86, 87}, .rainRate = 0x0203,
          .uvIndex = 45, .solarRadiation = 812, .stormRain = 0x0304, .stormStart = CalendarDate{2099, 12, 31},
          .yearRain = 0x0607, .dayEt = 0x0708, .soilMoistures = {21, 22, 23, 24}, .leafWetnesses = {1, 2, 3, 4},
          .transmitterBatteryStatus = 0x02, .consoleBattery = 802, .forecastIcons = kIconRain | kIconCloud,
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

double celsius(double tenthsF) { return (tenthsF / 10.0 - 32) / 1.8; }

TEST(LoopPacketRoundTrip, EveryFieldComesBackWithEitherHeader) {
  for (const bool revb : {false, true}) {
    SCOPED_TRACE(revb ? "revb" : "LOOP");
    const auto r = decoded(encodeLoopPacket(everyFieldSet(), revb), revb);
    ASSERT_TRUE(r);
    EXPECT_EQ(r->barotrend, revb ? -60 : 0);
    EXPECT_NEAR(r->barometer, 30012 * 0.033864, 1e-9);
    EXPECT_NEAR(r->intemp, celsius(712), 1e-9);
    EXPECT_EQ(r->inhum, 41);
    EXPECT_NEAR(r->outtemp, celsius(655), 1e-9);
    EXPECT_NEAR(r->windspeed, 17 / 1.15, 1e-9);
    EXPECT_EQ(r->winddir, 271);
    EXPECT_NEAR(r->extratemp[1], celsius(600), 1e-9);
    EXPECT_NEAR(r->extratemp[7], celsius(660), 1e-9);
    EXPECT_NEAR(r->soiltemp, 38 / 1.8, 1e-9);
    EXPECT_NEAR(r->soiltemps[4], 41 / 1.8, 1e-9);
    EXPECT_EQ(r->outhum, 77);
    EXPECT_EQ(r->extrahum[1], 81);
    EXPECT_EQ(r->extrahum[7], 87);
    EXPECT_NEAR(r->rainrate, 5.15 / 0.03937, 1e-9);
    EXPECT_DOUBLE_EQ(r->uv, 4.5);
    EXPECT_DOUBLE_EQ(r->solar, 812);
    EXPECT_NEAR(r->stormrain, 0x0304 * 0.254, 1e-9);
    EXPECT_EQ(r->stormstartyear, 2099);
    EXPECT_NEAR(r->raincounter, 0x0607 * 0.254, 1e-9);
    EXPECT_NEAR(r->dailyet, 0x0708 * 0.0254, 1e-9);
    EXPECT_EQ(r->soilmoisture[1], 21);
    EXPECT_EQ(r->soilmoisture[4], 24);
    EXPECT_EQ(r->leafwetness[1], 1);
    EXPECT_EQ(r->leafwetness[4], 4);
    EXPECT_EQ(r->transmitterbattery, 2);
    EXPECT_NEAR(r->consolebattery, (3 * 255 + 0x22) * 300.0 / 512 / 100, 1e-12);
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
  EXPECT_NEAR(r->extratemp[2], celsius(610), 1e-9);  // the neighbours keep their values
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
