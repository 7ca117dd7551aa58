#pragma once
// The station behind a TCP connection: a network data logger or a
// serial-to-network bridge. Connects in the background, hands every received
// byte to the receive handler as its own event, and when the connection
// cannot be made or the other end closes it, reports that once and tries
// again at a fixed interval; "connected" is logged each time it comes back.
//
// Runs on one asio::io_context; all calls and handlers are on its thread.
// The receive handler may send, close or reopen the link, but must not
// destroy it.

#include <array>
#include <asio.hpp>
#include <cstdint>
#include <memory>
#include <string>

#include "core/text_log.h"
#include "stations/byte_link.h"
#include "stations/link_support.h"

namespace nimbrel {

class TcpLink final : public ByteLink {
 public:
  static constexpr std::size_t kReadBufferSize = 4096;

  TcpLink(asio::io_context& io, std::string host, std::uint16_t port, TextLog& errorLog,
          LinkClock::duration retryInterval = kLinkRetryInterval);
  ~TcpLink() override;
  TcpLink(const TcpLink&) = delete;
  TcpLink& operator=(const TcpLink&) = delete;

  using ByteLink::send;
  void start(ReceiveHandler onReceive) override;
  void send(std::span<const std::uint8_t> bytes) override;
  bool isOpen() const override { return connected_; }
  void reopen() override;
  void close() override;
  std::string describe() const override;

 private:
  void connect();
  void onResolved(const asio::error_code& error, const asio::ip::tcp::resolver::results_type& endpoints);
  void onConnected();
  void connectFailed(const asio::error_code& error);
  void scheduleRetry();
  void readMore();
  void writeNext();
  // The connection broke or the other end closed it: report and retry.
  void lose(const asio::error_code& error);
  void closeSocket();
  std::weak_ptr<const char> newSession();

  std::string host_;
  std::uint16_t port_;
  TextLog* errorLog_;
  LinkClock::duration retryInterval_;
  asio::ip::tcp::resolver resolver_;
  asio::ip::tcp::socket socket_;
  asio::steady_timer retryTimer_;
  ReceiveHandler onReceive_;
  std::array<std::uint8_t, kReadBufferSize> readBuffer_{};
  SendQueue sendQueue_;
  OutageReport outage_;
  bool connected_ = false;
  bool dropReported_ = false;
  // Replaced at every connection attempt and close: a handler whose session
  // has expired belongs to an earlier attempt (or to a link that no longer
  // exists) and does nothing.
  std::shared_ptr<const char> session_;
};

}  // namespace nimbrel
