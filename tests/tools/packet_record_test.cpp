#include "tools/vantage_sim/packet_record.h"

#include <gtest/gtest.h>

#include "support/time_zone.h"

namespace nimbrel::sim {
namespace {

TEST(PacketRecordLine, IsOneJsonLineWithNullsForMissingSensors) {
  testsupport::ScopedTimeZone zone;
  SentPacket packet;
  packet.sequence = 12;
  packet.time = fromLocalTime(2026, 7, 4, 13, 5, 8) + std::chrono::milliseconds(250);
  packet.corrupted = true;
  packet.rainTotalClicks = 345;
  packet.reading.barometerTrend = -20;
  packet.reading.barometer = 30012;
  packet.reading.outsideTemperature = -10;
  packet.reading.extraTemperatures[1] = 150;
  packet.reading.stormStart = CalendarDate{2026, 7, 3};

  const std::string line = packetRecordLine(packet);
  EXPECT_EQ(line.rfind(R"({"sequence":12,"time":"2026-07-04 13:05:08.250","corrupted":true,)"
                       R"("rain_total_clicks":345,"reading":{"barometer_trend":-20,)",
                       0),
            0u)
      << line;
  for (const char* part : {R"("barometer":30012,)", R"("outside_temperature":-10,)",
                           R"("extra_temperatures":[null,150,null,null,null,null,null],)",
                           R"("outside_humidity":null,)", R"("solar_radiation":null,)",
                           R"("storm_start":"2026-07-03",)", R"("sunset":0}})"})
    EXPECT_NE(line.find(part), std::string::npos) << part;
  EXPECT_EQ(line.back(), '\n');
  EXPECT_EQ(line.find('\n'), line.size() - 1);
}

}  // namespace
}  // namespace nimbrel::sim
