#pragma once
// What the tests that run the whole program in a demo folder share: reading
// files and settings back, writing settings before a run, and a run that
// keeps what it printed.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>

#include "app/demo_command.h"
#include "core/clock.h"
#include "core/file_io.h"
#include "core/ini_store.h"
#include "core/text_log.h"
#include "support/expect_stored.h"

namespace nimbrel::testsupport {

inline std::string fileText(const std::filesystem::path& file) { return readWholeFile(file).value_or(""); }

inline std::size_t occurrences(std::string_view text, std::string_view what) {
  std::size_t count = 0;
  for (auto at = text.find(what); at != std::string_view::npos; at = text.find(what, at + 1)) ++count;
  return count;
}

inline std::string readSetting(const std::filesystem::path& folder, std::string_view section, std::string_view key) {
  ManualClock clock;
  TextLog log({}, clock);
  return IniStore(folder / "NIMBREL.INI", log).ReadString(section, key, "");
}

inline void writeSettings(const std::filesystem::path& folder, std::initializer_list<StoredEntry> entries) {
  ManualClock clock;
  TextLog log({}, clock);
  IniStore store(folder / "NIMBREL.INI", log);
  for (const auto& [section, key, value] : entries) store.WriteString(section, key, value);
  ASSERT_TRUE(store.flush());
}

inline void expectSettings(const std::filesystem::path& folder, std::initializer_list<StoredEntry> entries) {
  ManualClock clock;
  TextLog log({}, clock);
  expectStored(IniStore(folder / "NIMBREL.INI", log), entries);
}

struct DemoRun {
  int status = -1;
  std::string printed;
};

// Runs the demo in `dir` from `start` (or where the last run there stopped)
// for `seconds` of simulated time, as fast as it goes.
inline DemoRun runFastDemo(const std::filesystem::path& dir, std::optional<SystemTime> start, double seconds,
                           sim::PacketRewrite rewrite = {}, DemoFaults faults = {}) {
  DemoOptions options;
  options.dir = dir;
  options.start = start;
  options.speed = ClockSpeed::max();
  options.runForSeconds = seconds;
  options.faults = faults;
  options.rewrite = std::move(rewrite);
  std::FILE* out = std::tmpfile();
  DemoRun run{runDemo(options, out), {}};
  std::rewind(out);
  run.printed.resize(1 << 16);
  run.printed.resize(std::fread(run.printed.data(), 1, run.printed.size(), out));
  std::fclose(out);
  return run;
}

}  // namespace nimbrel::testsupport
