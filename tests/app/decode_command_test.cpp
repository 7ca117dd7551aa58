#include "app/decode_command.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "support/temp_folder.h"
#include "tools/vantage_sim/loop_packet.h"

namespace nimbrel {
namespace {

// Runs `nimbrel decode` on a capture file and returns what it printed.
struct DecodeRun {
  int status = 0;
  std::string out, err;
};

DecodeRun decodeCapture(const std::string& bytes, const std::string& stationName, bool revb = false) {
  DecodeRequest request;
  request.stationName = stationName;
  request.revb = revb;
  testsupport::TempFolder dir;
  const auto capture = (dir / "capture.bin").string();
  std::FILE* f = std::fopen(capture.c_str(), "wb");
  std::fwrite(bytes.data(), 1, bytes.size(), f);
  std::fclose(f);
  request.file = capture;
  std::FILE* out = std::tmpfile();
  std::FILE* err = std::tmpfile();
  DecodeRun run;
  run.status = runDecode(request, out, err);
  for (auto [file, text] : {std::pair{out, &run.out}, std::pair{err, &run.err}}) {
    std::rewind(file);
    char buffer[4096];
    for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, file)) > 0;) text->append(buffer, n);
    std::fclose(file);
  }
  return run;
}

std::string capture(int packets, bool revb) {
  std::string bytes(1, '\x06');
  for (int i = 0; i < packets; ++i) {
    sim::ConsoleReading r;
    r.barometer = 29921;
    r.outsideTemperature = static_cast<std::int16_t>(-15 + i);  // -1.5 F and up
    r.outsideHumidity = 80;
    r.windDirection = static_cast<std::uint16_t>(100 + i);
    const auto packet = sim::encodeLoopPacket(r, revb);
    bytes.append(packet.begin(), packet.end());
  }
  return bytes;
}

TEST(DecodeCommand, PrintsOneJsonLinePerDecodedFrame) {
  for (bool revb : {false, true}) {
    const DecodeRun run = decodeCapture(capture(5, revb), "DAVIS VANTAGE PRO", revb);
    EXPECT_EQ(run.status, 0);
    // The first packet brings the frame into line, the last waits for a header.
    EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 3) << run.out;
    EXPECT_NE(run.out.find("\"winddir\":101,"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("\"outhum\":80,"), std::string::npos);
    EXPECT_NE(run.err.find("3 frames decoded, 0 rejected"), std::string::npos) << run.err;
  }
}

TEST(DecodeCommand, RefusesUnknownNamesAndMissingFiles) {
  DecodeRun run = decodeCapture("", "davis vantage pro");
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.err.find("is not a station name"), std::string::npos);
  run = decodeCapture("", "WMR968");
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.err.find("no decoder"), std::string::npos);
  std::FILE* out = std::tmpfile();
  std::FILE* err = std::tmpfile();
  DecodeRequest missing;
  missing.stationName = "DAVIS VANTAGE PRO";
  missing.file = "/nonexistent/capture.bin";
  EXPECT_EQ(runDecode(missing, out, err), 2);
  std::fclose(out);
  std::fclose(err);
}

}  // namespace
}  // namespace nimbrel
