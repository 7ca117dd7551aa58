#include "stations/vantage_driver.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "core/file_io.h"
#include "core/text_log.h"
#include "stations/byte_link.h"
#include "stations/loop_bytes.h"
#include "support/temp_folder.h"

namespace nimbrel {
namespace {

using testsupport::hilowsAnswer;
using testsupport::LoopBytes;

class RecordingLink final : public ByteLink {
 public:
  void start(ReceiveHandler) override {}
  void send(std::span<const std::uint8_t> bytes) override { sent.append(bytes.begin(), bytes.end()); }
  bool isOpen() const override { return true; }
  void reopen() override {}
  void close() override {}
  std::string describe() const override { return "test port"; }
  std::string take() { return std::exchange(sent, {}); }
  std::string sent;
};

class DriverHarness : public ::testing::Test {
 protected:
  DriverHarness()
      : log(dir / "stationlog.txt", clock),
        driver(state, record, {}, &link, log, VantageTransport::Serial, &deviceTime) {
    driver.onReading = [this] { ++readings; };
  }
  void answer(const std::string& text) {
    answer(std::vector<std::uint8_t>(text.begin(), text.end()));
  }
  void answer(const std::vector<std::uint8_t>& bytes) {
    for (std::uint8_t b : bytes) driver.receive(std::span(&b, 1), now);
  }
  // The next tick sends the wake-up call, and the console answers it.
  void wake() {
    driver.poll(now);
    ASSERT_EQ(link.take(), "\n");
    answer("\n\r");
  }
  // Wakes the console and gets past the HILOWS read that every start makes.
  void wakeAndSkipHilows() {
    wake();
    ASSERT_EQ(link.take(), "HILOWS\n");
    answer(hilowsAnswer(10, 900));
    wake();
  }
  std::string logText() const { return readWholeFile(log.path()).value_or(""); }

  // Ticks `seconds` program seconds, the console's time going with them.
  void tickFor(int seconds) {
    for (int i = 0; i < seconds; ++i) {
      clock.advance(std::chrono::seconds(1));
      consoleClock.advance(std::chrono::seconds(1));
      driver.poll(clock.local());
    }
  }

  testsupport::TempFolder dir;
  ManualClock clock{fromLocalTime(2026, 6, 1, 12, 0, 0)};
  ManualClock consoleClock{fromLocalTime(2026, 6, 1, 12, 0, 0)};
  ProgramDeviceClock deviceTime{consoleClock};
  LocalTime now = clock.local();
  TextLog log;
  ReceiveState state;
  LiveRecord record;
  RecordingLink link;
  VantageDriver driver;
  int readings = 0;
};

TEST_F(DriverHarness, WakesReadsTheHighsThenAsksForFiftyFivePackets) {
  wakeAndSkipHilows();
  EXPECT_EQ(link.take(), "LOOP 55\n");
  std::vector<std::uint8_t> stream{0x06};
  for (int i = 0; i < 55; ++i) {
    const auto p = LoopBytes().word(16, static_cast<std::uint16_t>(i)).packet();
    stream.insert(stream.end(), p.begin(), p.end());
  }
  answer(stream);
  EXPECT_EQ(driver.counters().packetsDecoded, 53u);
  EXPECT_EQ(readings, 53);
  EXPECT_EQ(record.windgust, record.windspeed);
  wake();  // the packets are used up: the next tick wakes the console and asks again
  EXPECT_EQ(link.take(), "LOOP 55\n");
}

TEST_F(DriverHarness, ASilentConsoleIsWokenAgainAndTheOutageLoggedOnce) {
  wakeAndSkipHilows();
  link.take();
  tickFor(5);
  EXPECT_EQ(link.take(), "");  // five silent seconds are not yet an outage
  tickFor(1);
  EXPECT_EQ(link.take(), "\n");
  // No answer at all: three tries two seconds apart, then a rest, then again.
  tickFor(40);
  const std::string sent = link.take();
  EXPECT_GE(std::count(sent.begin(), sent.end(), '\n'), 6);
  const std::string text = logText();
  EXPECT_EQ(text.find("does not answer the wake-up call"), text.rfind("does not answer the wake-up call"));
  EXPECT_NE(text.find("test port does not answer the wake-up call"), std::string::npos) << text;
  for (int i = 0; i < 20 && link.sent.empty(); ++i) tickFor(1);
  ASSERT_EQ(link.take(), "\n");
  answer("\n\r");
  EXPECT_EQ(link.take(), "LOOP 55\n");
  EXPECT_NE(logText().find("answers again"), std::string::npos);
}

// The console's waits are its own: with the program clock running 60 times
// faster than the console's, a console that takes a fifth of a second to
// answer still has its full two seconds.
TEST_F(DriverHarness, AFastProgramClockDoesNotShortenTheConsolesTimeToAnswer) {
  driver.poll(now);
  ASSERT_EQ(link.take(), "\n");
  for (int i = 0; i < 12; ++i) {  // 12 program seconds in 0.2 s of the console's time
    clock.advance(std::chrono::seconds(1));
    consoleClock.advance(std::chrono::milliseconds(1000 / 60));
    driver.poll(clock.local());
  }
  EXPECT_EQ(link.take(), "") << "the console was not given its time to answer";
  answer("\n\r");
  EXPECT_EQ(link.take(), "HILOWS\n");
  EXPECT_EQ(logText().find("does not answer"), std::string::npos);
}

TEST_F(DriverHarness, SetsAndReadsTheConsoleClock) {
  wakeAndSkipHilows();
  link.take();
  answer(std::vector<std::uint8_t>(5 * 99 + 1, 0));  // whatever the stream was
  LocalTime t = now;
  std::tie(t.hour, t.minute, t.second) = std::tuple{7, 5, 3};
  driver.checkvptimecount(t);
  for (int i = 0; i < 55 * 99; i += 99) answer(std::vector<std::uint8_t>(99, 0));
  wake();
  ASSERT_EQ(link.take(), "SETTIME\n");
  answer(std::vector<std::uint8_t>{0x06});
  const std::string data = link.take();
  ASSERT_EQ(data.size(), 8u);
  // Seconds, minutes, hours first; the year is counted from 1900.
  EXPECT_EQ((std::vector<int>{data[0], data[1], data[2], static_cast<unsigned char>(data[5])}),
            (std::vector<int>{3, 5, 7, 126}));
  EXPECT_EQ(crcCcitt({reinterpret_cast<const std::uint8_t*>(data.data()), 8}), 0);
  answer(std::vector<std::uint8_t>{0x06});

  driver.requestConsoleTime();
  wake();
  ASSERT_EQ(link.take(), "GETTIME\n");
  std::vector<std::uint8_t> reply{0x06, 59, 30, 23, 31, 12, 126};
  const std::uint16_t crc = crcCcitt(std::span(reply).subspan(1));
  reply.push_back(static_cast<std::uint8_t>(crc >> 8));
  reply.push_back(static_cast<std::uint8_t>(crc & 0xFF));
  answer(reply);
  ASSERT_TRUE(driver.consoleTime());
  EXPECT_EQ(formatLocalTime(*driver.consoleTime()), "2026-12-31 23:30:59");
  for (const char* sending : {"sending SETTIME  to VP console", "sending  time to VP console"})
    EXPECT_NE(logText().find(sending), std::string::npos) << sending;
}

TEST_F(DriverHarness, TheConsolesDailyHighGustGoesToTheStatistics) {
  double todaysMax = 10;
  driver.currentMaxGust = [&] { return todaysMax; };
  driver.onConsoleDailyGust = [&](double knots) { todaysMax = knots; };
  wake();
  ASSERT_EQ(link.take(), "HILOWS\n");
  answer(hilowsAnswer(23, 1100));
  EXPECT_EQ(todaysMax, 20);
}

}  // namespace
}  // namespace nimbrel
