#pragma once
// A connection to the station (a serial port or a TCP socket). It delivers
// what it reads as receive events of one byte each: the receive handlers end
// an event after a decode and drop the rest of it, so one byte per event is
// what guarantees that no byte of the next packet is ever dropped.

#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace nimbrel {

class ByteLink {
 public:
  using ReceiveHandler = std::function<void(std::span<const std::uint8_t>)>;

  virtual ~ByteLink() = default;
  // Opens the connection and starts reading; a link that cannot open logs why
  // and keeps trying in the background.
  virtual void start(ReceiveHandler onReceive) = 0;
  // Queues bytes for sending; dropped (and logged once) while the link is down.
  virtual void send(std::span<const std::uint8_t> bytes) = 0;
  virtual bool isOpen() const = 0;
  // Closes and opens again (the port reset after a long silence).
  virtual void reopen() = 0;
  virtual void close() = 0;
  // What the link talks to, for messages: "/dev/ttyUSB0", "192.168.1.20:22222".
  virtual std::string describe() const = 0;

  void send(std::string_view text) {
    send(std::span<const std::uint8_t>(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
  }
};

}  // namespace nimbrel
