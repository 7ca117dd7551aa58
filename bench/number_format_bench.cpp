#include <benchmark/benchmark.h>

#include "core/number_format.h"

namespace {

// Every field of every log line goes through this.
void BM_FixedField(benchmark::State& state) {
  double v = 12.34;
  for (auto _ : state) {
    benchmark::DoNotOptimize(nimbrel::fixed(v, 4, 1));
    v += 0.01;
  }
}
BENCHMARK(BM_FixedField);

}  // namespace
