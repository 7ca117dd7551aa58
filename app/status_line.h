#pragma once
// The one-line summary of the running program shown on a terminal: program
// time, the main readings (internal units), the station link's packet
// counts and the files last written.

#include <cstdint>
#include <string>

#include "core/clock.h"
#include "core/live_record.h"

namespace nimbrel {

struct StatusFacts {
  LocalTime now;
  const LiveRecord* record = nullptr;
  bool haveData = false;  // false until the first reading has come in
  std::uint64_t packetsDecoded = 0;
  std::uint64_t packetsRejected = 0;
  std::string lastLogFile;  // file name only; empty before the first
  std::uint64_t clientrawWrites = 0;
};

std::string formatStatusLine(const StatusFacts& facts);

// `line` cut to at most `columns` characters (UTF-8 aware), so that it never
// wraps; 0 columns leaves it whole.
std::string fitToColumns(std::string line, int columns);

}  // namespace nimbrel
