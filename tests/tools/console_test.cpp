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

// Steps the clock in small steps and gathers every write on the way.
std::vector<Bytes> runFor(ManualClock& clock, Console& console, std::chrono::milliseconds span,
                          std::chrono::milliseconds step = 100ms) {
  std::vector<Bytes> writes;
  for (auto passed = 0ms; passed < span; passed += step) {
    clock.advance(step);
    for (auto& write : console.poll()) writes.push_back(std::move(write));
  }
  return writes;
}

class ConsoleTest : public ::testing::Test {
 protected:
  ConsoleTest() : clock_(fromLocalTime(2026, 7, 4, 12, 0, 0)), console_(clock_) {}

  // Everything due by now, joined.
  Bytes collect() {
    Bytes all;
    for (const auto& write : console_.poll()) all.insert(all.end(), write.begin(), write.end());
    return all;
  }
  Bytes sendAndCollect(std::string_view text) {
    console_.receive(bytesOf(text));
    return collect();
  }
  void wake() { ASSERT_EQ(sendAndCollect("\n"), bytesOf("\n\r")); }
  std::vector<Bytes> runFor(std::chrono::milliseconds span, std::chrono::milliseconds step = 100ms) {
    return nimbrel::sim::runFor(clock_, console_, span, step);
  }

  testsupport::ScopedTimeZone zone_;
  ManualClock clock_;
  Console console_;
};

bool isGoodLoopPacket(const Bytes& b) {
  return b.size() == kLoopPacketSize && b[0] == 'L' && b[1] == 'O' && b[2] == 'O' && crcCcitt(b) == 0;
}

TEST_F(ConsoleTest, AnAsleepConsoleDropsEverythingUpToTheWakingLineFeedEvenAcrossReceives) {
  EXPECT_TRUE(console_.asleep());
  EXPECT_TRUE(sendAndCollect("LOO").empty());
  // The LF wakes it and the command is lost; what follows the LF counts.
  EXPECT_EQ(sendAndCollect("P 5\nTEST\n"), bytesOf("\n\r\n\rTEST\n\r"));
  EXPECT_TRUE(runFor(10s).empty());
  const Bytes answer = sendAndCollect("LOOP 5\n");
  ASSERT_EQ(answer.size(), 1 + kLoopPacketSize);
  EXPECT_EQ(answer[0], kAck);
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
  EXPECT_EQ(times, (std::vector<SystemTime>{asked, asked + 2s, asked + 4s}));
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

// Every write of a console with all its faults on, over ten program minutes.
std::vector<Bytes> faultyRun(std::uint64_t seed) {
  ManualClock clock(fromLocalTime(2026, 7, 4, 12, 0, 0));
  Console console(clock, {.seed = seed, .faults = {.badCrcRate = 0.2, .splitRate = 0.3, .garbageRate = 0.5}});
  console.receive(bytesOf("\nLOOP 300\n"));
  return runFor(clock, console, 600s);
}

TEST(ConsoleFaults, TheSameSeedMakesTheSameFaultsAtTheSameMoments) {
  testsupport::ScopedTimeZone zone;
  const std::vector<Bytes> writes = faultyRun(42);
  EXPECT_EQ(writes, faultyRun(42));
  EXPECT_NE(writes, faultyRun(43));
  const auto spoilt = std::count_if(writes.begin(), writes.end(), [](const Bytes& w) {
    return w.size() == kLoopPacketSize && crcCcitt(w) != 0;
  });
  const auto piecesAndGarbage = std::count_if(writes.begin(), writes.end(), [](const Bytes& w) {
    return w.size() != kLoopPacketSize;
  });
  EXPECT_GT(spoilt, 10);
  EXPECT_GT(piecesAndGarbage, 100);
}

}  // namespace
}  // namespace nimbrel::sim
