#include "app/status_line.h"

#include <fmt/format.h>

#include "core/number_format.h"

namespace nimbrel {
namespace {

std::string readings(const LiveRecord& record) {
  return fmt::format("{}°C {}%  wind {} gust {} kn  {} hPa  rain {} mm", fixed(record.outtemp, 0, 1),
                     record.outhum, fixed(record.windspeed, 0, 1), fixed(record.windgust, 0, 1),
                     fixed(record.barometer, 0, 1), fixed(record.dailyrain, 0, 1));
}

std::string files(const StatusFacts& facts) {
  if (facts.lastLogFile.empty() && facts.clientrawWrites == 0) return "no files yet";
  std::string text = "wrote";
  if (!facts.lastLogFile.empty()) text += " " + facts.lastLogFile;
  if (facts.clientrawWrites > 0) text += " clientraw.txt";
  return text;
}

}  // namespace

std::string fitToColumns(std::string line, int columns) {
  if (columns <= 0) return line;
  int seen = 0;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const bool startsCharacter = (static_cast<unsigned char>(line[i]) & 0xC0) != 0x80;
    if (startsCharacter && ++seen > columns) {
      line.resize(i);
      break;
    }
  }
  return line;
}

std::string formatStatusLine(const StatusFacts& facts) {
  const std::string weather = facts.haveData && facts.record ? readings(*facts.record) : "waiting for the station";
  return fmt::format("{}  {}  packets {} ok {} bad  {}", formatLocalTime(facts.now), weather,
                     facts.packetsDecoded, facts.packetsRejected, files(facts));
}

}  // namespace nimbrel
