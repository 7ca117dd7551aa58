#include "tools/vantage_sim/console.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "stations/crc_ccitt.h"
#include "support/time_zone.h"
#include "tools/vantage_sim/loop_packet.h"

namespace nimbrel::sim {
namespace {

using namespace std::chrono_literals;
using Bytes = std::vector<std::uint8_t>;

Bytes bytesOf(std::string_view text) { return Bytes(text.begin(), text.end()); }

class ConsoleTest : public ::testing::Test {
 protected:
  explicit ConsoleTest(ConsoleOptions options = {})
      : clock_(fromLocalTime(2026, 7, 4, 12, 0, 0)), console_(clock_, options) {}

  void send(std::string_view text) { console_.receive(bytesOf(text)); }
  // Everything due by now, joined.
  Bytes collect() {
    Bytes all;
    for (const auto& write : console_.poll()) all.insert(all.end(), write.begin(), write.end());
    return all;
  }
  Bytes sendAndCollect(std::string_view text) {
    send(text);
    return collect();
  }
  void wake() { ASSERT_EQ(sendAndCollect("\n"), bytesOf("\n\r")); }
  // Steps the clock in small steps and gathers every write on the way.
  std::vector<Bytes> runFor(std::chrono::milliseconds span, std::chrono::milliseconds step = 100ms) {
    std::vector<Bytes> writes;
    for (auto passed = 0ms; passed < span; passed += step) {
      clock_.advance(step);
      for (auto& write : console_.poll()) writes.push_back(std::move(write));
    }
    return writes;
  }

  testsupport::ScopedTimeZone zone_;
  ManualClock clock_;
  Console console_;
};

bool isGoodLoopPacket(const Bytes& b) {
  return b.size() == kLoopPacketSize && b[0] == 'L' && b[1] == 'O' && b[2] == 'O' && crcCcitt(b) == 0;
}

TEST_F(ConsoleTest, AnAsleepConsoleDropsACommandUntilItIsWoken) {
  EXPECT_TRUE(console_.asleep());
  EXPECT_EQ(sendAndCollect("LOOP 5\n"), bytesOf("\n\r"));  // the LF woke it; the command is lost
  EXPECT_TRUE(runFor(10s).empty());
  wake();
  const Bytes answer = sendAndCollect("LOOP 5\n");
  ASSERT_EQ(answer.size(), 1 + kLoopPacketSize);
  EXPECT_EQ(answer[0], kAck);
}

TEST_F(ConsoleTest, DropsEverythingBeforeTheWakingLineFeedEvenAcrossReceives) {
  EXPECT_TRUE(sendAndCollect("LOO").empty());
  EXPECT_TRUE(sendAndCollect("P 2").empty());
  EXPECT_EQ(sendAndCollect("\nTEST\n"), bytesOf("\n\r\n\rTEST\n\r"));  // bytes after the LF count
}

TEST_F(ConsoleTest, FallsAsleepTwoMinutesAfterTheLastReceivedCharacter) {
  wake();
  clock_.advance(119s);
  EXPECT_EQ(sendAndCollect("TEST\n"), bytesOf("\n\rTEST\n\r"));
  clock_.advance(120s);
  EXPECT_TRUE(console_.asleep());
  EXPECT_EQ(sendAndCollect("TEST\n"), bytesOf("\n\r"));
  EXPECT_FALSE(console_.asleep());
}

TEST_F(ConsoleTest, LoopSendsExactlyTheAskedPacketsTwoSecondsApart) {
  wake();
  const SystemTime asked = clock_.now();
  EXPECT_EQ(sendAndCollect("LOOP 3\n").at(0), kAck);  // and the first packet at once
  std::vector<SystemTime> times{asked};
  for (int tick = 0; tick < 100; ++tick) {  // 10 s in 100 ms steps
    clock_.advance(100ms);
    for (const auto& write : console_.poll()) {
      EXPECT_TRUE(isGoodLoopPacket(write));
      times.push_back(clock_.now());
    }
  }
  ASSERT_EQ(times.size(), 3u);
  EXPECT_EQ(times[1] - times[0], 2s);
  EXPECT_EQ(times[2] - times[1], 2s);
  ASSERT_EQ(console_.sent().size(), 3u);
  EXPECT_EQ(console_.sent().back().sequence, 3u);
  EXPECT_EQ(console_.sent().back().time, asked + 4s);
  EXPECT_FALSE(console_.nextDue());
}

TEST_F(ConsoleTest, ALineFeedOrANewCommandStopsTheStream) {
  wake();
  sendAndCollect("LOOP 100\n");
  runFor(4s);  // two more packets
  EXPECT_EQ(sendAndCollect("\n"), bytesOf("\n\r"));
  EXPECT_TRUE(runFor(10s).empty());
  EXPECT_EQ(console_.sent().size(), 3u);

  sendAndCollect("LOOP 100\n");
  EXPECT_EQ(sendAndCollect("TEST\n"), bytesOf("\n\rTEST\n\r"));
  EXPECT_TRUE(runFor(10s).empty());
  EXPECT_EQ(console_.sent().size(), 4u);
}

TEST_F(ConsoleTest, AnswersTheSmallCommands) {
  wake();
  EXPECT_EQ(sendAndCollect("WRD\x12\x4D\n"), (Bytes{kAck, 16}));
  EXPECT_EQ(sendAndCollect("TEST\r\n"), bytesOf("\n\rTEST\n\r"));  // a CR before the LF is tolerated
  EXPECT_EQ(sendAndCollect("NONSENSE\n"), bytesOf("\n\r"));
  EXPECT_EQ(sendAndCollect("LOOP\n"), bytesOf("\n\r"));
  EXPECT_EQ(sendAndCollect("LOOP x\n"), bytesOf("\n\r"));
  EXPECT_EQ(sendAndCollect("LOOP 0\n"), bytesOf("\n\r"));
}

TEST_F(ConsoleTest, HilowsIsAnAckAndAGoodBlockHoldingTheDaysHighestWind) {
  wake();
  sendAndCollect("LOOP 60\n");
  runFor(110s, 500ms);  // under the two minutes that would put it to sleep
  const Bytes answer = sendAndCollect("HILOWS\n");
  ASSERT_EQ(answer.size(), 1 + kHilowsSize);
  EXPECT_EQ(answer[0], kAck);
  EXPECT_EQ(crcCcitt(std::span(answer).subspan(1)), 0);
  std::uint8_t highest = 0;
  for (const auto& packet : console_.sent()) highest = std::max(highest, packet.reading.windSpeed);
  EXPECT_GE(answer[1 + 16], highest);
  const int time = answer[1 + 17] | (answer[1 + 18] << 8);
  EXPECT_GE(time, 1200);  // some time since the start at noon today
  EXPECT_LE(time, 1202);
}

TEST_F(ConsoleTest, KeepsTheTimeItWasSetToAndRefusesABadCrc) {
  wake();
  EXPECT_EQ(sendAndCollect("SETTIME\n"), Bytes{kAck});
  LocalTime set;
  set.year = 2031, set.month = 5, set.day = 6, set.hour = 7, set.minute = 8, set.second = 9;
  const ConsoleTimeBytes data = encodeConsoleTime(set);
  console_.receive(std::span(data).first(3));  // data may come in pieces
  clock_.advance(50ms);
  console_.receive(std::span(data).subspan(3));
  EXPECT_EQ(collect(), Bytes{kAck});

  clock_.advance(95s);
  const Bytes answer = sendAndCollect("GETTIME\n");
  ASSERT_EQ(answer.size(), 9u);
  EXPECT_EQ(answer[0], kAck);
  EXPECT_EQ(crcCcitt(std::span(answer).subspan(1)), 0);
  EXPECT_EQ((Bytes{answer.begin() + 1, answer.begin() + 7}), (Bytes{44, 9, 7, 6, 5, 131}));

  EXPECT_EQ(sendAndCollect("SETTIME\n"), Bytes{kAck});
  ConsoleTimeBytes damaged = encodeConsoleTime(set);
  damaged[7] ^= 0xFF;
  console_.receive(damaged);
  EXPECT_EQ(collect(), Bytes{kNak});
  EXPECT_EQ(toLocalTime(console_.consoleTime()).minute, 9);  // unchanged by the refused setting
}

TEST_F(ConsoleTest, RecordsWhatEachPacketCarried) {
  std::vector<std::uint64_t> announced;
  console_.onSent([&](const SentPacket& p) { announced.push_back(p.sequence); });
  wake();
  Bytes first = sendAndCollect("LOOP 2\n");
  first.erase(first.begin());  // the ACK
  const SentPacket& sent = console_.sent().front();
  EXPECT_EQ(sent.sequence, 1u);
  EXPECT_FALSE(sent.corrupted);
  EXPECT_EQ(first[7] | (first[8] << 8), sent.reading.barometer);
  EXPECT_EQ(first[14], sent.reading.windSpeed);
  runFor(3s);
  EXPECT_EQ(announced, (std::vector<std::uint64_t>{1, 2}));
}

ConsoleOptions withFaults(FaultSettings faults) {
  ConsoleOptions options;
  options.seed = 42;
  options.faults = faults;
  return options;
}

class BadCrcFault : public ConsoleTest {
 protected:
  BadCrcFault() : ConsoleTest(withFaults({.badCrcRate = 0.2})) {}
};

TEST_F(BadCrcFault, SpoilsAboutTheConfiguredShareOfPackets) {
  wake();
  sendAndCollect("LOOP 1000\n");
  const auto writes = runFor(2000s, 1s);
  int failed = 0, total = 1;  // the first packet came with the ACK
  for (const auto& write : writes) {
    ASSERT_EQ(write.size(), kLoopPacketSize);
    EXPECT_EQ(std::string(write.begin(), write.begin() + 3), "LOO");  // framing still finds it
    ++total;
    failed += crcCcitt(write) != 0;
  }
  EXPECT_EQ(total, 1000);
  EXPECT_GT(failed, 150);
  EXPECT_LT(failed, 250);
  const auto flagged = std::count_if(console_.sent().begin(), console_.sent().end(),
                                     [](const SentPacket& p) { return p.corrupted; });
  EXPECT_GE(flagged, failed);  // the first packet is not among `writes`
  EXPECT_LE(flagged, failed + 1);
}

class GarbageAndSplitFaults : public ConsoleTest {
 protected:
  GarbageAndSplitFaults() : ConsoleTest(withFaults({.splitRate = 0.3, .garbageRate = 0.5})) {}
};

TEST_F(GarbageAndSplitFaults, GarbageNeverSpellsTheHeaderAndSplitPacketsJoinUp) {
  wake();
  const SystemTime asked = clock_.now();
  Bytes first = sendAndCollect("LOOP 400\n");
  first.erase(first.begin());  // the ACK
  // Packets fall due on the even seconds, the second half of a split one
  // 200 ms later and garbage on the odd seconds: the time tells them apart.
  int wholePackets = first.size() == kLoopPacketSize ? 1 : 0, splitPackets = 0, garbageWrites = 0;
  Bytes firstHalf = wholePackets ? Bytes{} : first;
  for (int step = 0; step < 810 * 20; ++step) {
    clock_.advance(50ms);
    const auto phase = (clock_.now() - asked) % 2s;
    for (const auto& write : console_.poll()) {
      if (phase == 0s && write.size() == kLoopPacketSize) {
        EXPECT_TRUE(isGoodLoopPacket(write));
        ++wholePackets;
      } else if (phase == 0s) {
        firstHalf = write;
      } else if (phase == 200ms) {
        ASSERT_FALSE(firstHalf.empty());
        firstHalf.insert(firstHalf.end(), write.begin(), write.end());
        EXPECT_TRUE(isGoodLoopPacket(firstHalf));
        firstHalf.clear();
        ++splitPackets;
      } else {
        ASSERT_EQ(phase, 1s);
        ++garbageWrites;
        EXPECT_NE(write.front(), 'O');
        EXPECT_EQ(std::string(write.begin(), write.end()).find("LOO"), std::string::npos);
      }
    }
  }
  EXPECT_EQ(wholePackets + splitPackets, 400);
  EXPECT_GT(splitPackets, 80);
  EXPECT_LT(splitPackets, 160);
  EXPECT_GT(garbageWrites, 150);
  EXPECT_LT(garbageWrites, 250);
}

class SilenceFault : public ConsoleTest {
 protected:
  SilenceFault() : ConsoleTest(withFaults({.silenceEvery = 60s, .silenceFor = 10s})) {}
};

TEST_F(SilenceFault, SaysAndHearsNothingDuringTheSpanAndLosesTheStream) {
  wake();
  sendAndCollect("LOOP 100\n");
  EXPECT_EQ(runFor(59s).size(), 29u);  // packets at 2 s ... 58 s
  clock_.advance(2s);
  EXPECT_TRUE(console_.silent());
  EXPECT_TRUE(sendAndCollect("TEST\n").empty());
  EXPECT_TRUE(runFor(20s).empty());  // the stream died with the silence
  EXPECT_FALSE(console_.silent());
  EXPECT_EQ(sendAndCollect("TEST\n"), bytesOf("\n\rTEST\n\r"));
}

}  // namespace
}  // namespace nimbrel::sim
