#include "publish/tags/page_fill.h"

#include <gtest/gtest.h>

#include "core/file_io.h"
#include "publish/tags/vocabulary.h"
#include "publish/template/template_lines.h"
#include "support/tag_world.h"

namespace nimbrel {
namespace {

// Templates filled with the whole vocabulary, as the program fills them.
class PageFill : public ::testing::Test {
 protected:
  PageFill() {
    world.record.outtemp = 12.34;
    world.record.outhum = 60;
    world.reading();
  }
  std::string line(std::string text, bool displayUnits = false, std::string_view templateName = "page.html") {
    const TagContext context = world.context();
    const VocabularyChain chain(vocabulary(), context);
    TagRun run;
    run.displayUnits = displayUnits;
    const auto filled = fillTemplate({std::move(text)}, templateName, chain.chain(), run, [](std::string_view) {});
    return filled.front();
  }
  TagSnapshot snapshot() {
    return TagSnapshot(TagSources{world.record, world.statistics, world.units, document, world.clock.now(), true,
                                  world.folder.path()});
  }

  testsupport::TagWorld world;
  IniDocument document;
};

TEST_F(PageFill, TheEdgesOwnersMeet) {
  EXPECT_EQ(line("%temp%", true), "12.3°C");
  world.units.units.temperature = TemperatureUnit::fahrenheit;
  EXPECT_EQ(line("%temp%", true), "54.2°F");
  EXPECT_EQ(line("100%%temp%"), "100%54.2");
  EXPECT_EQ(line("50% humidity %hum%"), "50% humidity 60");
  EXPECT_EQ(line("%Temp% %temp %tem%"), "%Temp% %temp %tem%");
  for (double uv : {0.0, 25.0}) {
    world.record.uv = uv;
    EXPECT_EQ(line("%burntime%"), "---") << uv;
  }
}

TEST_F(PageFill, ALongValueEarlyOnALineLeavesTheLastTagsUnreplaced) {
  const std::string name(60, 'N');
  world.units.connections.stationName = name;
  world.record.stationname = name;
  // 41 characters scanned to 51: the first name pushes the others beyond.
  EXPECT_EQ(line("%stationname% %stationname% %stationname%"), name + " %stationname% %stationname%");
  // The margin of the test page reaches the second one.
  EXPECT_EQ(line("%stationname% %stationname% %stationname%", false, "testtags.txt"),
            name + " " + name + " %stationname%");
}

TEST_F(PageFill, APageFromASnapshotKeepsTheMomentItWasTaken) {
  document.set("Use my own template", "raw data in header", "yes");
  TagSnapshot taken = snapshot();
  world.record.outtemp = 30;  // the station goes on
  ASSERT_TRUE(writeFileAtomically(world.folder / "wxlocal.html", "<p>%temp%</p>\n"));
  std::vector<std::string> messages;
  const TemplateJob job{world.folder.path(), "wxlocal.html", "wx.html"};
  ASSERT_TRUE(fillPage(job, taken, false, [&](std::string_view m) { messages.emplace_back(m); }, world.memory));
  const std::string page = readWholeFile(world.folder / "wx.html").value_or("");
  EXPECT_EQ(page.substr(0, 19), "<META RAW MET DATA ");
  EXPECT_NE(page.find(",tmp 12.3,"), std::string::npos) << page;
  EXPECT_NE(page.find("<p>12.3</p>\r\n"), std::string::npos) << page;
  EXPECT_TRUE(messages.empty());
}

}  // namespace
}  // namespace nimbrel
