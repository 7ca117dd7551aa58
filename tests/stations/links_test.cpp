#include <gtest/gtest.h>

#include <asio.hpp>
#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "core/clock.h"
#include "core/file_io.h"
#include "core/text_log.h"
#include "stations/serial_link.h"
#include "stations/tcp_link.h"
#include "support/pseudo_terminal.h"
#include "support/temp_folder.h"

namespace nimbrel {
namespace {

using namespace std::chrono_literals;
using asio::ip::tcp;

constexpr auto kQuickRetry = 20ms;

// Runs the io_context until `done` holds or the time limit passes; never hangs.
bool runUntil(asio::io_context& io, const std::function<bool()>& done, std::chrono::milliseconds limit = 20s) {
  const auto deadline = std::chrono::steady_clock::now() + limit;
  while (!done()) {
    if (std::chrono::steady_clock::now() >= deadline) return false;
    io.restart();
    io.run_for(2ms);
  }
  return true;
}

void runFor(asio::io_context& io, std::chrono::milliseconds span) {
  runUntil(io, [] { return false; }, span);
}

// The error log of one test, with the time stamps taken off its lines.
class LogFixture : public ::testing::Test {
 protected:
  std::vector<std::string> logLines() const {
    std::vector<std::string> lines;
    const std::string text = readWholeFile(log_.path()).value_or("");
    constexpr std::size_t kStampLength = 20;  // "YYYY-MM-DD HH:MM:SS "
    for (std::size_t start = 0, end; (end = text.find('\n', start)) != std::string::npos; start = end + 1)
      lines.push_back(text.substr(start + kStampLength, end - start - kStampLength));
    return lines;
  }

  testsupport::TempFolder folder_;
  ManualClock clock_{fromLocalTime(2024, 5, 1, 12, 0, 0)};
  TextLog log_{folder_ / "programerrorlog.txt", clock_};
  asio::io_context io_;
  std::vector<std::vector<std::uint8_t>> events_;

  ByteLink::ReceiveHandler recorder() {
    return [this](std::span<const std::uint8_t> bytes) { events_.emplace_back(bytes.begin(), bytes.end()); };
  }
  std::string received() const {
    std::string all;
    for (const auto& event : events_) all.append(event.begin(), event.end());
    return all;
  }
  bool allEventsHoldOneByte() const {
    return std::all_of(events_.begin(), events_.end(), [](const auto& event) { return event.size() == 1; });
  }
};

// A packet-sized run of bytes with every value in it, zeros included.
std::string stationBytes(std::size_t count) {
  std::string bytes;
  for (std::size_t i = 0; i < count; ++i) bytes.push_back(static_cast<char>(i * 7 % 256));
  return bytes;
}

// ---- TCP ----

class TcpLinkTest : public LogFixture {
 protected:
  tcp::acceptor acceptor_{io_, tcp::endpoint(asio::ip::address_v4::loopback(), 0)};
  std::uint16_t port_ = acceptor_.local_endpoint().port();

  // Accepts the link's next connection.
  tcp::socket accept() {
    tcp::socket peer(io_);
    bool accepted = false;
    acceptor_.async_accept(peer, [&](const asio::error_code& error) { accepted = !error; });
    EXPECT_TRUE(runUntil(io_, [&] { return accepted; }));
    return peer;
  }
};

TEST_F(TcpLinkTest, DeliversEachByteAsItsOwnEventInOrderAndSends) {
  TcpLink link(io_, "127.0.0.1", port_, log_, kQuickRetry);
  link.start(recorder());
  tcp::socket peer = accept();
  ASSERT_TRUE(runUntil(io_, [&] { return link.isOpen(); }));

  const std::string sent = stationBytes(99) + stationBytes(5000);  // more than one read buffer
  asio::write(peer, asio::buffer(sent));
  ASSERT_TRUE(runUntil(io_, [&] { return events_.size() >= sent.size(); }));
  EXPECT_TRUE(allEventsHoldOneByte());
  EXPECT_EQ(received(), sent);

  link.send(std::string_view("LOOP 1\n"));
  link.send(std::string_view("\n"));
  std::string command(8, '\0');
  bool read = false;
  asio::async_read(peer, asio::buffer(command), [&](const asio::error_code& error, std::size_t) { read = !error; });
  ASSERT_TRUE(runUntil(io_, [&] { return read; }));
  EXPECT_EQ(command, "LOOP 1\n\n");
  EXPECT_EQ(link.describe(), "127.0.0.1:" + std::to_string(port_));
  EXPECT_EQ(logLines(), std::vector<std::string>{"connected to " + link.describe()});
}

TEST_F(TcpLinkTest, ServerThatGoesAwayAndComesBackIsReconnectedWithOneReport) {
  TcpLink link(io_, "127.0.0.1", port_, log_, kQuickRetry);
  link.start(recorder());
  {
    tcp::socket peer = accept();
    asio::write(peer, asio::buffer(std::string("ab")));
    ASSERT_TRUE(runUntil(io_, [&] { return events_.size() == 2; }));
  }  // the server closes its end...
  acceptor_.close();  // ...and stops listening
  ASSERT_TRUE(runUntil(io_, [&] { return !link.isOpen(); }));
  runFor(io_, 10 * kQuickRetry);  // several refused attempts
  link.send(std::string_view("LOOP 1\n"));
  link.send(std::string_view("LOOP 1\n"));

  acceptor_ = tcp::acceptor(io_, tcp::endpoint(asio::ip::address_v4::loopback(), port_));
  tcp::socket peer = accept();
  ASSERT_TRUE(runUntil(io_, [&] { return link.isOpen(); }));
  asio::write(peer, asio::buffer(std::string("c")));
  ASSERT_TRUE(runUntil(io_, [&] { return events_.size() == 3; }));
  EXPECT_EQ(received(), "abc");

  const std::string where = link.describe();
  EXPECT_EQ(logLines(), (std::vector<std::string>{
                            "connected to " + where,
                            "connection to " + where + " lost: closed by the other end; retrying every 20 milliseconds",
                            "not connected to " + where + "; data for the station is dropped",
                            "connected to " + where,
                        }));
}

TEST_F(TcpLinkTest, HandlerThatClosesTheLinkGetsNoFurtherBytes) {
  TcpLink link(io_, "127.0.0.1", port_, log_, kQuickRetry);
  link.start([&](std::span<const std::uint8_t> bytes) {
    events_.emplace_back(bytes.begin(), bytes.end());
    if (events_.size() == 2) link.close();
  });
  tcp::socket peer = accept();
  ASSERT_TRUE(runUntil(io_, [&] { return link.isOpen(); }));
  asio::write(peer, asio::buffer(std::string("LOOP")));
  ASSERT_TRUE(runUntil(io_, [&] { return !link.isOpen(); }));
  runFor(io_, 5 * kQuickRetry);  // a closed link does not come back by itself
  EXPECT_EQ(received(), "LO");
  EXPECT_FALSE(link.isOpen());
}

TEST_F(TcpLinkTest, NobodyListeningIsReportedOnceWhileRetrying) {
  acceptor_.close();
  TcpLink link(io_, "127.0.0.1", port_, log_, kQuickRetry);
  link.start(recorder());
  runFor(io_, 10 * kQuickRetry);
  EXPECT_FALSE(link.isOpen());
  const auto lines = logLines();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].rfind("cannot connect to " + link.describe() +
                               R"( (section "Comport" keys "use tcpip vp ip" and "use tcpip vp port"): )",
                           0),
            0u)
      << lines[0];
}

TEST_F(TcpLinkTest, DestroyedLinkLeavesNoWorkBehind) {
  tcp::socket peer(io_);
  {
    TcpLink link(io_, "127.0.0.1", port_, log_, kQuickRetry);
    link.start(recorder());
    peer = accept();
    ASSERT_TRUE(runUntil(io_, [&] { return link.isOpen(); }));
  }  // a read is pending
  asio::write(peer, asio::buffer(std::string("LOO")));
  runFor(io_, 5 * kQuickRetry);
  EXPECT_TRUE(events_.empty());
}

// ---- serial ----

class SerialLinkTest : public LogFixture {
 protected:
  testsupport::PseudoTerminal terminal_;
};

TEST_F(SerialLinkTest, SpeedsOutsideTheStandardListAndEvenParityTwoStopBitsOpen) {
  SerialLink vantage(io_, terminal_.slavePath(), SerialLine{14400, Parity::none, 1}, log_, kQuickRetry);
  vantage.start(recorder());
  EXPECT_TRUE(vantage.isOpen()) << (logLines().empty() ? "" : logLines().back());
  vantage.close();

  SerialLink ws2000(io_, terminal_.slavePath(), SerialLine{9600, Parity::even, 2}, log_, kQuickRetry);
  ws2000.start(recorder());
  EXPECT_TRUE(ws2000.isOpen()) << (logLines().empty() ? "" : logLines().back());
}

TEST_F(SerialLinkTest, MissingDeviceIsReportedOnceAndOpenedWhenItAppears) {
  const std::filesystem::path device = folder_ / "ttyStation";
  SerialLink link(io_, device.string(), SerialLine{}, log_, kQuickRetry);
  link.start(recorder());
  runFor(io_, 10 * kQuickRetry);
  EXPECT_FALSE(link.isOpen());
  EXPECT_EQ(logLines(), std::vector<std::string>{
                            "cannot open serial port " + device.string() +
                            R"( (section "Comport" key "number" or "device"): No such file or directory; )"
                            "retrying every 20 milliseconds"});

  std::filesystem::create_symlink(terminal_.slavePath(), device);  // the adapter is plugged in
  ASSERT_TRUE(runUntil(io_, [&] { return link.isOpen(); }));
  ASSERT_TRUE(terminal_.write("LOO"));
  ASSERT_TRUE(runUntil(io_, [&] { return events_.size() == 3; }));
  EXPECT_EQ(received(), "LOO");
  const auto lines = logLines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[1], "serial port " + device.string() + " opened");
}

TEST_F(SerialLinkTest, UnpluggedDeviceIsReportedOnceAndRetried) {
  SerialLink link(io_, terminal_.slavePath(), SerialLine{}, log_, kQuickRetry);
  link.start(recorder());
  ASSERT_TRUE(link.isOpen());
  terminal_.closeMaster();
  ASSERT_TRUE(runUntil(io_, [&] { return !link.isOpen(); }));
  runFor(io_, 10 * kQuickRetry);  // the device stays away: retries stay quiet
  EXPECT_FALSE(link.isOpen());
  const auto lines = logLines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[1].rfind("serial port " + terminal_.slavePath() + " failed: ", 0), 0u) << lines[1];
}

TEST_F(SerialLinkTest, DestroyedLinkStopsRetrying) {
  const std::filesystem::path device = folder_ / "ttyStation";
  {
    SerialLink link(io_, device.string(), SerialLine{}, log_, kQuickRetry);
    link.start(recorder());
  }  // a retry is pending
  std::filesystem::create_symlink(terminal_.slavePath(), device);
  runFor(io_, 5 * kQuickRetry);
  EXPECT_EQ(logLines().size(), 1u);  // only the first failure; nothing opened afterwards
}

}  // namespace
}  // namespace nimbrel
