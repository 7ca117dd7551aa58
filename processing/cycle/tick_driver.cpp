#include "processing/cycle/tick_driver.h"

#include <algorithm>

namespace nimbrel {

TickDriver::TickDriver(asio::io_context& io, const ScaledClock& clock) : io_(io), timer_(io), clock_(clock) {}

void TickDriver::start(OnTick onTick) {
  onTick_ = std::move(onTick);
  lastSecond_ = std::chrono::floor<std::chrono::seconds>(clock_.now());
  stopped_ = false;
  scheduleNext();
}

void TickDriver::run(OnTick onTick) {
  start(std::move(onTick));
  io_.run();
}

void TickDriver::stop() {
  stopped_ = true;
  timer_.cancel();
  io_.stop();
}

void TickDriver::scheduleNext() {
  const auto next = lastSecond_ + std::chrono::seconds(1);
  const auto wait = clock_.realDuration(next - clock_.now());
  timer_.expires_after(std::max(wait, std::chrono::nanoseconds(0)));
  timer_.async_wait([this](const asio::error_code& error) {
    if (!error && !stopped_) onTimer();
  });
}

std::chrono::seconds TickDriver::catchUpLimit() const {
  const auto atSpeed = static_cast<long long>(clock_.speed() * kMostRealSecondsPerWake);
  return std::chrono::seconds(std::max<long long>(kMostSecondsPerWake, atSpeed));
}

void TickDriver::onTimer() {
  const auto now = std::chrono::floor<std::chrono::seconds>(clock_.now());
  if (now - lastSecond_ > catchUpLimit()) lastSecond_ = now - catchUpLimit();
  // One second per wake-up: when behind, the next one is due at once, but the
  // loop first delivers what the station sent meanwhile, as it would have
  // arrived between those seconds.
  if (lastSecond_ < now) {
    lastSecond_ += std::chrono::seconds(1);
    onTick_(toLocalTime(lastSecond_));
  }
  if (!stopped_) scheduleNext();
}

}  // namespace nimbrel
