#include "publish/pages/page_jobs.h"

#include <gtest/gtest.h>

#include <fmt/format.h>

#include <asio/io_context.hpp>
#include <asio/executor_work_guard.hpp>
#include <asio/post.hpp>

#include "core/file_io.h"
#include "publish/pages/background_fills.h"
#include "support/tag_world.h"

namespace nimbrel {
namespace {

using std::chrono::seconds;

TEST(PageJobs, TheSwitchedOnOutputsAndTheLocalPage) {
  testsupport::MemorySettingsStore settings;
  settings.WriteString("Custom text out", "make", "yes");
  settings.WriteString("Custom text out", "make3", "yes");
  settings.WriteString("Custom text out", "seconds3", "2");  // below the shortest: the default
  settings.WriteString("Custom text out", "append3", "yes");
  settings.WriteString("Custom text out", "template3", "speech.txt");
  settings.WriteString("Custom text out", "make2", "Yes");  // only "yes" switches on
  settings.WriteString("Use my own template", "file extension", "php");
  const auto jobs = readPageJobs(settings);
  ASSERT_EQ(jobs.size(), 3u);
  EXPECT_EQ(jobs[0].templateName, "customtext.txt");
  EXPECT_EQ(jobs[0].outputName, "customtextout.txt");
  EXPECT_FALSE(jobs[0].append);
  EXPECT_EQ(jobs[1].templateName, "speech.txt");
  EXPECT_EQ(jobs[1].outputName, "customtextout3.txt");
  EXPECT_EQ(jobs[1].everySeconds, 60);
  EXPECT_TRUE(jobs[1].append);
  EXPECT_EQ(jobs[2].templateName, "wxlocal.html");
  EXPECT_EQ(jobs[2].outputName, "wx.php");
}

TEST(PageJobs, DueAtTheirIntervalAndThePageOnceAMinute) {
  PageSchedule schedule({PageJob{"a.txt", "customtextout.txt", 30, false}, PageJob{"wxlocal.html", "wx.html", 0}});
  const SystemTime start = fromLocalTime(2026, 6, 15, 14, 30, 0);
  std::vector<std::string> fills;
  for (int s = 0; s < 150; ++s) {
    const SystemTime now = start + seconds(s);
    for (const PageJob* job : schedule.due(now, toLocalTime(now)))
      fills.push_back(fmt::format("{}@{}", job->outputName, s));
  }
  EXPECT_EQ(fills, (std::vector<std::string>{"customtextout.txt@0", "wx.html@15", "customtextout.txt@30",
                                             "customtextout.txt@60", "wx.html@75", "customtextout.txt@90",
                                             "customtextout.txt@120", "wx.html@135"}));
  // A clock set back does not silence a page until it catches up.
  EXPECT_EQ(schedule.due(start, toLocalTime(start)).size(), 1u);
}

TEST(BackgroundFills, FillsOnItsOwnThreadAndReportsBackOnTheStations) {
  testsupport::TagWorld world;
  world.record.outtemp = 7.5;
  world.reading();
  IniDocument settings;
  asio::io_context io;
  const auto keepWaiting = asio::make_work_guard(io);  // run_one waits for the fills' reports
  std::vector<std::string> messages;
  BackgroundFills fills([&io](std::function<void()> work) { asio::post(io, std::move(work)); },
                        [&messages](const std::string& m) { messages.push_back(m); });
  ASSERT_TRUE(writeFileAtomically(world.folder / "customtext.txt", "%temp%\n"));
  const auto snapshot = [&] {
    return std::make_unique<TagSnapshot>(TagSources{world.record, world.statistics, world.units, settings,
                                                    world.clock.now(), true, world.folder.path()});
  };
  ASSERT_TRUE(fills.start(snapshot(), {world.folder.path(), "customtext.txt", "customtextout.txt"}, true));
  EXPECT_FALSE(fills.start(snapshot(), {world.folder.path(), "customtext.txt", "customtextout.txt"}, true));
  ASSERT_TRUE(fills.start(snapshot(), {world.folder.path(), "missing.txt", "customtextout2.txt"}, false));
  while (fills.finished() < 2) io.run_one();
  EXPECT_FALSE(fills.busy("customtextout.txt"));
  EXPECT_EQ(readWholeFile(world.folder / "customtextout.txt"), "7.5\r\n");
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_EQ(messages[0].rfind("Custom file does not exist ", 0), 0u) << messages[0];
  // Appended, as its switch says.
  ASSERT_TRUE(fills.start(snapshot(), {world.folder.path(), "customtext.txt", "customtextout.txt"}, true));
  while (fills.finished() < 3) io.run_one();
  EXPECT_EQ(readWholeFile(world.folder / "customtextout.txt"), "7.5\r\n7.5\r\n");
}

}  // namespace
}  // namespace nimbrel
