// An owner's settings file is never lost: one that cannot be read is left as
// it is, and one with damaged or repeated lines is kept beside itself before
// the program first rewrites it.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/clock.h"
#include "core/file_io.h"
#include "core/ini_store.h"
#include "core/text_log.h"
#include "support/temp_folder.h"
#include "support/unprivileged_child.h"

namespace nimbrel {
namespace {

namespace fs = std::filesystem;

constexpr const char* kKeptName = "NIMBREL.INI.damaged-20260310-080509";

class SettingsDamage : public ::testing::Test {
 protected:
  fs::path file() const { return folder_ / "NIMBREL.INI"; }
  std::string read(const fs::path& path) const { return readWholeFile(path).value_or("<missing>"); }
  std::string logText() const { return read(log_.path()); }

  // Opens the store on `original`, changes one key and saves: what the
  // program does within its first minute.
  void openChangeAndSave(const std::string& original) {
    ASSERT_TRUE(writeFileAtomically(file(), original));
    IniStore store(file(), log_);
    store.WriteString("new rain storage", "dailyrain new", "1.5");
    store.flush();
  }

  std::vector<std::string> keptCopies() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_.path()))
      if (entry.path().filename().string().find(".damaged-") != std::string::npos)
        names.push_back(entry.path().filename().string());
    return names;
  }

  testsupport::TempFolder folder_;
  ManualClock clock_{fromLocalTime(2026, 3, 10, 8, 5, 9)};
  TextLog log_{folder_ / kProgramErrorLogName, clock_};
};

TEST_F(SettingsDamage, AFileThatCannotBeReadIsLeftAsItIs) {
  const std::string owners = "[Weather Station Type]\r\nName=DAVIS VANTAGE PRO\r\n[Comport]\r\ndevice=/dev/ttyUSB0\r\n";
  ASSERT_TRUE(writeFileAtomically(file(), owners));
  fs::permissions(file(), fs::perms::none);
  fs::permissions(folder_.path(), fs::perms::all);  // the unprivileged child writes its log and temporary files here
  const int status = testsupport::runUnprivilegedChild([&] {
    IniStore store(file(), log_);
    store.WriteString("new rain storage", "dailyrain new", "1.5");
    store.flush();
    store.WriteString("Comport", "number", "2");
    store.flush();
  });
  ASSERT_EQ(status, 0);
  fs::permissions(file(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(read(file()), owners);
  const std::string log = logText();
  EXPECT_NE(log.find("NIMBREL.INI cannot be read"), std::string::npos) << log;
  EXPECT_NE(log.find("left as it is"), std::string::npos) << log;
  EXPECT_FALSE(fs::exists(folder_ / "NIMBREL.INI.tmp"));
}

TEST_F(SettingsDamage, ADamagedFileIsKeptBesideItselfBeforeItsFirstRewrite) {
  const std::string nulLine("[Comport]\r\ndevice=/dev/ttyUSB0\r\nnum\0ber=3\r\n", 42);
  const std::string megabyteLine = "[Connections]\r\nStationName=Hill\r\nRemoteDir=" + std::string(1 << 20, 'x') + "\r\n";
  const struct {
    const char* what;
    std::string text;
    bool damaged;
  } cases[] = {
      {"a line with NUL bytes", nulLine, true},
      {"a line of a megabyte", megabyteLine, true},
      {"a sound file", "[Comport]\r\ndevice=/dev/ttyUSB0\r\n", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    fs::remove(folder_ / kKeptName);
    fs::remove(log_.path());
    openChangeAndSave(c.text);
    if (!c.damaged) {
      EXPECT_TRUE(keptCopies().empty());
      EXPECT_EQ(logText(), "<missing>");
      continue;
    }
    EXPECT_EQ(keptCopies(), std::vector<std::string>{kKeptName});
    EXPECT_TRUE(read(folder_ / kKeptName) == c.text) << "the kept copy differs from the original";
    EXPECT_NE(read(file()).find("dailyrain new=1.5"), std::string::npos);
    EXPECT_NE(logText().find(kKeptName), std::string::npos) << logText();
  }
}

TEST_F(SettingsDamage, AFileThatCannotBeKeptBesideItselfIsNotRewritten) {
  const std::string damaged = "[Comport]\r\ndevice=/dev/ttyUSB0\r\nno equals sign\r\n";
  fs::create_directory(folder_ / kKeptName);  // the copy cannot take this name
  openChangeAndSave(damaged);
  EXPECT_EQ(read(file()), damaged);
  EXPECT_NE(logText().find("not saved"), std::string::npos) << logText();
}

TEST_F(SettingsDamage, RepeatedSectionsAndKeysAreNamedInTheLogAndTheOriginalKept) {
  const std::string original =
      "[Comport]\r\n"                     // 1
      "number=3\r\n"                      // 2
      "[Connections]\r\n"                 // 3
      "FTPPassword=first secret\r\n"      // 4
      "FTPPassword=second secret\r\n"     // 5
      "[comport]\r\n"                     // 6
      "Number=4\r\n"                      // 7
      "device=/dev/ttyUSB0\r\n";          // 8
  openChangeAndSave(original);
  const std::string log = logText();
  EXPECT_NE(log.find("section \"comport\" at line 6 is merged into section \"Comport\" of line 1"), std::string::npos)
      << log;
  EXPECT_NE(log.find("key \"Number\" at line 7 of section \"Comport\" repeats line 2: \"3\" of line 2 is kept, \"4\""),
            std::string::npos)
      << log;
  EXPECT_NE(log.find("key \"FTPPassword\" at line 5 of section \"Connections\" repeats line 4"), std::string::npos)
      << log;
  EXPECT_EQ(log.find("secret"), std::string::npos) << "a password in the log: " << log;
  EXPECT_EQ(read(folder_ / kKeptName), original);
  const std::string rewritten = read(file());
  EXPECT_NE(rewritten.find("[Comport]\r\nnumber=3\r\ndevice=/dev/ttyUSB0\r\n"), std::string::npos) << rewritten;
}

}  // namespace
}  // namespace nimbrel
