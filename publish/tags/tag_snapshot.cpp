#include "publish/tags/tag_snapshot.h"

#include "publish/tags/tag_format.h"

namespace nimbrel {
namespace {

HeaderTimeStyle timeStyle(const UnitSettings& units) {
  return units.units.webDateShown() == UnitSystem::usa ? HeaderTimeStyle::TwelveHour : HeaderTimeStyle::PaddedDay;
}

}  // namespace

TagSnapshot::TagSnapshot(const TagSources& sources)
    : live_(sources.live),
      stats_(sources.stats),
      units_(sources.units),
      settings_(sources.settings),
      options_(readTagOptions(settings_, units_)),
      instant_(sources.instant),
      readingsSeen_(sources.readingsSeen),
      logFolder_(sources.logFolder),
      runningProgram_(sources.runningProgram) {}

TagContext TagSnapshot::context(TagMemory& memory) {
  caches_ = TagCaches{};
  return TagContext{live_,         stats_,     units_,  settings_, options_, instant_, toLocalTime(instant_),
                    readingsSeen_, logFolder_, caches_, memory,   runningProgram_};
}

RawHeaderValues TagSnapshot::rawHeader() const {
  const UnitChoicesSettings& choices = units_.units;
  const auto shown = [&choices](Unit family, double value) { return shownValue(value, family, choices); };
  RawHeaderValues values;
  values.time = toLocalTime(instant_);
  values.timeStyle = timeStyle(units_);
  values.temperature = shown(Unit::temperature, live_.outtemp);
  values.humidity = live_.outhum;
  values.dewPoint = shown(Unit::temperature, live_.dewpoint);
  values.averageWind = shown(Unit::speed, live_.windspeed);
  values.gust = shown(Unit::speed, live_.windgust);
  values.direction = live_.winddir;
  values.pressure = shown(Unit::pressure, live_.barometer);
  values.rainToday = shown(Unit::rain, live_.dailyrain);
  values.rainMonth = shown(Unit::rain, live_.monthlyrain);
  values.rainYear = shown(Unit::rain, live_.yearlyrain);
  values.rainRate = shown(Unit::rain, live_.rainrate);
  return values;
}

}  // namespace nimbrel
