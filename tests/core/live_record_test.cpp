#include "core/live_record.h"

#include <gtest/gtest.h>

namespace nimbrel {
namespace {

TEST(SampleRingTest, KeepsExactlyTheLastSixtySamples) {
  SampleRing<60> ring;
  for (int i = 1; i <= 75; ++i) ring.push(i);
  // Samples 16 ... 75 remain: mean 45.5, max 75, oldest 16.
  EXPECT_DOUBLE_EQ(ring.mean(), 45.5);
  EXPECT_DOUBLE_EQ(ring.max(), 75);
  EXPECT_DOUBLE_EQ(ring.entry(1), 16);
  EXPECT_DOUBLE_EQ(ring.entry(60), 75);
}

TEST(SampleRingTest, AFreshRingAveragesToZero) {
  LiveRecord record;
  EXPECT_EQ(record.windsamples.mean(), 0.0);
  record.gustsamples.push(12.5);
  EXPECT_DOUBLE_EQ(record.gustsamples.max(), 12.5);
  EXPECT_DOUBLE_EQ(record.gustsamples.mean(), 12.5 / 60);
}

TEST(WriterUnits, UseTheWritersOwnFactors) {
  using namespace writer_units;
  EXPECT_DOUBLE_EQ(toFahrenheit(-40), -40);
  EXPECT_DOUBLE_EQ(toMph(10), 11.5);
  EXPECT_DOUBLE_EQ(toInchesHg(1000), 29.53);
  EXPECT_DOUBLE_EQ(toInches(100), 3.937);
}

TEST(LiveRecordTest, StartsWithTheAlternativeIconUnset) {
  LiveRecord record;
  EXPECT_EQ(record.forecasticonalt, 65526);
  EXPECT_EQ(static_cast<std::int16_t>(record.forecasticonalt), -10);
}

}  // namespace
}  // namespace nimbrel
