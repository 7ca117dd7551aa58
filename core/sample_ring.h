#pragma once
// A fixed ring of the last N one-second samples. The minute average of the
// monthly log is the arithmetic mean of the wind ring; the minute gust is the
// maximum of the gust ring.

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>

namespace nimbrel {

template <std::size_t N>
class SampleRing {
 public:
  static constexpr std::size_t size() { return N; }

  void push(double sample) {
    samples_[next_] = sample;
    next_ = (next_ + 1) % N;
  }
  void fill(double value) { samples_.fill(value); }

  double mean() const { return std::accumulate(samples_.begin(), samples_.end(), 0.0) / N; }
  double max() const { return *std::max_element(samples_.begin(), samples_.end()); }
  // Entry 1 is the oldest sample, entry N the newest.
  double entry(std::size_t oneBased) const { return samples_[(next_ + oneBased - 1) % N]; }

 private:
  std::array<double, N> samples_{};
  std::size_t next_ = 0;
};

}  // namespace nimbrel
