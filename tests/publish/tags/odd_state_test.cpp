// Every tag of the vocabulary through states a station can really be in at
// the edges: no reading yet, readings that are not numbers, the poles, the
// last second of a leap day and of a year, a clock change, settings with
// damaged values. A tag may say "---"; it may not fail, and no number may
// come out as "nan" or "inf".

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <regex>

#include "publish/tags/vocabulary.h"
#include "publish/template/custom_web_page.h"
#include "support/tag_world.h"
#include "support/time_zone.h"

namespace nimbrel {
namespace {

void expectEveryTagWritten(testsupport::TagWorld& world, const std::string& state) {
  std::vector<std::string> page;
  for (const TagDef& def : vocabulary().tags()) page.push_back(def.name + "=%" + def.name + "%");
  std::vector<std::string> errors;
  const TagContext context = world.context();
  const VocabularyChain chain(vocabulary(), context);
  const auto filled = fillTemplate(page, "testtags.txt", chain.chain(), TagRun{true},
                                   [&errors](std::string_view m) { errors.emplace_back(m); });
  EXPECT_TRUE(errors.empty()) << state << ": " << errors.front();
  static const std::regex notANumber("(^|[^a-z])-?(nan|inf)([^a-z]|$)", std::regex::icase);
  for (const std::string& line : filled) {
    const std::string value = line.substr(line.find('=') + 1);
    EXPECT_FALSE(std::regex_search(value, notANumber)) << state << ": " << line;
  }
}

TEST(OddStates, EveryTagIsWrittenWhateverTheStationsState) {
  const testsupport::ScopedTimeZone london;
  {
    testsupport::TagWorld world;
    expectEveryTagWritten(world, "before the first reading");
  }
  {
    testsupport::TagWorld world;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    world.readingsSeen = true;
    world.record.outtemp = nan;
    world.record.windspeed = std::numeric_limits<double>::infinity();
    world.record.barometer = 0;
    world.record.uv = nan;
    world.record.solar = -5;
    world.record.rainrate = nan;
    world.options.position.latitude = 90;
    world.options.position.longitude = 180;
    expectEveryTagWritten(world, "readings that are not numbers, at the north pole");
  }
  for (const SystemTime at : {fromLocalTime(2028, 2, 29, 23, 59, 59), fromLocalTime(2026, 12, 31, 23, 59, 30),
                              fromLocalTime(2026, 3, 29, 1, 30, 0), fromLocalTime(2026, 10, 25, 1, 30, 0)}) {
    testsupport::TagWorld world(at);
    world.record.outtemp = -45;
    world.record.outhum = 100;
    world.record.windspeed = world.record.windgust = 120;
    world.record.barometer = 880;
    world.record.uv = 16;
    world.reading();
    world.options.position.latitude = -90;
    world.options.position.longitude = -180;
    world.settings.WriteString("Daily high temperature yest", "number2", "warm");
    world.settings.WriteString("Record high temperature", "values", "99999 1 13 2026");
    world.settings.WriteString("Record monthly high temp", "feb", "-");
    world.settings.WriteString("Height above sea level", "value", "-400");
    expectEveryTagWritten(world, formatLocalTime(toLocalTime(at)) + " at the south pole");
  }
}

}  // namespace
}  // namespace nimbrel
