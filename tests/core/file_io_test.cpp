#include "core/file_io.h"

#include <gtest/gtest.h>

#include "core/clock.h"
#include "core/duty.h"
#include "support/temp_folder.h"

namespace nimbrel {
namespace {

namespace fs = std::filesystem;

std::string contents(const fs::path& file) { return readWholeFile(file).value_or("<missing>"); }

TEST(AtomicWrite, ReplacesTheFileAndLeavesNoTemporary) {
  testsupport::TempFolder dir;
  const auto file = dir / "clientraw.txt";
  ASSERT_TRUE(writeFileAtomically(file, "old"));
  ASSERT_TRUE(writeFileAtomically(file, "new contents"));
  EXPECT_EQ(contents(file), "new contents");
  EXPECT_FALSE(fs::exists(dir / "clientraw.txt.tmp"));
}

TEST(AtomicWrite, AFailedWriteKeepsTheOldFileAndSaysWhy) {
  testsupport::TempFolder dir;
  const auto file = dir / "NIMBREL.INI";
  ASSERT_TRUE(writeFileAtomically(file, "[a]\r\nb=1\r\n"));
  // A folder where the temporary file would go makes its creation fail
  // (permissions would not do: the tests may run as root).
  fs::create_directory(dir / "NIMBREL.INI.tmp");
  std::string error;
  EXPECT_FALSE(writeFileAtomically(file, "half", &error));
  EXPECT_NE(error.find("NIMBREL.INI.tmp"), std::string::npos) << error;
  EXPECT_EQ(contents(file), "[a]\r\nb=1\r\n");
  error.clear();
  EXPECT_FALSE(writeFileAtomically(dir / "no-such-folder" / "x.txt", "x", &error));
  EXPECT_FALSE(error.empty());
}

TEST(CopyAppendAndOverwrite, CreateExtendOrReplaceWhole) {
  testsupport::TempFolder dir;
  ASSERT_TRUE(writeFileAtomically(dir / "a.txt", "line1\r\n"));
  ASSERT_TRUE(appendToFile(dir / "a.txt", "line2\r\n"));
  ASSERT_TRUE(copyFileAtomically(dir / "a.txt", dir / "b.txt"));
  EXPECT_EQ(contents(dir / "b.txt"), "line1\r\nline2\r\n");
  EXPECT_FALSE(copyFileAtomically(dir / "missing.txt", dir / "c.txt"));
  EXPECT_FALSE(fs::exists(dir / "c.txt"));
  EXPECT_FALSE(readWholeFile(dir / "missing.txt"));

  const auto file = dir / "clientrawtemp.txt";
  ASSERT_TRUE(overwriteFile(file, "12345 one"));
  ASSERT_TRUE(overwriteFile(file, "12345 a longer line"));
  EXPECT_EQ(contents(file), "12345 a longer line");
  ASSERT_TRUE(overwriteFile(file, "12345 b"));  // no tail of the longer text is left
  EXPECT_EQ(contents(file), "12345 b");
  std::string error;
  EXPECT_FALSE(overwriteFile(dir / "no-such-folder" / "x.txt", "x", &error));
  EXPECT_FALSE(error.empty());
}

TEST(DutyWrapper, LogsTheFailureAndLetsTheNextDutyRun) {
  testsupport::TempFolder dir;
  ManualClock clock(fromLocalTime(2026, 11, 23, 10, 0, 0));
  TextLog errors(dir / kProgramErrorLogName, clock);
  int ran = 0;
  EXPECT_FALSE(runDuty(errors, "updateclientrawfilenow", [] { throw std::runtime_error("disk full"); }));
  EXPECT_FALSE(runDuty(errors, "logfile", [] { throw 42; }));
  EXPECT_TRUE(runDuty(errors, "housekeeping", [&] { ++ran; }));
  EXPECT_EQ(ran, 1);
  const std::string log = contents(errors.path());
  EXPECT_NE(log.find("error with updateclientrawfilenow disk full\n"), std::string::npos) << log;
  EXPECT_NE(log.find("error with logfile unknown error\n"), std::string::npos) << log;
  EXPECT_EQ(log.find("housekeeping"), std::string::npos);

  // A log that cannot be written says it on the terminal instead.
  TextLog unwritable(dir / "missing" / kProgramErrorLogName, clock);
  ::testing::internal::CaptureStderr();
  EXPECT_FALSE(runDuty(unwritable, "logfile", [] { throw std::runtime_error("x"); }));
  const std::string said = ::testing::internal::GetCapturedStderr();
  EXPECT_TRUE(unwritable.failing());
  EXPECT_NE(said.find("error with logfile x"), std::string::npos) << said;
}

}  // namespace
}  // namespace nimbrel
