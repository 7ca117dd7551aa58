#pragma once
// Builds the one line of "clientraw.txt" from the live record and the day's
// statistics. Every value is in the record's internal units (knots, degrees
// C, hPa, mm, mm per minute for rain rates); see clientraw_layout.h for the
// positions and docs/clientraw.md for each field's format.

#include <string>
#include <string_view>

#include "core/clock.h"

namespace nimbrel {

struct ClientrawOptions;
struct LiveRecord;
class StationStatistics;

// What the line is made from. `now` gives the time and date fields.
struct ClientrawSources {
  const LiveRecord& record;
  const StationStatistics& statistics;
  const LocalTime& now;
  std::string_view stationName;
};

struct ClientrawText {
  std::string line;  // the whole file: every field followed by one blank, the trailer last
  // The fields from the hour onward (the trailer left out), each followed by
  // one blank: the text other parts read without opening the file.
  std::string fromTimeFields;
};

ClientrawText buildClientrawText(const ClientrawSources& sources, const ClientrawOptions& options);

// The trailer field, "!!C" + version + "b" + build + "!!".
std::string clientrawTrailer();

}  // namespace nimbrel
