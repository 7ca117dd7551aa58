// libFuzzer target: arbitrary bytes through the Vantage receive path
// (framing, LOOP and HILOWS decoding, command dialogues), cut into receive
// events of varying sizes. Build and run with `./dev fuzz`.

#include <cstddef>
#include <cstdint>

#include "core/clock.h"
#include "core/text_log.h"
#include "stations/vantage_driver.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  nimbrel::ManualClock clock;
  nimbrel::TextLog log("/dev/null", clock);
  nimbrel::ReceiveState state;
  nimbrel::LiveRecord record;
  nimbrel::VantageOptions options;
  options.revb = (data[0] & 1) != 0;
  options.extraSensors = (data[0] & 2) != 0;
  options.rawLogging = (data[0] & 4) != 0;
  nimbrel::VantageDriver driver(state, record, options, nullptr, log);
  double maxGust = 0;
  driver.currentMaxGust = [&] { return maxGust; };
  driver.onConsoleDailyGust = [&](double g) { maxGust = g; };
  const nimbrel::LocalTime now = clock.local();
  const std::size_t chunk = 1 + data[1] % 128;
  for (std::size_t pos = 2; pos < size; pos += chunk) {
    const std::size_t n = pos + chunk <= size ? chunk : size - pos;
    if (data[pos] == 0x42) nimbrel::beginBlock(state);  // now and then a HILOWS answer is expected
    driver.receive({data + pos, n}, now);
    if (data[pos] == 0x17) driver.poll(now);
  }
  return 0;
}
