// The simulator's console, through a real pseudo-terminal or loopback TCP
// socket, into the program's links, framing and decoder: every packet after
// the first two must arrive decoded with exactly the values encoded.

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <optional>

#include "core/clock.h"
#include "core/text_log.h"
#include "stations/serial_link.h"
#include "stations/tcp_link.h"
#include "stations/vantage_driver.h"
#include "support/temp_folder.h"
#include "tools/vantage_sim/console.h"
#include "tools/vantage_sim/server.h"

namespace nimbrel {
namespace {

using namespace std::chrono_literals;

// The strict test runs slower, so that a loaded machine (sanitizers, other
// jobs) still answers the console within a program second or two.
constexpr double kStrictSpeed = 25;
constexpr double kFaultSpeed = 100;

enum class Transport { Pty, Tcp };

struct Decoded {
  double barometer, outtemp, windspeed;
  int winddir, outhum;
};

// What the program must make of an encoded reading.
Decoded expectedFrom(const sim::ConsoleReading& r) {
  Decoded d{};
  d.barometer = r.barometer * (33.864 / 1000.0);
  double f = *r.outsideTemperature / 10.0;
  if (f > 200) f = f - 6528 - 25.6;  // never here: the word is signed in the reading
  d.outtemp = (f - 32) / 1.8;
  d.windspeed = r.windSpeed > 250 ? 0 : r.windSpeed / 1.15;
  d.winddir = r.windDirection;
  d.outhum = std::max<int>(*r.outsideHumidity, 3);
  return d;
}

class VantageEndToEnd : public ::testing::TestWithParam<std::tuple<Transport, bool>> {
 protected:
  // Runs until `enoughDecoded` packets were decoded, or, on a machine too
  // busy to get there, for at most a minute of real time: what is asserted
  // afterwards does not depend on how far the run got.
  void runUntilDecoded(std::size_t enoughDecoded, double speed) {
    const auto [transport, revb] = GetParam();
    ScaledClock clock(fromLocalTime(2026, 7, 1, 12, 0, 0), speed);
    TextLog log(dir / "log.txt", clock);
    sim::ConsoleOptions consoleOptions;
    consoleOptions.revb = revb;
    consoleOptions.seed = 7;
    consoleOptions.faults = faults;
    sim::Console console(clock, consoleOptions);
    console.onSent([&](const sim::SentPacket& p) { sent[p.sequence] = p.reading; });
    sim::ServerOptions serverOptions;
    serverOptions.clockSpeed = speed;

    std::unique_ptr<sim::TcpConsoleServer> tcpServer;
    std::unique_ptr<sim::PtyConsoleServer> ptyServer;
    std::unique_ptr<ByteLink> link;
    if (transport == Transport::Tcp) {
      tcpServer = std::make_unique<sim::TcpConsoleServer>(io, clock, console, 0, serverOptions);
      link = std::make_unique<TcpLink>(io, "127.0.0.1", tcpServer->port(), log, 20ms);
    } else {
      ptyServer = std::make_unique<sim::PtyConsoleServer>(io, clock, console, serverOptions);
      link = std::make_unique<SerialLink>(io, ptyServer->devicePath(), SerialLine{19200}, log, 20ms);
    }
    VantageOptions options;
    options.revb = revb;
    ReceiveState state;
    LiveRecord record;
    VantageDriver driver(state, record, options, link.get(), log,
                         transport == Transport::Tcp ? VantageTransport::Tcp : VantageTransport::Serial);
    driver.onReading = [&] {
      decoded.push_back({record.barometer, record.outtemp, record.windspeed, record.winddir, record.outhum});
    };
    link->start([&](std::span<const std::uint8_t> bytes) { driver.receive(bytes, clock.local()); });

    // The cycle polls the driver once a program second.
    asio::steady_timer poll(io);
    std::function<void()> schedule = [&] {
      poll.expires_after(clock.realDuration(1s));
      poll.async_wait([&](const asio::error_code& e) {
        if (e) return;
        driver.poll(clock.local());
        schedule();
      });
    };
    schedule();
    const auto giveUp = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (decoded.size() < enoughDecoded && std::chrono::steady_clock::now() < giveUp)
      io.run_one_for(std::chrono::milliseconds(100));
    link->close();
    rejected = driver.counters().packetsRejected;
  }

  // The sequence numbers of the sent packets that were decoded: each decoded
  // record is matched with the first later packet that carries its values.
  std::vector<std::uint64_t> decodedSequences() const {
    std::vector<std::uint64_t> found;
    for (const Decoded& d : decoded) {
      const std::uint64_t after = found.empty() ? 0 : found.back();
      for (auto it = sent.upper_bound(after); it != sent.end(); ++it) {
        const auto& [sequence, reading] = *it;
        const Decoded e = expectedFrom(reading);
        if (e.winddir == d.winddir && e.barometer == d.barometer && e.outtemp == d.outtemp &&
            e.windspeed == d.windspeed && e.outhum == d.outhum) {
          found.push_back(sequence);
          break;
        }
      }
    }
    return found;
  }

  testsupport::TempFolder dir;
  sim::FaultSettings faults;
  asio::io_context io;
  std::map<std::uint64_t, sim::ConsoleReading> sent;
  std::vector<Decoded> decoded;
  std::uint64_t rejected = 0;
};

TEST_P(VantageEndToEnd, EveryPacketAfterTheFirstTwoIsDecodedWithTheValuesSent) {
  runUntilDecoded(15, kStrictSpeed);
  ASSERT_GE(decoded.size(), 15u) << "the link delivered too little in a minute";
  EXPECT_EQ(rejected, 0u);
  const auto sequences = decodedSequences();
  ASSERT_EQ(sequences.size(), decoded.size()) << "a decoded record matches no packet sent";
  // From the third packet on, each one, in order, none left out and none
  // twice, up to the last one decoded.
  std::vector<std::uint64_t> fromThird;
  for (auto s : sequences)
    if (s >= 3) fromThird.push_back(s);
  ASSERT_FALSE(fromThird.empty());
  std::vector<std::uint64_t> expected;
  for (std::uint64_t s = 3; s <= fromThird.back(); ++s) expected.push_back(s);
  EXPECT_EQ(fromThird, expected);
}

// Bad CRCs, packets cut in two and garbage between packets: what is decoded
// is always exactly what was sent, and the stream recovers each time.
TEST_P(VantageEndToEnd, FaultsNeverLetAWrongValueThrough) {
  faults.badCrcRate = 0.15;
  faults.splitRate = 0.2;
  faults.garbageRate = 0.15;
  runUntilDecoded(40, kFaultSpeed);
  ASSERT_GE(decoded.size(), 40u) << "the stream did not recover after the faults";
  const auto sequences = decodedSequences();
  EXPECT_EQ(sequences.size(), decoded.size()) << "a decoded record matches no packet sent";
  EXPECT_GT(rejected, 0u);
}

INSTANTIATE_TEST_SUITE_P(TransportsAndHeaders, VantageEndToEnd,
                         ::testing::Combine(::testing::Values(Transport::Pty, Transport::Tcp),
                                            ::testing::Bool()));

}  // namespace
}  // namespace nimbrel
