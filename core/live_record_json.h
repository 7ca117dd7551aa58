#pragma once
// The live record as one line of JSON, fields under their own names and in
// internal units; numbered channels as arrays from channel 1. Used by the
// decode tool and by tests that compare decoded captures.

#include <string>

#include "core/live_record.h"

namespace nimbrel {

std::string liveRecordJson(const LiveRecord& record);

}  // namespace nimbrel
