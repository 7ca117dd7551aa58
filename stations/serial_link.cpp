#include "stations/serial_link.h"

#include <fmt/format.h>

#include "core/platform/serial_control.h"
#include "stations/stream_pump.h"

namespace nimbrel {
namespace {

using asio::serial_port_base;

serial_port_base::parity::type asioParity(Parity parity) {
  switch (parity) {
    case Parity::odd: return serial_port_base::parity::odd;
    case Parity::even: return serial_port_base::parity::even;
    case Parity::none: break;
  }
  return serial_port_base::parity::none;
}

serial_port_base::stop_bits::type asioStopBits(std::uint8_t stopBits) {
  return stopBits == 2 ? serial_port_base::stop_bits::two : serial_port_base::stop_bits::one;
}

}  // namespace

SerialLink::SerialLink(asio::io_context& io, std::string device, SerialLine line, TextLog& errorLog,
                       LinkClock::duration retryInterval)
    : device_(std::move(device)),
      line_(line),
      errorLog_(&errorLog),
      retryInterval_(retryInterval),
      port_(io),
      retryTimer_(io),
      outage_(errorLog) {}

SerialLink::~SerialLink() { close(); }

void SerialLink::start(ReceiveHandler onReceive) {
  onReceive_ = std::move(onReceive);
  if (!port_.is_open()) open();
}

void SerialLink::reopen() {
  close();
  open();
}

void SerialLink::close() {
  session_.reset();
  retryTimer_.cancel();
  closePort();
}

void SerialLink::closePort() {
  asio::error_code ignored;
  port_.close(ignored);
  sendQueue_.clear();
}

std::weak_ptr<const char> SerialLink::newSession() {
  session_ = std::make_shared<const char>();
  return session_;
}

void SerialLink::open() {
  newSession();
  std::string reason;
  if (!openAndConfigure(reason)) {
    outage_.failed(fmt::format(R"(cannot open serial port {} (section "Comport" key "number" or "device"): {}; {})",
                               device_, reason, retryPhrase(retryInterval_)));
    scheduleRetry();
    return;
  }
  dropReported_ = false;
  outage_.restored(fmt::format("serial port {} opened", device_));
  readMore();
}

bool SerialLink::openAndConfigure(std::string& reason) {
  asio::error_code error;
  port_.open(device_, error);
  if (error) {
    reason = error.message();
    return false;
  }
  if (!applyLine(reason)) {
    closePort();
    return false;
  }
  // Some data-logger cables are powered from DTR and RTS. Ports without modem
  // lines (pseudo-terminals, some adapters) refuse this, and the station
  // works without it there, so a refusal is not an error.
  platform::raiseDtrAndRts(port_.native_handle());
  return true;
}

bool SerialLink::applyLine(std::string& reason) {
  asio::error_code error;
  port_.set_option(serial_port_base::character_size(line_.dataBits), error);
  if (!error) port_.set_option(serial_port_base::parity(asioParity(line_.parity)), error);
  if (!error) port_.set_option(serial_port_base::stop_bits(asioStopBits(line_.stopBits)), error);
  if (!error) port_.set_option(serial_port_base::flow_control(serial_port_base::flow_control::none), error);
  if (error) {
    reason = fmt::format("cannot set the line to {} data bits, the parity and {} stop bits: {}", line_.dataBits,
                         line_.stopBits, error.message());
    return false;
  }
  // The speed goes last: the other settings rewrite the whole line settings,
  // which would undo a speed set outside the standard list.
  port_.set_option(serial_port_base::baud_rate(line_.baud), error);
  if (error == asio::error::invalid_argument) {
    std::string why;
    if (platform::setNonStandardBaudRate(port_.native_handle(), line_.baud, &why)) return true;
    reason = fmt::format("cannot set {} baud: {}", line_.baud, why);
    return false;
  }
  if (error) reason = fmt::format("cannot set {} baud: {}", line_.baud, error.message());
  return !error;
}

void SerialLink::scheduleRetry() {
  retryAfter(retryTimer_, retryInterval_, session_, [this] { open(); });
}

void SerialLink::readMore() {
  readAndDeliver(port_, readBuffer_, onReceive_, session_, [this](const asio::error_code& error) { lose(error); });
}

void SerialLink::send(std::span<const std::uint8_t> bytes) {
  if (!port_.is_open()) {
    if (!dropReported_)
      errorLog_->write(fmt::format("serial port {} is not open; data for the station is dropped", device_));
    dropReported_ = true;
    return;
  }
  if (sendQueue_.push(bytes)) writeNext();
}

void SerialLink::writeNext() {
  writeQueued(port_, sendQueue_, session_, [this](const asio::error_code& error) { lose(error); });
}

void SerialLink::lose(const asio::error_code& error) {
  newSession();  // the other pending operation of the old opening must not act
  closePort();
  outage_.failed(fmt::format("serial port {} failed: {}; {}", device_, error.message(), retryPhrase(retryInterval_)));
  scheduleRetry();
}

}  // namespace nimbrel
