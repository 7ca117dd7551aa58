#include "tools/vantage_sim/server.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "stations/crc_ccitt.h"
#include "tools/vantage_sim/loop_packet.h"

namespace nimbrel::sim {
namespace {

using namespace std::chrono_literals;
using asio::awaitable;
using asio::use_awaitable;

constexpr double kSpeed = 20.0;  // a 2-second packet interval is 100 ms of real time

// What a program does first: wake the console, ask for two LOOP packets.
template <class Stream>
awaitable<std::vector<std::uint8_t>> wakeAndLoopTwice(Stream& stream) {
  std::array<std::uint8_t, 2> wakeAnswer{};
  co_await asio::async_write(stream, asio::buffer(std::string_view("\n")), use_awaitable);
  co_await asio::async_read(stream, asio::buffer(wakeAnswer), use_awaitable);
  if (wakeAnswer != std::array<std::uint8_t, 2>{'\n', '\r'}) throw std::runtime_error("no wake-up answer");
  std::vector<std::uint8_t> answer(1 + 2 * kLoopPacketSize);
  co_await asio::async_write(stream, asio::buffer(std::string_view("LOOP 2\n")), use_awaitable);
  co_await asio::async_read(stream, asio::buffer(answer), use_awaitable);
  co_return answer;
}

// Runs `client` on `io` until it finishes (at most half a minute); returns what it gave.
template <class Client>
std::vector<std::uint8_t> runClient(asio::io_context& io, Client client) {
  std::vector<std::uint8_t> result;
  std::exception_ptr failure;
  bool finished = false;
  asio::co_spawn(io, std::move(client), [&](std::exception_ptr error, std::vector<std::uint8_t> answer) {
    failure = error;
    result = std::move(answer);
    finished = true;
    io.stop();
  });
  io.run_for(30s);
  EXPECT_TRUE(finished) << "the client did not finish in time";
  if (failure) std::rethrow_exception(failure);
  return result;
}

void expectAckAndTwoGoodPackets(const std::vector<std::uint8_t>& answer, const Console& console) {
  ASSERT_EQ(answer.size(), 1 + 2 * kLoopPacketSize);
  EXPECT_EQ(answer[0], kAck);
  for (std::size_t packet = 0; packet < 2; ++packet) {
    const auto bytes = std::span(answer).subspan(1 + packet * kLoopPacketSize, kLoopPacketSize);
    EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + 4), "LOOP");
    EXPECT_EQ(crcCcitt(bytes), 0);
    ASSERT_GT(console.sent().size(), packet);
    EXPECT_EQ(bytes[7] | (bytes[8] << 8), console.sent()[packet].reading.barometer);
  }
}

TEST(ConsoleServerEndToEnd, ServesLoopPacketsOverALoopbackSocket) {
  asio::io_context io;
  ScaledClock clock(fromLocalTime(2026, 7, 4, 12, 0, 0), kSpeed);
  Console console(clock);
  TcpConsoleServer server(io, clock, console, 0, {.clockSpeed = kSpeed});
  ASSERT_NE(server.port(), 0);

  asio::ip::tcp::socket socket(io);
  socket.connect({asio::ip::address_v4::loopback(), server.port()});
  const auto answer = runClient(io, wakeAndLoopTwice(socket));
  expectAckAndTwoGoodPackets(answer, console);
}

TEST(ConsoleServerEndToEnd, ServesLoopPacketsOverAPseudoTerminal) {
  asio::io_context io;
  ScaledClock clock(fromLocalTime(2026, 7, 4, 12, 0, 0), kSpeed);
  Console console(clock);
  PtyConsoleServer server(io, clock, console, {.clockSpeed = kSpeed});
  ASSERT_EQ(server.devicePath().rfind("/dev/", 0), 0u);

  asio::serial_port port(io, server.devicePath());
  port.set_option(asio::serial_port::baud_rate(19200));
  const auto answer = runClient(io, wakeAndLoopTwice(port));
  expectAckAndTwoGoodPackets(answer, console);
}

// The client is cut off when the drop span begins, cannot connect during it,
// and gets in again afterwards.
awaitable<std::vector<std::uint8_t>> outlastADrop(asio::io_context& io, std::uint16_t port) {
  const asio::ip::tcp::endpoint server(asio::ip::address_v4::loopback(), port);
  asio::ip::tcp::socket socket(io);
  co_await socket.async_connect(server, use_awaitable);
  std::array<std::uint8_t, 16> buffer{};
  asio::error_code readError;
  co_await socket.async_read_some(asio::buffer(buffer), asio::redirect_error(use_awaitable, readError));
  if (readError != asio::error::eof && readError != asio::error::connection_reset) throw std::runtime_error("no drop");
  std::uint8_t refusals = 0;
  asio::steady_timer pause(io);
  while (true) {
    asio::ip::tcp::socket retry(io);
    asio::error_code connectError;
    co_await retry.async_connect(server, asio::redirect_error(use_awaitable, connectError));
    if (!connectError) break;
    if (connectError != asio::error::connection_refused) throw asio::system_error(connectError);
    ++refusals;
    pause.expires_after(2ms);
    co_await pause.async_wait(use_awaitable);
  }
  co_return std::vector<std::uint8_t>{refusals};
}

TEST(ConsoleServerEndToEnd, DropsTheClientRefusesForASpanThenAcceptsAgain) {
  asio::io_context io;
  const double speed = 100.0;  // the drop comes after 0.2 s of real time and lasts 0.1 s
  ScaledClock clock(fromLocalTime(2026, 7, 4, 12, 0, 0), speed);
  Console console(clock);
  TcpConsoleServer server(io, clock, console, 0, {.clockSpeed = speed, .dropEvery = 20s, .dropFor = 10s});
  const auto refusals = runClient(io, outlastADrop(io, server.port()));
  ASSERT_EQ(refusals.size(), 1u);
  EXPECT_GT(refusals[0], 0);
}

}  // namespace
}  // namespace nimbrel::sim
