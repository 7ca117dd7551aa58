#include "datafiles/log_append.h"

#include <gtest/gtest.h>

#include "core/clock.h"
#include "core/file_io.h"
#include "core/text_log.h"
#include "support/temp_folder.h"

namespace nimbrel {
namespace {

TEST(LogAppend, TheHeaderIsWrittenOnceWhenTheLogIsCreated) {
  testsupport::TempFolder dir;
  ManualClock clock;
  TextLog errors(dir / "programerrorlog.txt", clock);
  IoStatus status;
  EXPECT_EQ(appendLogLine(dir / "a.txt", "head\r\n", "one\r\n", status, errors), LogAppend::Created);
  EXPECT_EQ(appendLogLine(dir / "a.txt", "head\r\n", "two\r\n", status, errors), LogAppend::Appended);
  EXPECT_EQ(readWholeFile(dir / "a.txt").value_or(""), "head\r\none\r\ntwo\r\n");
}

TEST(LogAppend, AFailureIsLoggedOnceLosesNothingAndTheNextCallTriesAgain) {
  testsupport::TempFolder dir;
  ManualClock clock;
  TextLog errors(dir / "programerrorlog.txt", clock);
  IoStatus status;
  ASSERT_EQ(appendLogLine(dir / "logs" / "a.txt", "h\r\n", "x\r\n", status, errors), LogAppend::Failed);
  EXPECT_TRUE(status.failing);
  EXPECT_NE(status.lastResult, 0);
  ASSERT_EQ(appendLogLine(dir / "logs" / "a.txt", "h\r\n", "y\r\n", status, errors), LogAppend::Failed);
  const std::string log = readWholeFile(errors.path()).value_or("");
  EXPECT_EQ(log.find("cannot write the log"), log.rfind("cannot write the log")) << log;
  std::filesystem::create_directory(dir / "logs");  // the folder comes back
  EXPECT_EQ(appendLogLine(dir / "logs" / "a.txt", "h\r\n", "z\r\n", status, errors), LogAppend::Created);
  EXPECT_FALSE(status.failing);
  EXPECT_EQ(status.lastResult, 0);
  EXPECT_EQ(readWholeFile(dir / "logs" / "a.txt").value_or(""), "h\r\nz\r\n");
}

// A full disk: every log fails every minute. Each is reported once an hour,
// not once a minute; the line that did not fit is not half in the file.
TEST(LogAppend, AFullDiskIsReportedOnceAnHourPerLog) {
  testsupport::TempFolder dir;
  ManualClock clock(fromLocalTime(2026, 11, 17, 10, 0, 0));
  TextLog errors(dir / "programerrorlog.txt", clock);
  IoStatus status;
  for (int minute = 0; minute < 90; ++minute, clock.advance(std::chrono::minutes(1)))
    for (const char* log : {"a.txt", "b.txt"})
      ASSERT_EQ(appendLogLine(dir / "full" / log, "h\r\n", "x\r\n", status, errors), LogAppend::Failed);
  const std::string text = readWholeFile(errors.path()).value_or("");
  std::size_t lines = 0;
  for (char c : text) lines += c == '\n';
  EXPECT_EQ(lines, 4u) << text;  // a.txt and b.txt at 10:00 and again at 11:00
  EXPECT_NE(text.find("2026-11-17 11:00:00 cannot write the log " + (dir / "full" / "b.txt").string()),
            std::string::npos)
      << text;
}

}  // namespace
}  // namespace nimbrel
