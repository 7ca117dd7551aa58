#pragma once
// Summaries that several tags share and that cost more than a glance at the
// live record (a month of the log read back, the sun's times for today):
// worked out when a tag of the fill first asks, kept for the rest of that
// fill only. Each family of tags keeps its own member here.

#include <optional>

#include "publish/tags/climate_logs.h"

namespace nimbrel {

struct TagCaches {
  // Climate tags (tags_climate.cpp): the monthly logs read back, each month
  // at most once per fill, only the months the fill's tags ask for.
  std::optional<ClimateLogs> climate;
};

}  // namespace nimbrel
