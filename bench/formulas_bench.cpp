#include <benchmark/benchmark.h>

#include "core/log_formulas.h"
#include "core/weather_utils.h"

namespace {

// The inputs move on every iteration so that nothing folds into a constant.

// Computed on every reading by the live cycle.
void BM_DewPoint(benchmark::State& state) {
  int humidity = 20;
  double celsius = -10.0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(nimbrel::TWeatherUtils::DewPoint(humidity, 0, celsius));
    humidity = humidity >= 99 ? 20 : humidity + 1;
    celsius = celsius >= 35.0 ? -10.0 : celsius + 0.37;
  }
}
BENCHMARK(BM_DewPoint);

void BM_WindChill(benchmark::State& state) {
  double windKmh = 5.0;
  double celsius = -20.0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(nimbrel::TWeatherUtils::WindChill(windKmh, celsius));
    windKmh = windKmh >= 80.0 ? 5.0 : windKmh + 1.3;
    celsius = celsius >= 9.0 ? -20.0 : celsius + 0.41;
  }
}
BENCHMARK(BM_WindChill);

// Once per monthly log line.
void BM_LogHeatIndex(benchmark::State& state) {
  int humidity = 30;
  double celsius = 20.0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(nimbrel::logHeatIndex(celsius, humidity));
    humidity = humidity >= 100 ? 30 : humidity + 1;
    celsius = celsius >= 45.0 ? 20.0 : celsius + 0.29;
  }
}
BENCHMARK(BM_LogHeatIndex);

}  // namespace
