#include "stations/vantage_framing.h"

#include <gtest/gtest.h>

#include <vector>

#include "stations/loop_bytes.h"
#include "stations/vantage_loop.h"

namespace nimbrel {
namespace {

using testsupport::hilowsAnswer;
using testsupport::LoopBytes;
using Bytes = std::vector<std::uint8_t>;

// Feeds bytes through the real framing and decoder and records what the
// decoder saw: the wind direction of each good packet identifies it.
class FramingHarness {
 public:
  explicit FramingHarness(bool revb = false) {
    state.headerVariant = revb;
    options.revb = revb;
    handlers.onLoopFrame = [this] {
      if (vantagein(state, record, options))
        directions.push_back(record.winddir);
      else
        ++badCrc;
    };
    handlers.onGoodBlock = [this] { ++goodBlocks; };
  }
  void feedOneBytePerEvent(const Bytes& bytes) {
    for (std::uint8_t b : bytes) commportdriverReceiveData31(state, std::span(&b, 1), handlers);
  }
  void feedAsOneEvent(const Bytes& bytes) { commportdriverReceiveData31(state, bytes, handlers); }

  ReceiveState state;
  LiveRecord record;
  VantageOptions options;
  VantageFrameHandlers handlers;
  std::vector<int> directions;
  int badCrc = 0;
  int goodBlocks = 0;
};

Bytes packetWithDirection(int direction, bool revb = false, bool corrupt = false) {
  return LoopBytes(revb, 20).word(16, static_cast<std::uint16_t>(direction)).packet(corrupt);
}

Bytes stream(int first, int count, bool revb = false) {
  Bytes all{0x06};  // the console's acknowledge of "LOOP 55"
  for (int i = 0; i < count; ++i) {
    const auto p = packetWithDirection(first + i, revb);
    all.insert(all.end(), p.begin(), p.end());
  }
  return all;
}

TEST(VantageFraming, EveryPacketAfterTheFirstIsDecodedWhenTheNextHeaderArrives) {
  for (bool revb : {false, true}) {
    FramingHarness h(revb);
    h.feedOneBytePerEvent(stream(100, 10, revb));
    // The first packet only brings alignment; the last waits for a header.
    EXPECT_EQ(h.directions, (std::vector<int>{101, 102, 103, 104, 105, 106, 107, 108})) << "revb " << revb;
    EXPECT_EQ(h.badCrc, 0);
    EXPECT_EQ(h.record.barotrend, revb ? 20 : 0);
  }
}

TEST(VantageFraming, ADecodeEndsTheEventAndDropsTheRestOfIt) {
  FramingHarness h;
  h.feedOneBytePerEvent(stream(10, 3));  // aligned; packet 11 decoded
  ASSERT_EQ(h.directions, std::vector<int>{11});
  // One event with the end of packet 12 and the whole of packet 13: the
  // decode of 12 drops 13, whose header the sync then looks for again.
  Bytes chunk = packetWithDirection(13);
  h.feedAsOneEvent(chunk);
  EXPECT_EQ(h.directions, (std::vector<int>{11, 12}));
  EXPECT_EQ(h.state.writeIndex, 0);
  h.feedOneBytePerEvent(stream(14, 4));
  EXPECT_GE(h.directions.size(), 4u);
  EXPECT_EQ(h.directions.back(), 16);
}

TEST(VantageFraming, EveryEventIsASignOfLifeAndGarbageThenAHeaderResynchronises) {
  FramingHarness h;
  h.state.noDataTicks = 40;
  h.feedAsOneEvent(Bytes{1, 2, 3});
  EXPECT_EQ(h.state.noDataTicks, 0);
  EXPECT_TRUE(h.state.dataReceived);
  EXPECT_EQ(h.state.lastChunkLength, 3);
  Bytes garbage;
  for (int i = 0; i < 1000; ++i) garbage.push_back(static_cast<std::uint8_t>((i * 37 + 11) % 251));
  h.feedOneBytePerEvent(garbage);
  EXPECT_TRUE(h.directions.empty());
  EXPECT_LE(h.state.writeIndex, 300);
  h.feedOneBytePerEvent(stream(200, 6));
  ASSERT_FALSE(h.directions.empty());
  EXPECT_EQ(h.directions.back(), 204);
  EXPECT_EQ(h.badCrc, 0);
}

TEST(VantageFraming, ABadCrcPacketIsDroppedWholeAndTheNextOneStillCounts) {
  FramingHarness h;
  Bytes all = stream(1, 3);
  const auto bad = packetWithDirection(50, false, true);
  all.insert(all.end(), bad.begin(), bad.end());
  const auto more = stream(4, 3);
  all.insert(all.end(), more.begin() + 1, more.end());
  h.feedOneBytePerEvent(all);
  EXPECT_EQ(h.badCrc, 1);
  EXPECT_EQ(h.directions, (std::vector<int>{2, 3, 4, 5}));
  EXPECT_EQ(h.record.winddir, 5);
}

TEST(VantageFraming, HilowsBlockIsCheckedByItsCrc) {
  FramingHarness h;
  beginBlock(h.state);
  h.feedOneBytePerEvent(hilowsAnswer(30, 1415, true));
  EXPECT_EQ(h.goodBlocks, 0);
  EXPECT_FALSE(h.state.blockMode);
  EXPECT_EQ(h.state.writeIndex, 0);
  beginBlock(h.state);
  h.feedOneBytePerEvent(hilowsAnswer(30, 1415));
  EXPECT_EQ(h.goodBlocks, 1);
  EXPECT_EQ(h.state.buffer[17], 30);
}

}  // namespace
}  // namespace nimbrel
