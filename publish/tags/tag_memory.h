#pragma once
// What the tags keep from one fill to the next, owned by whoever fills
// (the background fills' worker, `nimbrel tags`, a test's world, the
// benchmark) and handed to the tags through the context. It is used from one
// thread at a time: no locks.
//
// It holds the monthly logs' minutes (a few months, the current one read on
// by its appended lines), the climate's figures of each day of the months
// asked for and the days with rain of each month, each renewed when its
// month's log changes, and the sun's times of the latest day asked for.
// Its size stays bounded whatever the age of the station's logs.

#include <filesystem>
#include <map>
#include <optional>

#include "publish/tags/almanac/almanac_day.h"
#include "publish/tags/almanac/last_rain.h"
#include "publish/tags/climate_logs.h"
#include "publish/tags/log_minutes.h"

namespace nimbrel {

class TagMemory {
 public:
  // The logs of `folder` read as `reading`; another folder or reading starts
  // afresh (and so do the summaries of their months).
  LogMinutes& logs(const std::filesystem::path& folder, const LogReading& reading);

  // Summaries by month (year * 12 + month - 1) of the logs above.
  std::map<int, ClimateMonth> climateMonths;
  std::map<int, almanac::RainDays> rainMonths;
  std::map<int, SunMonth> sunMonths;  // evapotranspiration of each day, from the sun logs
  // The sun's events of one local day at one place.
  std::optional<almanac::SunDayEvents> sunEvents;
  std::optional<almanac::MoonDayEvents> moonEvents;
  // The moon's phases and apsides already worked out.
  astro::Memo astro;

 private:
  std::optional<LogMinutes> logs_;
};

}  // namespace nimbrel
