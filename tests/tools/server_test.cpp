#include "tools/vantage_sim/server.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>

namespace nimbrel::sim {
namespace {

using namespace std::chrono_literals;

// The cable cuts of the real-time demo: at each cut the client is dropped and
// connecting is refused until the cut ends. Program time is a ManualClock, so
// a cut starts and ends only when the test moves it.
TEST(ConsoleServer, ACutDropsTheClientAndRefusesConnectionsUntilItEnds) {
  asio::io_context io;
  ManualClock clock(fromLocalTime(2026, 7, 4, 12, 0, 0));
  Console console(clock);
  TcpConsoleServer server(io, clock, console, 0, {.clockSpeed = 1000, .dropEvery = 60s, .dropFor = 10s});
  const asio::ip::tcp::endpoint address(asio::ip::address_v4::loopback(), server.port());
  // Runs the server's ticks until `done` holds; gives up after twenty seconds or so rather than hang.
  const auto runUntil = [&](const std::function<bool()>& done) {
    for (int i = 0; i < 20000 && !done(); ++i) {
      io.restart();
      io.run_for(1ms);
    }
    return done();
  };
  asio::ip::tcp::socket client(io);
  client.connect(address);
  ASSERT_TRUE(runUntil([&] { return server.hasClient(); }));
  clock.advance(59s);
  io.run_for(20ms);
  EXPECT_TRUE(server.hasClient());

  clock.advance(1s);
  ASSERT_TRUE(runUntil([&] { return !server.hasClient(); }));
  std::array<std::uint8_t, 1> byte{};
  asio::error_code error;
  client.read_some(asio::buffer(byte), error);
  EXPECT_TRUE(error == asio::error::eof || error == asio::error::connection_reset) << error.message();
  asio::ip::tcp::socket duringTheCut(io);
  duringTheCut.connect(address, error);
  EXPECT_EQ(error, asio::error::connection_refused);

  clock.advance(10s);
  asio::ip::tcp::socket afterTheCut(io);
  ASSERT_TRUE(runUntil([&] {
    afterTheCut.close();
    afterTheCut.connect(address, error);
    return !error;
  }));
  EXPECT_TRUE(runUntil([&] { return server.hasClient(); }));
}

}  // namespace
}  // namespace nimbrel::sim
