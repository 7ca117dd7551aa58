#include "stations/tcp_link.h"

#include <fmt/format.h>

#include "stations/stream_pump.h"

namespace nimbrel {

TcpLink::TcpLink(asio::io_context& io, std::string host, std::uint16_t port, TextLog& errorLog,
                 LinkClock::duration retryInterval)
    : host_(std::move(host)),
      port_(port),
      errorLog_(&errorLog),
      retryInterval_(retryInterval),
      resolver_(io),
      socket_(io),
      retryTimer_(io),
      outage_(errorLog) {}

TcpLink::~TcpLink() { close(); }

std::string TcpLink::describe() const { return fmt::format("{}:{}", host_, port_); }

void TcpLink::start(ReceiveHandler onReceive) {
  onReceive_ = std::move(onReceive);
  if (!connected_) connect();
}

void TcpLink::reopen() {
  close();
  connect();
}

void TcpLink::close() {
  session_.reset();
  resolver_.cancel();
  retryTimer_.cancel();
  closeSocket();
}

void TcpLink::closeSocket() {
  asio::error_code ignored;
  socket_.shutdown(asio::ip::tcp::socket::shutdown_both, ignored);
  socket_.close(ignored);
  connected_ = false;
  sendQueue_.clear();
}

std::weak_ptr<const char> TcpLink::newSession() {
  session_ = std::make_shared<const char>();
  return session_;
}

void TcpLink::connect() {
  closeSocket();
  auto session = newSession();
  resolver_.async_resolve(host_, fmt::format("{}", port_), asio::ip::tcp::resolver::numeric_service,
                          [this, session](const asio::error_code& error,
                                          const asio::ip::tcp::resolver::results_type& endpoints) {
                            if (session.expired()) return;
                            onResolved(error, endpoints);
                          });
}

void TcpLink::onResolved(const asio::error_code& error, const asio::ip::tcp::resolver::results_type& endpoints) {
  if (error) {
    connectFailed(error);
    return;
  }
  asio::async_connect(socket_, endpoints,
                      [this, session = std::weak_ptr(session_)](const asio::error_code& connectError,
                                                                const asio::ip::tcp::endpoint&) {
                        if (session.expired()) return;
                        if (connectError) {
                          connectFailed(connectError);
                          return;
                        }
                        onConnected();
                      });
}

void TcpLink::onConnected() {
  asio::error_code ignored;
  socket_.set_option(asio::ip::tcp::no_delay(true), ignored);  // commands are a few bytes each
  connected_ = true;
  dropReported_ = false;
  outage_.restored(fmt::format("connected to {}", describe()));
  readMore();
}

void TcpLink::connectFailed(const asio::error_code& error) {
  closeSocket();
  outage_.failed(fmt::format(
      R"(cannot connect to {} (section "Comport" keys "use tcpip vp ip" and "use tcpip vp port"): {}; {})",
      describe(), error.message(), retryPhrase(retryInterval_)));
  scheduleRetry();
}

void TcpLink::scheduleRetry() {
  retryAfter(retryTimer_, retryInterval_, session_, [this] { connect(); });
}

void TcpLink::readMore() {
  readAndDeliver(socket_, readBuffer_, onReceive_, session_, [this](const asio::error_code& error) { lose(error); });
}

void TcpLink::send(std::span<const std::uint8_t> bytes) {
  if (!connected_) {
    // While the first connection is still being made nothing has gone wrong yet.
    if (outage_.inOutage() && !dropReported_) {
      errorLog_->write(fmt::format("not connected to {}; data for the station is dropped", describe()));
      dropReported_ = true;
    }
    return;
  }
  if (sendQueue_.push(bytes)) writeNext();
}

void TcpLink::writeNext() {
  writeQueued(socket_, sendQueue_, session_, [this](const asio::error_code& error) { lose(error); });
}

void TcpLink::lose(const asio::error_code& error) {
  newSession();  // the other pending operation of this connection must not act
  closeSocket();
  const std::string what = error == asio::error::eof ? std::string("closed by the other end") : error.message();
  outage_.failed(fmt::format("connection to {} lost: {}; {}", describe(), what, retryPhrase(retryInterval_)));
  scheduleRetry();
}

}  // namespace nimbrel
