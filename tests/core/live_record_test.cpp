#include "core/live_record.h"

#include <gtest/gtest.h>

namespace nimbrel {
namespace {

// The minute's wind average and gust of the logs come from these rings.
TEST(SampleRingTest, KeepsExactlyTheLastSixtySamplesAndCountsMissingOnesAsZero) {
  SampleRing<60> ring;
  EXPECT_EQ(ring.mean(), 0.0);
  ring.push(12.5);
  EXPECT_DOUBLE_EQ(ring.max(), 12.5);
  EXPECT_DOUBLE_EQ(ring.mean(), 12.5 / 60);
  for (int i = 1; i <= 75; ++i) ring.push(i);
  // Samples 16 ... 75 remain: mean 45.5, max 75, oldest 16.
  EXPECT_DOUBLE_EQ(ring.mean(), 45.5);
  EXPECT_DOUBLE_EQ(ring.max(), 75);
  EXPECT_DOUBLE_EQ(ring.entry(1), 16);
  EXPECT_DOUBLE_EQ(ring.entry(60), 75);
}

}  // namespace
}  // namespace nimbrel
