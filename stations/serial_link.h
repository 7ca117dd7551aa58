#pragma once
// The station on a serial port (or anything that looks like one: a USB
// adapter, a pseudo-terminal). Opens the port with the station's line
// settings, raises DTR and RTS, reads in the background and hands every byte
// to the receive handler as its own event. A port that cannot be opened, or
// that goes away (adapter unplugged), is logged once and tried again at a
// fixed interval until it works.
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
#include "stations/serial_line.h"

namespace nimbrel {

class SerialLink final : public ByteLink {
 public:
  static constexpr std::size_t kReadBufferSize = 4096;

  SerialLink(asio::io_context& io, std::string device, SerialLine line, TextLog& errorLog,
             LinkClock::duration retryInterval = kLinkRetryInterval);
  ~SerialLink() override;
  SerialLink(const SerialLink&) = delete;
  SerialLink& operator=(const SerialLink&) = delete;

  using ByteLink::send;
  void start(ReceiveHandler onReceive) override;
  void send(std::span<const std::uint8_t> bytes) override;
  bool isOpen() const override { return port_.is_open(); }
  void reopen() override;
  void close() override;
  std::string describe() const override { return device_; }

 private:
  void open();
  // Opens the device and applies the line settings; false with the reason.
  bool openAndConfigure(std::string& reason);
  bool applyLine(std::string& reason);
  void scheduleRetry();
  void readMore();
  void writeNext();
  // A read or write failed: close, report and go back to retrying.
  void lose(const asio::error_code& error);
  void closePort();
  std::weak_ptr<const char> newSession();

  std::string device_;
  SerialLine line_;
  TextLog* errorLog_;
  LinkClock::duration retryInterval_;
  asio::serial_port port_;
  asio::steady_timer retryTimer_;
  ReceiveHandler onReceive_;
  std::array<std::uint8_t, kReadBufferSize> readBuffer_{};
  SendQueue sendQueue_;
  OutageReport outage_;
  bool dropReported_ = false;
  // Replaced at every open and close: a handler whose session has expired
  // belongs to an earlier opening (or to a link that no longer exists) and
  // does nothing.
  std::shared_ptr<const char> session_;
};

}  // namespace nimbrel
