// `nimbrel run` starts only in a program folder that holds the station's
// settings, and says in one sentence why not; a station it cannot read yet
// leaves it running, and the terminal's standard error says so at start.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/run_command.h"
#include "app/station_program.h"
#include "app/terminal_status.h"
#include "core/file_io.h"
#include "support/pseudo_terminal.h"
#include "support/temp_folder.h"

namespace nimbrel {
namespace {

namespace fs = std::filesystem;
using testsupport::TempFolder;

std::vector<std::string> namesIn(const fs::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) names.push_back(entry.path().string());
  std::sort(names.begin(), names.end());
  return names;
}

// Fast and short: should the refusal not come, the run ends by itself and
// the checks on the folder fail.
int runBriefly(const fs::path& dir) { return runStation(RunOptions{dir, std::nullopt, ClockSpeed::max(), 60.0}); }

TEST(ProgramFolder, ARunWithoutItsFolderOrSettingsIsRefusedInOneSentence) {
  const struct {
    const char* what;
    std::function<void(const fs::path&)> prepare;
    std::string said;
  } cases[] = {
      {"a missing folder", [](const fs::path&) {}, "does not exist; give the folder"},
      {"a file in its place", [](const fs::path& dir) { std::ofstream(dir) << "x"; }, "is not a folder"},
      {"an empty folder", [](const fs::path& dir) { fs::create_directory(dir); },
       "has no NIMBREL.INI, the station's main settings"},
      {"an instance without its own settings",
       [](const fs::path& dir) {
         fs::create_directory(dir);
         std::ofstream(dir / "3qz.txt");
         std::ofstream(dir / "NIMBREL.INI") << "[Weather Station Type]\nName=DAVIS VANTAGE PRO\n";
       },
       "has no NIMBREL3.INI, the main settings of instance 3"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    TempFolder base;
    const fs::path dir = base / "station";
    c.prepare(dir);
    const std::vector<std::string> before = namesIn(base.path());
    ::testing::internal::CaptureStderr();
    const int status = runBriefly(dir);
    const std::string said = ::testing::internal::GetCapturedStderr();
    EXPECT_NE(status, 0);
    EXPECT_EQ(namesIn(base.path()), before) << "the refused run wrote to the folder";
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
    EXPECT_TRUE(said.starts_with("nimbrel: ")) << said;
    EXPECT_NE(said.find(c.said), std::string::npos) << said;
  }
}

// On a terminal the error log's lines are printed above the status line;
// they still go to standard error, where a person (or a redirect) expects
// them, and the program runs on for the owner to fix the setting.
TEST(ProgramFolder, AStationThatCannotBeReadIsSaidOnStandardErrorAtStart) {
  const struct {
    const char* settings;
    const char* said;
  } cases[] = {
      {"[Weather Station Type]\nName=WEATHER THING\n", "the station name \"WEATHER THING\""},
      {"[Weather Station Type]\nName=DAVIS VANTAGE PRO\n[Comport]\ndevice=/dev/nimbrel-no-such-device\n",
       "cannot open serial port /dev/nimbrel-no-such-device"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.said);
    TempFolder dir;
    ASSERT_TRUE(writeFileAtomically(dir / "NIMBREL.INI", c.settings));
    testsupport::PseudoTerminal terminal;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> screen(std::fopen(terminal.slavePath().c_str(), "w"),
                                                                  std::fclose);
    ASSERT_TRUE(screen);
    asio::io_context io;
    ManualClock clock(fromLocalTime(2026, 3, 10, 8, 0, 0));
    StationProgram program(io, clock, dir.path());
    TerminalStatus status(program, screen.get());
    ASSERT_TRUE(status.active());
    ::testing::internal::CaptureStderr();
    program.start();
    const std::string said = ::testing::internal::GetCapturedStderr();
    EXPECT_NE(said.substr(0, said.find('\n')).find(c.said), std::string::npos) << said;
    program.exit1click();
  }
}

}  // namespace
}  // namespace nimbrel
