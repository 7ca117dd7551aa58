#pragma once
// One sent LOOP packet as a line of JSON, for the simulator's record file:
// {"sequence":1,"time":"2026-07-04 13:05:08.000","corrupted":false,
//  "rain_total_clicks":0,"reading":{"barometer":30012,...}}
// Absent sensors are null. Numbers are written with {fmt}, so the text is
// the same in every locale.

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#include "tools/vantage_sim/console.h"

namespace nimbrel::sim {

std::string packetRecordLine(const SentPacket& packet);

struct RecordFileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using RecordFile = std::unique_ptr<std::FILE, RecordFileCloser>;

// Opens `path` for appending and has `console` write one record line to it
// for every LOOP packet it sends, until the file is closed (the console must
// not send after that); null when the file cannot be opened.
RecordFile recordPacketsTo(Console& console, const std::filesystem::path& path);

}  // namespace nimbrel::sim
