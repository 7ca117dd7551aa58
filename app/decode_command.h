#pragma once
// `nimbrel decode`: feeds a capture of what a station sent through the live
// program's receive path and prints one JSON line per decoded frame.

#include <cstdio>
#include <string>

namespace nimbrel {

struct DecodeRequest {
  std::string stationName;  // a stored station name, e.g. "DAVIS VANTAGE PRO"
  std::string file;         // empty or "-": standard input
  bool revb = false;
  bool extraSensors = false;
};

// Returns the process exit status: 0 when the capture was read, 2 when the
// station name or the file is unusable.
int runDecode(const DecodeRequest& request, std::FILE* out, std::FILE* err);

}  // namespace nimbrel
