#pragma once
// Calls a handler at a steady real-time pace fitted to the program clock's
// speed: every 50 ms of program time, but never more often than once per
// real millisecond. At speed 100 a 2-second packet interval is 20 ms of real
// time, so ticks come every millisecond or so.

#include <chrono>
#include <functional>
#include <memory>

#include <asio.hpp>

namespace nimbrel::sim {

class ConsoleTicker {
 public:
  ConsoleTicker(asio::io_context& io, double clockSpeed, std::function<void()> onTick);
  ConsoleTicker(const ConsoleTicker&) = delete;
  ConsoleTicker& operator=(const ConsoleTicker&) = delete;

  void start();
  void stop();
  std::chrono::nanoseconds period() const { return period_; }

 private:
  void arm();

  asio::steady_timer timer_;
  std::chrono::nanoseconds period_;
  std::function<void()> onTick_;
  bool running_ = false;
  std::shared_ptr<char> alive_ = std::make_shared<char>();  // handlers check it before using `this`
};

}  // namespace nimbrel::sim
