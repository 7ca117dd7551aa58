#include "app/decode_command.h"

#include <fmt/format.h>

#include <memory>
#include <vector>

#include "core/clock.h"
#include "core/live_record_json.h"
#include "core/text_log.h"
#include "stations/station_types.h"
#include "stations/vantage_driver.h"

namespace nimbrel {
namespace {

struct FileCloser {
  void operator()(std::FILE* f) const {
    if (f != stdin) std::fclose(f);
  }
};

}  // namespace

int runDecode(const DecodeRequest& request, std::FILE* out, std::FILE* err) {
  const std::uint16_t type = stationTypeFromName(request.stationName);
  if (type == stationtype::none) {
    fmt::print(err, "nimbrel decode: \"{}\" is not a station name (use a name such as \"DAVIS VANTAGE PRO\")\n",
               request.stationName);
    return 2;
  }
  if (type != stationtype::vantagePro) {
    fmt::print(err, "nimbrel decode: no decoder for \"{}\" (station type {}) yet\n", request.stationName, type);
    return 2;
  }
  const bool fromStdin = request.file.empty() || request.file == "-";
  std::unique_ptr<std::FILE, FileCloser> in(fromStdin ? stdin : std::fopen(request.file.c_str(), "rb"));
  if (!in) {
    fmt::print(err, "nimbrel decode: cannot read {}\n", request.file);
    return 2;
  }

  // The live program's path: the Vantage receive handler and decoder, one
  // byte per receive event, with no console to talk to.
  ManualClock clock;
  TextLog terminalLog({}, clock);
  ReceiveState state;
  LiveRecord record;
  VantageOptions options;
  options.revb = request.revb;
  options.extraSensors = request.extraSensors;
  VantageDriver driver(state, record, options, nullptr, terminalLog);
  std::uint64_t frames = 0;
  driver.onReading = [&] { fmt::print(out, "{}\n", liveRecordJson(record)); ++frames; };

  std::vector<std::uint8_t> chunk(4096);
  std::size_t n = 0;
  const LocalTime now = clock.local();
  while ((n = std::fread(chunk.data(), 1, chunk.size(), in.get())) > 0)
    for (std::size_t i = 0; i < n; ++i) driver.receive(std::span(&chunk[i], 1), now);
  fmt::print(err, "{} frames decoded, {} rejected (bad CRC)\n", frames, driver.counters().packetsRejected);
  return 0;
}

}  // namespace nimbrel
