#include "app/demo_command.h"

#include <fmt/format.h>

#include "app/demo_summary.h"
#include "app/run_command.h"
#include "app/station_program.h"
#include "core/ini_store.h"
#include "core/instance.h"
#include "core/instance_lock.h"
#include "stations/station_types.h"
#include "tools/vantage_sim/server.h"

namespace nimbrel {
namespace {

constexpr const char* kStationSection = "Weather Station Type";
constexpr const char* kPortSection = "Comport";
constexpr const char* kDemoStationName = "DAVIS VANTAGE PRO";
constexpr const char* kLoopback = "127.0.0.1";

bool isDemoStation(const SettingsStore& settings) {
  return settings.ReadString(kStationSection, "Name", "") == kDemoStationName &&
         settings.readSwitch(kPortSection, "use tcpip vp") &&
         settings.ReadString(kPortSection, "use tcpip vp ip", "") == kLoopback;
}

void writeDemoStation(SettingsStore& settings) {
  settings.WriteString(kStationSection, "Name", kDemoStationName);
  settings.writeSwitch(kPortSection, "use tcpip vp", true);
  settings.WriteString(kPortSection, "use tcpip vp ip", kLoopback);
  settings.WriteString("Connections", "StationName", "Demo Station");
}

}  // namespace

std::string prepareDemoFolder(const std::filesystem::path& dir, std::uint16_t simulatorPort, const Clock& clock) {
  std::error_code error;
  std::filesystem::create_directories(dir, error);
  if (error)
    return fmt::format("the demo folder {} cannot be made ({}); choose another with --dir", dir.string(),
                       error.message());
  const auto settingsFile = dir / instanceFileNames(findInstanceNumber(dir)).mainSettings;
  const bool fresh = !std::filesystem::exists(settingsFile);
  TextLog errorLog(dir / kProgramErrorLogName, clock);
  IniStore settings(settingsFile, errorLog);
  if (fresh) {
    writeDemoStation(settings);
  } else if (!isDemoStation(settings)) {
    return fmt::format(
        "the folder {} holds the settings of another station (section \"{}\" key \"Name\" is \"{}\"); "
        "give the demo a folder of its own with --dir",
        dir.string(), kStationSection, settings.ReadString(kStationSection, "Name", ""));
  }
  settings.WriteString(kPortSection, "use tcpip vp port", fmt::format("{}", simulatorPort));
  if (!settings.flush())
    return fmt::format("the demo's settings {} cannot be written; choose another folder with --dir",
                       settingsFile.string());
  return {};
}

int runDemo(const DemoOptions& options, std::FILE* out) {
  // Before the demo's settings are written (this makes the folder too).
  const ProgramFolderLock folderLock = lockProgramFolder(options.dir);
  if (!folderLock.lock) {
    fmt::print(stderr, "nimbrel demo: {}\n", folderLock.problem);
    return 1;
  }
  asio::io_context io;
  ScaledClock clock(options.start.value_or(std::chrono::system_clock::now()), options.speed);
  sim::ConsoleOptions consoleOptions;
  consoleOptions.sentHistory = 1;
  sim::Console console(clock, consoleOptions);
  sim::TcpConsoleServer simulator(io, clock, console, 0, sim::ServerOptions{options.speed});

  if (const std::string problem = prepareDemoFolder(options.dir, simulator.port(), clock); !problem.empty()) {
    fmt::print(stderr, "nimbrel demo: {}\n", problem);
    return 1;
  }
  fmt::print(out, "Demo station: a simulated Davis Vantage Pro console on 127.0.0.1:{}, program folder {}\n",
             simulator.port(), options.dir.string());
  fmt::print(out, "Program time runs {} times real time{}.\n", options.speed,
             options.runForSeconds ? fmt::format(" for {} program seconds", *options.runForSeconds)
                                   : std::string("; Ctrl-C stops it"));
  std::fflush(out);

  const SystemTime start = clock.now();
  RunOptions run{options.dir, start, options.speed, options.runForSeconds};
  RunHooks hooks;
  hooks.onStop = [&] { simulator.stop(); };
  hooks.onFinished = [&](const StationProgram& program) {
    fmt::print(out, "{}", describeWrittenFiles(program.folders(), start, clock.now()));
  };
  return runStationOn(io, clock, run, hooks);
}

}  // namespace nimbrel
