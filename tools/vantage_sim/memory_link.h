#pragma once
// The simulated console wired straight to the program: a station link whose
// other end is a Console in the same process, with no socket or terminal in
// between. What the program sends reaches the console at once; what the
// console sends is delivered when it falls due, one byte per receive event
// as the serial and TCP links deliver it, so the program's framing, decoder
// and cycle are exactly those of a real station. Only the bytes' road is
// different, which makes a simulated run the same every time.
//
// The cable can be cut at fixed intervals of program time (as the TCP
// server drops its client): while it is cut, both directions are lost and
// the outage is written to the error log once, and its end too.

#include <chrono>
#include <optional>

#include "core/clock.h"
#include "core/timed_events.h"
#include "stations/byte_link.h"
#include "stations/link_support.h"
#include "tools/vantage_sim/console.h"

namespace nimbrel::sim {

struct CableCuts {
  std::chrono::seconds every{0};  // zero: never cut
  std::chrono::seconds length{0};
};

class MemoryConsoleLink final : public ByteLink, public TimedEvents {
 public:
  MemoryConsoleLink(Console& console, const Clock& clock, TextLog& errorLog, CableCuts cuts = {});

  using ByteLink::send;
  void start(ReceiveHandler onReceive) override { onReceive_ = std::move(onReceive); }
  void send(std::span<const std::uint8_t> bytes) override;
  bool isOpen() const override { return !cut_; }
  void reopen() override {}
  void close() override { onReceive_ = nullptr; }
  std::string describe() const override { return "the simulated console"; }

  std::optional<SystemTime> nextDue() const override { return console_.nextDue(); }
  void runDue(SystemTime now) override;

 private:
  void followCuts(SystemTime now);

  Console& console_;
  const Clock& clock_;
  CableCuts cuts_;
  SystemTime start_;
  OutageReport outage_;
  ReceiveHandler onReceive_;
  bool cut_ = false;
};

}  // namespace nimbrel::sim
