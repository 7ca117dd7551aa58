#include "tools/vantage_sim/server.h"

#include <stdexcept>

#include "tools/vantage_sim/faults.h"

namespace nimbrel::sim {
namespace {

platform::PseudoTerminal openTerminal() {
  std::string error;
  auto terminal = platform::PseudoTerminal::open(&error);
  if (!terminal) throw std::runtime_error("cannot open a pseudo-terminal: " + error);
  return std::move(*terminal);
}

}  // namespace

// ---- TCP ------------------------------------------------------------------

TcpConsoleServer::TcpConsoleServer(asio::io_context& io, const Clock& clock, Console& console,
                                   std::uint16_t port, ServerOptions options)
    : clock_(clock),
      console_(console),
      options_(options),
      start_(clock.now()),
      acceptor_(io),
      port_(port),
      ticker_(io, options.clockSpeed, [this] { tick(); }) {
  if (const asio::error_code error = openAcceptor()) throw asio::system_error(error, "listen");
  ticker_.start();
}

TcpConsoleServer::~TcpConsoleServer() { stop(); }

void TcpConsoleServer::stop() {
  stopped_ = true;
  ticker_.stop();
  dropClient();
  asio::error_code ignored;
  acceptor_.close(ignored);
}

asio::error_code TcpConsoleServer::openAcceptor() {
  const asio::ip::tcp::endpoint endpoint(asio::ip::address_v4::loopback(), port_);
  asio::error_code error;
  acceptor_.open(endpoint.protocol(), error);
  if (!error) acceptor_.set_option(asio::socket_base::reuse_address(true), error);
  if (!error) acceptor_.bind(endpoint, error);
  if (!error) acceptor_.listen(asio::socket_base::max_listen_connections, error);
  if (error) {
    asio::error_code ignored;
    acceptor_.close(ignored);
    return error;
  }
  port_ = acceptor_.local_endpoint().port();  // the same port when reopened after a drop
  ++acceptRound_;
  acceptNext();
  return {};
}

void TcpConsoleServer::acceptNext() {
  acceptor_.async_accept([this, round = acceptRound_, alive = std::weak_ptr<char>(alive_)](
                             const asio::error_code& error, asio::ip::tcp::socket socket) {
    if (alive.expired() || stopped_ || round != acceptRound_) return;
    if (!error) accepted(std::move(socket));
    if (acceptor_.is_open()) acceptNext();
  });
}

void TcpConsoleServer::accepted(asio::ip::tcp::socket socket) {
  // One client at a time, as a network logger: a newcomer replaces the old
  // one, whose end may have vanished without a goodbye.
  dropClient();
  asio::error_code ignored;
  socket.set_option(asio::ip::tcp::no_delay(true), ignored);  // keep split writes apart
  client_ = std::make_shared<Connection>(std::move(socket), [this](std::span<const std::uint8_t> bytes) {
    console_.receive(bytes);
    deliver();
  });
  client_->start();
}

void TcpConsoleServer::tick() {
  const bool dropping = inRecurringSpan(start_, clock_.now(), options_.dropEvery, options_.dropFor);
  if (dropping && acceptor_.is_open()) {
    dropClient();
    asio::error_code ignored;
    acceptor_.close(ignored);  // connecting now gets "connection refused"
  } else if (!dropping && !acceptor_.is_open()) {
    openAcceptor();  // tried again on the next tick when the port is still busy
  }
  deliver();
}

void TcpConsoleServer::dropClient() {
  if (client_) client_->close();
  client_.reset();
}

void TcpConsoleServer::deliver() {
  // The console runs whether or not anyone listens; with no client its
  // writes are lost, as a logger's are.
  for (auto& write : console_.poll())
    if (hasClient()) client_->send(std::move(write));
}

// ---- Pseudo-terminal ------------------------------------------------------

PtyConsoleServer::PtyConsoleServer(asio::io_context& io, const Clock&, Console& console, ServerOptions options)
    : console_(console), terminal_(openTerminal()), ticker_(io, options.clockSpeed, [this] { deliver(); }) {
  asio::posix::stream_descriptor descriptor(io, terminal_.releaseMaster());
  master_ = std::make_shared<Connection>(std::move(descriptor), [this](std::span<const std::uint8_t> bytes) {
    console_.receive(bytes);
    deliver();
  });
  master_->start();
  ticker_.start();
}

PtyConsoleServer::~PtyConsoleServer() { stop(); }

void PtyConsoleServer::stop() {
  ticker_.stop();
  if (master_) master_->close();
}

void PtyConsoleServer::deliver() {
  for (auto& write : console_.poll())
    if (master_->isOpen()) master_->send(std::move(write));
}

}  // namespace nimbrel::sim
