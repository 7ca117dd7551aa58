#pragma once
// The vocabulary's tables, one per replacer, each in its own file:
//   1  tags_current.cpp      current readings, derived values, unit variants, words
//   2  tags_today.cpp        today's and yesterday's extremes, changes, recent maxima
//   3  tags_records.cpp      all-time, month and year records
//   4  tags_climate.cpp      averages, month- and year-to-date, climate counts
//   5  tags_almanac.cpp      date and time forms, sun, moon, seasons, the station
//   6  tags_sensors.cpp      Davis extra, soil and leaf sensors, other extra channels
//   6b tags_other_stations.cpp  sensors of other station makes
//   7  tags_services.cpp     forecasts, METAR, lightning, snow, fire index, the program

#include <vector>

#include "publish/tags/tag_def.h"

namespace nimbrel {

std::vector<TagDef> currentTags();
std::vector<TagDef> todayTags();
std::vector<TagDef> recordTags();
std::vector<TagDef> climateTags();
std::vector<TagDef> almanacTags();
std::vector<TagDef> sensorTags();
std::vector<TagDef> otherStationTags();
std::vector<TagDef> serviceTags();

}  // namespace nimbrel
