#pragma once
// Serves a simulated Console to a program, either on a loopback TCP port (as a
// network logger does) or on a pseudo-terminal (as a serial port). Both run on
// the caller's io_context with no threads and no blocking calls, so a program
// can host the simulator on its own event loop. The console is ticked by a
// ConsoleTicker fitted to the program clock's speed.

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include <asio.hpp>

#include "core/clock.h"
#include "core/platform/pseudo_terminal.h"
#include "tools/vantage_sim/console.h"
#include "tools/vantage_sim/console_ticker.h"
#include "tools/vantage_sim/stream_connection.h"

namespace nimbrel::sim {

struct ServerOptions {
  double clockSpeed = 1.0;  // program seconds per real second
  // TCP only: every `dropEvery` of program time the client is cut off and new
  // connections are refused for `dropFor`. Zero turns it off.
  std::chrono::seconds dropEvery{0};
  std::chrono::seconds dropFor{0};
};

class TcpConsoleServer {
 public:
  // Listens on 127.0.0.1:`port`; port 0 takes any free one (see port()).
  // Throws asio::system_error when the port cannot be had.
  TcpConsoleServer(asio::io_context& io, const Clock& clock, Console& console, std::uint16_t port,
                   ServerOptions options = {});
  ~TcpConsoleServer();
  TcpConsoleServer(const TcpConsoleServer&) = delete;
  TcpConsoleServer& operator=(const TcpConsoleServer&) = delete;

  std::uint16_t port() const { return port_; }
  bool hasClient() const { return client_ && client_->isOpen(); }
  // Closes the client and the port; the object can then be destroyed at leisure.
  void stop();

 private:
  using Connection = StreamConnection<asio::ip::tcp::socket>;

  asio::error_code openAcceptor();
  void acceptNext();
  void accepted(asio::ip::tcp::socket socket);
  void tick();
  void dropClient();
  void deliver();

  const Clock& clock_;
  Console& console_;
  ServerOptions options_;
  SystemTime start_;
  asio::ip::tcp::acceptor acceptor_;
  std::uint16_t port_ = 0;
  std::uint64_t acceptRound_ = 0;  // tells stale accept completions from live ones
  std::shared_ptr<Connection> client_;
  ConsoleTicker ticker_;
  bool stopped_ = false;
  std::shared_ptr<char> alive_ = std::make_shared<char>();
};

class PtyConsoleServer {
 public:
  // Opens a pseudo-terminal; throws std::runtime_error when none can be had.
  PtyConsoleServer(asio::io_context& io, const Clock& clock, Console& console, ServerOptions options = {});
  ~PtyConsoleServer();
  PtyConsoleServer(const PtyConsoleServer&) = delete;
  PtyConsoleServer& operator=(const PtyConsoleServer&) = delete;

  // The device a program opens as its serial port: "/dev/pts/7".
  const std::string& devicePath() const { return terminal_.slavePath(); }
  void stop();

 private:
  using Connection = StreamConnection<asio::posix::stream_descriptor>;

  void deliver();

  Console& console_;
  platform::PseudoTerminal terminal_;
  std::shared_ptr<Connection> master_;
  ConsoleTicker ticker_;
};

}  // namespace nimbrel::sim
