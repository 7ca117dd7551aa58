#include "processing/cycle/tick_driver.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace nimbrel {
namespace {

using namespace std::chrono_literals;

// At a high speed, even with the loop blocked now and then, every program
// second is ticked once and in order, so no minute's pass can be skipped.
TEST(TickDriverTest, TicksEverySecondInOrderEvenWhenTheLoopStalls) {
  asio::io_context io;
  const SystemTime start = fromLocalTime(2026, 1, 1, 0, 0, 0);
  ScaledClock clock(start, 2000);
  std::vector<SystemTime> ticked;
  TickDriver ticks(io, clock, [&](const LocalTime& t) {
    ticked.push_back(fromLocalTime(t.year, t.month, t.day, t.hour, t.minute, t.second));
    if (ticked.size() % 100 == 0) std::this_thread::sleep_for(20ms);  // 40 program seconds
  });
  ticks.start();
  io.run_for(300ms);
  ticks.stop();
  ASSERT_GT(ticked.size(), 300u);
  EXPECT_LE(ticked.front() - start, 5s);
  for (std::size_t i = 1; i < ticked.size(); ++i) ASSERT_EQ(ticked[i] - ticked[i - 1], 1s) << i;
  EXPECT_EQ(ticks.ticks(), ticked.size());
}

// Work that became ready while the loop was blocked (the station's bytes) is
// handled between the missed seconds, not after all of them.
TEST(TickDriverTest, CatchingUpLetsOtherWorkRunBetweenTheMissedSeconds) {
  asio::io_context io;
  ScaledClock clock(fromLocalTime(2026, 1, 1, 0, 0, 0), 2000);
  std::vector<std::string> order;
  TickDriver ticks(io, clock, [&](const LocalTime&) {
    order.push_back("tick");
    if (order.size() == 1) std::this_thread::sleep_for(10ms);  // 20 program seconds behind
    if (order.size() == 2) asio::post(io, [&] { order.push_back("data"); });
  });
  ticks.start();
  while (order.size() < 10) io.run_one_for(100ms);
  ticks.stop();
  ASSERT_GE(order.size(), 3u);
  EXPECT_EQ(order[1], "tick");  // the first of the missed seconds...
  EXPECT_EQ(order[2], "data");  // ...then the data, before the other 19
}

}  // namespace
}  // namespace nimbrel
