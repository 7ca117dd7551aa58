#include <benchmark/benchmark.h>

#include <vector>

#include "core/clock.h"
#include "core/text_log.h"
#include "stations/crc_ccitt.h"
#include "stations/vantage_driver.h"

namespace {

std::vector<std::uint8_t> loopStream(int packets) {
  std::vector<std::uint8_t> all{0x06};
  for (int i = 0; i < packets; ++i) {
    std::vector<std::uint8_t> p(99, 0);
    p[0] = 'L';
    p[1] = p[2] = 'O';
    p[3] = 'P';
    p[7] = 0xE1;
    p[8] = 0x74;  // 29.921 inHg
    p[12] = static_cast<std::uint8_t>(200 + i % 50);
    p[14] = static_cast<std::uint8_t>(i % 30);
    p[16] = static_cast<std::uint8_t>(i % 256);
    p[33] = 60;
    p[95] = 0x0A;
    p[96] = 0x0D;
    const std::uint16_t crc = nimbrel::crcCcitt(std::span<const std::uint8_t>(p).first(97));
    p[97] = static_cast<std::uint8_t>(crc >> 8);
    p[98] = static_cast<std::uint8_t>(crc & 0xFF);
    all.insert(all.end(), p.begin(), p.end());
  }
  return all;
}

// Framing and decoding, one byte per receive event as the links deliver them.
void BM_VantageReceivePath(benchmark::State& state) {
  const auto stream = loopStream(1000);
  nimbrel::ManualClock clock;
  nimbrel::TextLog log({}, clock);
  const nimbrel::LocalTime now = clock.local();
  std::uint64_t decoded = 0;
  for (auto _ : state) {
    nimbrel::ReceiveState receive;
    nimbrel::LiveRecord record;
    nimbrel::VantageDriver driver(receive, record, {}, nullptr, log);
    for (std::uint8_t b : stream) driver.receive(std::span(&b, 1), now);
    decoded += driver.counters().packetsDecoded;
    benchmark::DoNotOptimize(record.outtemp);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * stream.size()));
  state.counters["packets"] = benchmark::Counter(static_cast<double>(decoded), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_VantageReceivePath);

}  // namespace
