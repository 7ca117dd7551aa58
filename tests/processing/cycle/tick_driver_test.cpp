#include "processing/cycle/tick_driver.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "processing/cycle/simulated_ticks.h"

namespace nimbrel {
namespace {

using namespace std::chrono_literals;

SystemTime fromLocal(const LocalTime& t) { return fromLocalTime(t.year, t.month, t.day, t.hour, t.minute, t.second); }

// At a high real speed, even with the loop blocked now and then, every
// program second is ticked once and in order, so no minute's pass can be
// skipped. How many seconds pass is up to the machine: only the order is
// asserted.
TEST(TickDriverTest, TicksEverySecondInOrderEvenWhenTheLoopStalls) {
  asio::io_context io;
  const SystemTime start = fromLocalTime(2026, 1, 1, 0, 0, 0);
  ScaledClock clock(start, 2000);
  std::vector<SystemTime> ticked;
  TickDriver ticks(io, clock);
  ticks.run([&](const LocalTime& t) {
    ticked.push_back(fromLocal(t));
    if (ticked.size() % 100 == 0) std::this_thread::sleep_for(20ms);  // 40 program seconds
    if (ticked.size() == 300) ticks.stop();
  });
  ASSERT_EQ(ticked.size(), 300u);
  for (std::size_t i = 1; i < ticked.size(); ++i) ASSERT_EQ(ticked[i] - ticked[i - 1], 1s) << i;
}

// Work that became ready while the loop was blocked (the station's bytes) is
// handled between the missed seconds, not after all of them.
TEST(TickDriverTest, CatchingUpLetsOtherWorkRunBetweenTheMissedSeconds) {
  asio::io_context io;
  ScaledClock clock(fromLocalTime(2026, 1, 1, 0, 0, 0), 2000);
  std::vector<std::string> order;
  TickDriver ticks(io, clock);
  ticks.start([&](const LocalTime&) {
    order.push_back("tick");
    if (order.size() == 1) std::this_thread::sleep_for(10ms);  // 20 program seconds behind
    if (order.size() == 2) asio::post(io, [&] { order.push_back("data"); });
  });
  while (order.size() < 10) io.run_one_for(100ms);
  ticks.stop();
  ASSERT_GE(order.size(), 3u);
  EXPECT_EQ(order[1], "tick");  // the first of the missed seconds...
  EXPECT_EQ(order[2], "data");  // ...then the data, before the other 19
}

// A source that acts at moments of its own: every 0.7 s of program time.
class EveryFewTenths final : public TimedEvents {
 public:
  EveryFewTenths(SystemTime first, std::vector<std::string>& trace) : next_(first), trace_(trace) {}
  std::optional<SystemTime> nextDue() const override { return next_; }
  void runDue(SystemTime now) override {
    seen.push_back(now);
    trace_.push_back("event");
    next_ += 700ms;
  }
  std::vector<SystemTime> seen;

 private:
  SystemTime next_;
  std::vector<std::string>& trace_;
};

// Simulated time jumps from event to event: every second is ticked, the
// source acts at exactly its moments, an event due with a tick comes first,
// and a busy loop changes nothing.
TEST(SimulatedTicksTest, JumpsFromEventToEventInOrder) {
  const SystemTime start = fromLocalTime(2026, 1, 1, 0, 0, 0);
  std::vector<std::string> runs[2];
  for (auto& trace : runs) {
    asio::io_context io;
    ManualClock clock(start);
    SimulatedTicks ticks(io, clock);
    EveryFewTenths source(start + 300ms, trace);
    ticks.addSource(source);
    std::vector<SystemTime> ticked;
    ticks.run([&](const LocalTime& t) {
      ticked.push_back(fromLocal(t));
      EXPECT_EQ(clock.now(), ticked.back());
      trace.push_back("tick");
      if (ticked.size() == 3) std::this_thread::sleep_for(20ms);  // a busy machine
      if (ticked.size() == 600) ticks.stop();
    });
    ASSERT_EQ(ticked.size(), 600u);
    for (std::size_t i = 0; i < ticked.size(); ++i) ASSERT_EQ(ticked[i], start + std::chrono::seconds(i + 1)) << i;
    ASSERT_GE(source.seen.size(), 850u);
    for (std::size_t i = 0; i < source.seen.size(); ++i) ASSERT_EQ(source.seen[i], start + 300ms + i * 700ms) << i;
    // Events at 0.3 s and 1.0 s, the second due with the first tick: both before it.
    const std::vector<std::string> opening{"event", "event", "tick", "event", "tick"};
    EXPECT_EQ(std::vector<std::string>(trace.begin(), trace.begin() + 5), opening);
    EXPECT_EQ(ticks.lastTicked(), start + 600s);
  }
  EXPECT_EQ(runs[0], runs[1]);
}

// The loop's own work (a signal, a result posted by another thread) runs
// during a simulated run and can stop it.
TEST(SimulatedTicksTest, PostedWorkRunsAndCanStopTheRun) {
  asio::io_context io;
  ManualClock clock(fromLocalTime(2026, 1, 1, 0, 0, 0));
  SimulatedTicks ticks(io, clock);
  bool ran = false;
  std::thread other([&] { asio::post(io, [&] { ran = true; ticks.stop(); }); });
  other.join();
  ticks.run([](const LocalTime&) {});
  EXPECT_TRUE(ran);
}

}  // namespace
}  // namespace nimbrel
