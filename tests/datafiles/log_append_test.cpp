#include "datafiles/log_append.h"

#include <gtest/gtest.h>

#include "core/clock.h"
#include "core/file_io.h"
#include "core/text_log.h"
#include "support/temp_folder.h"

namespace nimbrel {
namespace {

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
