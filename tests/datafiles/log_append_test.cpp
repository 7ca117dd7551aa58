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

}  // namespace
}  // namespace nimbrel
