// The console's "no sensor" marks and words out of their range are no
// reading: after decoding, the live record holds what it held before.

#include <gtest/gtest.h>

#include <algorithm>

#include "stations/loop_bytes.h"
#include "stations/vantage_loop.h"

namespace nimbrel {
namespace {

using testsupport::LoopBytes;

void decode(const LoopBytes& packet, LiveRecord& record) {
  ReceiveState state;
  const auto bytes = packet.packet();
  std::copy(bytes.begin() + 3, bytes.end(), state.buffer.begin());
  EXPECT_TRUE(vantagein(state, record, VantageOptions{}));
}

struct Case {
  const char* what;
  int offset;
  bool word;
  std::uint16_t raw;
  bool taken;  // as a reading of `raw` itself; otherwise the field keeps its value
  double (*field)(const LiveRecord&);
};

double outtemp(const LiveRecord& r) { return r.outtemp; }
double intemp(const LiveRecord& r) { return r.intemp; }
double inhum(const LiveRecord& r) { return r.inhum; }
double winddir(const LiveRecord& r) { return r.winddir; }

TEST(VantageNoSensor, MarksAndOutOfRangeWordsKeepTheFieldAsItWas) {
  const Case cases[] = {
      {"outside temperature 0x7FFF", 12, true, 0x7FFF, false, outtemp},
      {"inside temperature 0x7FFF", 9, true, 0x7FFF, false, intemp},
      {"inside humidity 0xFF", 11, false, 0xFF, false, inhum},
      {"wind direction 0: no wind data", 16, true, 0, false, winddir},
      {"wind direction 361", 16, true, 361, false, winddir},
      {"wind direction 0x7FFF", 16, true, 0x7FFF, false, winddir},
      {"wind direction 360 is north", 16, true, 360, true, winddir},
      {"wind direction 1", 16, true, 1, true, winddir},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    LiveRecord record;
    decode(LoopBytes().word(12, 500).word(9, 700).byte(11, 45).word(16, 225), record);
    const double was = c.field(record);
    LoopBytes packet;
    if (c.word)
      packet.word(c.offset, c.raw);
    else
      packet.byte(c.offset, static_cast<std::uint8_t>(c.raw));
    decode(packet, record);
    EXPECT_EQ(c.field(record), c.taken ? c.raw : was);
  }
}

}  // namespace
}  // namespace nimbrel
