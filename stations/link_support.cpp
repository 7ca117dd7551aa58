#include "stations/link_support.h"

#include <fmt/format.h>

namespace nimbrel {

std::string retryPhrase(LinkClock::duration interval) {
  using namespace std::chrono;
  if (interval >= seconds(1) && interval % seconds(1) == LinkClock::duration::zero())
    return fmt::format("retrying every {} seconds", duration_cast<seconds>(interval).count());
  return fmt::format("retrying every {} milliseconds", duration_cast<milliseconds>(interval).count());
}

void OutageReport::failed(std::string_view message) {
  if (!inOutage_) errorLog_->write(message);
  inOutage_ = true;
}

void OutageReport::restored(std::string_view message) {
  inOutage_ = false;
  errorLog_->write(message);
}

bool SendQueue::push(std::span<const std::uint8_t> bytes) {
  if (bytes.empty()) return false;
  blocks_.emplace_back(bytes.begin(), bytes.end());
  if (writing_) return false;
  writing_ = true;
  return true;
}

bool SendQueue::popWritten() {
  if (!blocks_.empty()) blocks_.pop_front();
  writing_ = !blocks_.empty();
  return writing_;
}

void SendQueue::clear() {
  blocks_.clear();
  writing_ = false;
}

bool deliverEachByte(std::span<const std::uint8_t> bytes, const ByteLink::ReceiveHandler& onReceive,
                     const std::weak_ptr<const char>& session) {
  if (!onReceive) return true;  // reopened before anyone started it: nobody to tell
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (session.expired()) return false;
    onReceive(bytes.subspan(i, 1));
  }
  return !session.expired();
}

}  // namespace nimbrel
