#pragma once
// Pieces the serial and TCP links share: how often a lost link is tried
// again, how an outage is reported (once when it starts, once when it ends),
// the queue of data waiting to be written, and the delivery of received
// bytes one per receive event.

#include <chrono>
#include <cstdint>
#include <deque>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/text_log.h"
#include "stations/byte_link.h"

namespace nimbrel {

using LinkClock = std::chrono::steady_clock;

// A link that cannot open, or that breaks, is tried again this often.
inline constexpr LinkClock::duration kLinkRetryInterval = std::chrono::seconds(10);

// "retrying every 10 seconds" (or "every 50 milliseconds" for short intervals).
std::string retryPhrase(LinkClock::duration interval);

// Writes the first failure of an outage to the error log and keeps quiet
// about the repeated failures of the same outage.
class OutageReport {
 public:
  explicit OutageReport(TextLog& errorLog) : errorLog_(&errorLog) {}

  void failed(std::string_view message);
  // The link works again: always logged, and the next failure is news again.
  void restored(std::string_view message);
  bool inOutage() const { return inOutage_; }

 private:
  TextLog* errorLog_;
  bool inOutage_ = false;
};

// Data waiting to be written, one asynchronous write at a time, in order.
class SendQueue {
 public:
  // Adds a block; true when no write is running, so the caller must start one.
  bool push(std::span<const std::uint8_t> bytes);
  // The block being written.
  std::span<const std::uint8_t> front() const { return blocks_.front(); }
  // Drops the block just written; true when another one waits.
  bool popWritten();
  void clear();

 private:
  std::deque<std::vector<std::uint8_t>> blocks_;
  bool writing_ = false;
};

// Hands each received byte to `onReceive` as its own receive event. Stops as
// soon as `session` has expired, i.e. when the handler closed or reopened the
// link; returns whether all bytes were delivered.
bool deliverEachByte(std::span<const std::uint8_t> bytes, const ByteLink::ReceiveHandler& onReceive,
                     const std::weak_ptr<const char>& session);

}  // namespace nimbrel
