#include "processing/tick_driver.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace nimbrel
