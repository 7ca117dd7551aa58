#include "core/platform/durable_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "core/file_io.h"
#include "support/temp_folder.h"

namespace nimbrel::platform {
namespace {

TEST(AppendWhole, WritesTheHeaderOnlyIntoAnEmptyFile) {
  testsupport::TempFolder dir;
  const auto log = dir / "log.txt";
  bool wasEmpty = false;
  ASSERT_TRUE(appendWhole(log, "head\r\n", "one\r\n", &wasEmpty));
  EXPECT_TRUE(wasEmpty);
  ASSERT_TRUE(appendWhole(log, "head\r\n", "two\r\n", &wasEmpty));
  EXPECT_FALSE(wasEmpty);
  EXPECT_EQ(readWholeFile(log).value_or(""), "head\r\none\r\ntwo\r\n");
}

// A disk that fills up in the middle of a log line (every log appends through
// appendWithHeader): the part that went in is taken back, so the next line
// never starts glued to half of this one. The file size limit stands in for
// the full disk, in a child process so the limit stays there.
TEST(AppendWhole, ALineThatDoesNotFitIsTakenBackWhole) {
  testsupport::TempFolder dir;
  const auto log = dir / "log.txt";
  const std::string before = "head\r\n 1  7 2026  0 10 17.2\r\n";
  ASSERT_TRUE(writeWholeFile(log, before, false));
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{before.size() + 10, before.size() + 10};
    setrlimit(RLIMIT_FSIZE, &limit);
    const bool appended = appendWithHeader(log, "head\r\n", " 1  7 2026  0 11 17.3  85 14.7 1010.7\r\n");
    _exit(appended ? 2 : 0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0) << "the append did not report the failure";
  EXPECT_EQ(readWholeFile(log).value_or(""), before);
  ASSERT_TRUE(appendWithHeader(log, "head\r\n", "next\r\n"));
  EXPECT_EQ(readWholeFile(log).value_or(""), before + "next\r\n");
}

TEST(WriteWholeFile, WritesEmptyAndFullTextsAndReportsAnUnusablePath) {
  testsupport::TempFolder dir;
  ASSERT_TRUE(writeWholeFile(dir / "empty", "", true));
  EXPECT_EQ(readWholeFile(dir / "empty").value_or("x"), "");
  const std::string big(100000, 'x');
  ASSERT_TRUE(writeWholeFile(dir / "big", big, false));
  EXPECT_EQ(readWholeFile(dir / "big").value_or(""), big);
  EXPECT_FALSE(writeWholeFile(dir / "missing" / "file", "x", false));
}

}  // namespace
}  // namespace nimbrel::platform
