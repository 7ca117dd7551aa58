#pragma once
// The live record as the last "clientraw.txt" left it: for tools that look
// at a program folder without running the station (a template preview).
// Fields the file shows as "---", or that do not parse, keep the record's
// starting values.

#include "core/live_record.h"
#include "datafiles/clientraw_reader.h"

namespace nimbrel {

// `rainRatePerHour`: the unit of the record's rain rate (the file holds mm
// per minute).
LiveRecord liveRecordFromClientraw(const ClientrawReading& reading, bool rainRatePerHour);

}  // namespace nimbrel
