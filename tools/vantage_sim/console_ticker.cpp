#include "tools/vantage_sim/console_ticker.h"

#include <algorithm>

namespace nimbrel::sim {
namespace {

using namespace std::chrono_literals;

constexpr std::chrono::nanoseconds kProgramTimePerTick = 50ms;
constexpr std::chrono::nanoseconds kShortestTick = 1ms;

std::chrono::nanoseconds tickPeriod(double clockSpeed) {
  const double speed = clockSpeed > 0 ? clockSpeed : 1.0;
  const auto scaled = std::chrono::duration_cast<std::chrono::nanoseconds>(
      std::chrono::duration<double, std::nano>(kProgramTimePerTick) / speed);
  return std::clamp(scaled, kShortestTick, kProgramTimePerTick);
}

}  // namespace

ConsoleTicker::ConsoleTicker(asio::io_context& io, double clockSpeed, std::function<void()> onTick)
    : timer_(io), period_(tickPeriod(clockSpeed)), onTick_(std::move(onTick)) {}

void ConsoleTicker::start() {
  if (running_) return;
  running_ = true;
  timer_.expires_after(period_);
  arm();
}

void ConsoleTicker::stop() {
  running_ = false;
  timer_.cancel();
}

void ConsoleTicker::arm() {
  timer_.async_wait([this, alive = std::weak_ptr<char>(alive_)](const asio::error_code& error) {
    if (alive.expired() || error || !running_) return;
    onTick_();
    if (alive.expired() || !running_) return;  // the tick may have stopped or ended us
    // Keep to the pace without drifting; after a stall, resume from now.
    const auto next = timer_.expiry() + period_;
    timer_.expires_at(std::max(next, std::chrono::steady_clock::now()));
    arm();
  });
}

}  // namespace nimbrel::sim
