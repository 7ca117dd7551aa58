#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "publish/tags/log_minutes.h"
#include "publish/tags/tag_memory.h"
#include "publish/tags/vocabulary.h"
#include "support/tag_world.h"

namespace nimbrel {
namespace {

using testsupport::TagWorld;

// Metric log lines of 15 June 2026 from `fromMinute` to `toMinute` (minutes
// of the day), rain falling every tenth minute; `warmer` shifts the
// temperature so that a rewritten log reads differently.
std::string juneLines(int fromMinute, int toMinute, double warmer = 0) {
  std::string text;
  for (int m = fromMinute; m <= toMinute; ++m) {
    const double rain = m % 10 == 0 ? 0.2 : 0.0;
    text += "15 6 2026 " + std::to_string(m / 60) + " " + std::to_string(m % 60) + " " +
            std::to_string(15.0 + warmer + m % 7 * 0.3) + " 70 9.5 1012.3 4.0 7.5 " + std::to_string(m % 360) +
            " " + std::to_string(rain) + " 1.0 20.0 300.0 15.0\r\n";
  }
  return text;
}

void writeLog(const TagWorld& world, const std::string& lines, std::ios::openmode mode = std::ios::trunc) {
  std::ofstream out(world.folder.path() / "62026lg.txt", std::ios::binary | std::ios::out | mode);
  if (mode == std::ios::trunc) out << "day month year hour minute temperature humidity dewpoint\r\n";
  out << lines;
}

// Every tag's text but the machine's own figures, which change by themselves.
std::map<std::string, std::string> everyTag(TagWorld& world) {
  std::map<std::string, std::string> texts;
  for (const TagDef& def : vocabulary().tags()) {
    const std::string_view name = def.name;
    if (name == "memoryused" || name == "freememory" || name == "windowsuptime") continue;
    texts[std::string(name)] = world.text(name);
  }
  return texts;
}

TEST(TagMemory, AppendedLinesAreReadAloneAndARewrittenLogAgain) {
  TagWorld world;  // 15 June 2026, 14:30
  writeLog(world, juneLines(0, 599));
  LogMinutes logs(world.folder.path(), LogReading{});
  const LogMonth june{6, 2026};
  ASSERT_EQ(logs.month(june).size(), 600u);
  const LogMinutes::Version first = logs.version(june);

  // Lines appended, the last one still being written: the whole ones count.
  writeLog(world, juneLines(600, 609) + "15 6 2026 10 10 15.0", std::ios::app);
  logs.beginFill();
  ASSERT_EQ(logs.month(june).size(), 610u);
  const LogMinutes::Version grown = logs.version(june);
  EXPECT_EQ(grown.generation, first.generation);
  EXPECT_NE(grown.version, first.version);
  writeLog(world, " 70 9.5 1012.3 4.0 7.5 10 0.0 1.0 20.0 300.0 15.0\r\n", std::ios::app);
  logs.beginFill();
  ASSERT_EQ(logs.month(june).size(), 611u);
  EXPECT_EQ(logs.month(june).back().minute, civilMinute(2026, 6, 15, 10, 10));
  EXPECT_EQ(logs.version(june).generation, first.generation);

  // Within a fill the file is looked at once: a rewrite waits for the next.
  writeLog(world, juneLines(0, 99, 5.0));
  EXPECT_EQ(logs.month(june).size(), 611u);

  // Truncated and rewritten: read again from its start.
  logs.beginFill();
  ASSERT_EQ(logs.month(june).size(), 100u);
  EXPECT_NE(logs.version(june).generation, first.generation);
  EXPECT_DOUBLE_EQ(logs.month(june).front().temperature(), 20.0);

  std::filesystem::remove(world.folder.path() / "62026lg.txt");
  logs.beginFill();
  EXPECT_TRUE(logs.month(june).empty());
}

// A memory carried over fills gives every tag the text a fresh one gives,
// after the log grew and after it was rewritten.
TEST(TagMemory, KeptAcrossFillsGivesWhatAFreshFillGives) {
  TagWorld world;
  world.options.position = {51.5, -0.12, 10.0};
  world.record.outtemp = 18.0;
  world.reading();
  writeLog(world, juneLines(0, 700));
  const auto before = everyTag(world);

  writeLog(world, juneLines(701, 869), std::ios::app);
  const auto grown = everyTag(world);
  world.memory = TagMemory{};
  EXPECT_EQ(grown, everyTag(world));
  EXPECT_NE(grown.at("hourrn"), before.at("hourrn"));  // the appended rain is seen

  writeLog(world, juneLines(0, 869, 3.0));
  const auto rewritten = everyTag(world);
  world.memory = TagMemory{};
  EXPECT_EQ(rewritten, everyTag(world));
  EXPECT_NE(rewritten.at("avtempsincemidnight"), grown.at("avtempsincemidnight"));
}

}  // namespace
}  // namespace nimbrel
