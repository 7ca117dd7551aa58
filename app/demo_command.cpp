#include "app/demo_command.h"

#include <fmt/format.h>

#include <memory>

#include "app/demo_page.h"
#include "app/demo_summary.h"
#include "app/station_program.h"
#include "core/file_io.h"
#include "core/ini_store.h"
#include "core/instance.h"
#include "core/instance_lock.h"
#include "processing/cycle/simulated_ticks.h"
#include "processing/cycle/tick_driver.h"
#include "stations/station_types.h"
#include "tools/vantage_sim/memory_link.h"
#include "tools/vantage_sim/packet_record.h"
#include "tools/vantage_sim/server.h"

namespace nimbrel {
namespace {

constexpr const char* kStationSection = "Weather Station Type";
constexpr const char* kPortSection = "Comport";
constexpr const char* kDemoStationName = "DAVIS VANTAGE PRO";
constexpr const char* kLoopback = "127.0.0.1";
// Where a demo keeps its program time, so that the next demo in the folder
// goes on from there: no minute is logged twice, no rain counted twice.
constexpr const char* kDemoSection = "Demo";
constexpr const char* kProgramTimeKey = "program time";

bool isDemoStation(const SettingsStore& settings) {
  return settings.ReadString(kStationSection, "Name", "") == kDemoStationName &&
         settings.readSwitch(kPortSection, "use tcpip vp") &&
         settings.ReadString(kPortSection, "use tcpip vp ip", "") == kLoopback;
}

void writeDemoStation(SettingsStore& settings) {
  settings.WriteString(kStationSection, "Name", kDemoStationName);
  // A demo folder picked up again days later starts a fresh day and month.
  settings.writeSwitch(kStationSection, "do the daily reset when qz starts", true);
  settings.writeSwitch(kPortSection, "use tcpip vp", true);
  settings.WriteString(kPortSection, "use tcpip vp ip", kLoopback);
  settings.WriteString("Connections", "StationName", "Demo Station");
  // Where the demo station stands, for the sun and moon of its page.
  settings.WriteString("Station position", "latitude", "51.4779");
  settings.WriteString("Station position", "longitude", "-0.0015");
  settings.WriteString("Height above sea level", "value", "46");
  // Its page shows units, with the degree sign as an HTML entity.
  settings.writeSwitch("Use my own template", "display units", true);
  settings.writeSwitch("Use my own template", "html degree sign", true);
}

// The example page: filled into "wx.html" every minute while the demo runs.
// An owner's own version in the folder is kept.
std::string writeDemoPage(const std::filesystem::path& webfiles) {
  const auto page = webfiles / "wxlocal.html";
  std::error_code ec;
  if (std::filesystem::exists(page, ec)) return {};
  std::filesystem::create_directories(webfiles, ec);
  std::string error;
  if (!writeFileAtomically(page, kDemoPageTemplate, &error, Durability::Cached))
    return fmt::format("the demo's page template {} cannot be written ({})", page.string(), error);
  return {};
}

std::filesystem::path demoSettingsFile(const std::filesystem::path& dir) {
  return dir / instanceFileNames(findInstanceNumber(dir)).mainSettings;
}

sim::ConsoleOptions consoleOptions(const DemoOptions& options) {
  sim::ConsoleOptions console;
  console.sentHistory = 1;
  console.seed = options.seed;
  console.faults.badCrcRate = options.faults.rate;
  console.faults.splitRate = options.faults.rate;
  console.faults.garbageRate = options.faults.rate;
  console.rewrite = options.rewrite;
  return console;
}

// Everything a demo run has whatever its speed: the console, its record
// file, and what the program is told before and after.
class DemoRun {
 public:
  DemoRun(const DemoOptions& options, const Clock& clock, std::FILE* out)
      : options_(options), clock_(clock), out_(out), console_(clock, consoleOptions(options)) {}

  sim::Console& console() { return console_; }

  // The folder, the record file and the opening lines; false (said on
  // standard error) when the demo cannot run.
  bool prepare(std::optional<std::uint16_t> simulatorPort, std::string_view consoleWhere) {
    if (const std::string problem = prepareDemoFolder(options_.dir, simulatorPort, clock_); !problem.empty())
      return refuse(problem);
    if (!options_.recordFile.empty() && !openRecord())
      return refuse(fmt::format("the record file {} cannot be opened for appending", options_.recordFile.string()));
    fmt::print(out_, "Demo station: a simulated Davis Vantage Pro console {}, program folder {}\n", consoleWhere,
               options_.dir.string());
    fmt::print(out_, "Program time starts at {} and runs {}{}.\n", formatLocalTime(toLocalTime(clock_.now())),
               options_.speed.simulated ? std::string("as fast as the machine computes it (simulated time)")
                                        : fmt::format("{} times real time", options_.speed.factor),
               options_.runForSeconds ? fmt::format(" for {} program seconds", *options_.runForSeconds)
                                      : std::string("; Ctrl-C stops it"));
    std::fflush(out_);
    return true;
  }

  RunHooks hooks(std::function<void(StationProgram&)> beforeStart, std::function<void()> stopConsole) {
    const SystemTime start = clock_.now();
    RunHooks hooks;
    hooks.beforeStart = std::move(beforeStart);
    // Before the minute's pass, whose settings flush then keeps it.
    hooks.beforeTick = [](StationProgram& program, const LocalTime& now) {
      if (now.second == 0) keepProgramTime(program, now);
    };
    hooks.onStop = [this, stopConsole = std::move(stopConsole)](StationProgram& program) {
      keepProgramTime(program, toLocalTime(clock_.now()));
      if (stopConsole) stopConsole();
    };
    hooks.onFinished = [this, start](const StationProgram& program) {
      fmt::print(out_, "{}", describeWrittenFiles(program.folders(), start, clock_.now()));
    };
    return hooks;
  }

 private:
  static void keepProgramTime(StationProgram& program, const LocalTime& now) {
    program.settings().WriteString(kDemoSection, kProgramTimeKey, formatLocalTime(now));
  }

  bool refuse(std::string_view problem) {
    fmt::print(stderr, "nimbrel demo: {}\n", problem);
    return false;
  }

  bool openRecord() {
    record_ = sim::recordPacketsTo(console_, options_.recordFile);
    return record_ != nullptr;
  }

  const DemoOptions& options_;
  const Clock& clock_;
  std::FILE* out_;
  sim::Console console_;
  sim::RecordFile record_;
};

// The program time at which the last demo in `dir` stopped, if one ran there.
std::optional<SystemTime> lastDemoProgramTime(const std::filesystem::path& dir) {
  const auto settingsFile = demoSettingsFile(dir);
  if (!std::filesystem::exists(settingsFile)) return std::nullopt;
  const ManualClock wallClock(std::chrono::system_clock::now());
  TextLog errorLog(dir / kProgramErrorLogName, wallClock);
  const IniStore settings(settingsFile, errorLog);
  if (!isDemoStation(settings)) return std::nullopt;
  return parseLocalTime(settings.ReadString(kDemoSection, kProgramTimeKey, ""));
}

RunOptions runOptions(const DemoOptions& options, SystemTime start) {
  return RunOptions{options.dir, start, options.speed, options.runForSeconds};
}

// Simulated time: the console on an in-memory link in the program's own
// event loop, its waits in program time.
int runSimulatedDemo(const DemoOptions& options, SystemTime start, std::FILE* out) {
  asio::io_context io;
  ManualClock clock(start);
  const ProgramDeviceClock deviceTime(clock);
  DemoRun demo(options, clock, out);
  if (!demo.prepare(std::nullopt, "in the program's own event loop")) return 1;
  SimulatedTicks ticks(io, clock);
  const auto giveConsole = [&](StationProgram& program) {
    auto link = std::make_unique<sim::MemoryConsoleLink>(demo.console(), clock, program.errorLog(),
                                                         sim::CableCuts{options.faults.cutEvery, options.faults.cutFor});
    ticks.addSource(*link);
    program.useLink(std::move(link), deviceTime);
  };
  return runStationOn(io, clock, ticks, runOptions(options, start), demo.hooks(giveConsole, {}));
}

// A real speed: the console serves a loopback TCP port, and the program
// reads it as it would a network data logger.
int runRealTimeDemo(const DemoOptions& options, SystemTime start, std::FILE* out) {
  asio::io_context io;
  ScaledClock clock(start, options.speed.factor);
  DemoRun demo(options, clock, out);
  sim::ServerOptions serverOptions{options.speed.factor, options.faults.cutEvery, options.faults.cutFor};
  sim::TcpConsoleServer simulator(io, clock, demo.console(), 0, serverOptions);
  if (!demo.prepare(simulator.port(), fmt::format("on 127.0.0.1:{}", simulator.port()))) return 1;
  TickDriver ticks(io, clock);
  return runStationOn(io, clock, ticks, runOptions(options, start), demo.hooks({}, [&] { simulator.stop(); }));
}

}  // namespace

std::string prepareDemoFolder(const std::filesystem::path& dir, std::optional<std::uint16_t> simulatorPort,
                              const Clock& clock) {
  std::error_code error;
  std::filesystem::create_directories(dir, error);
  if (error)
    return fmt::format("the demo folder {} cannot be made ({}); choose another with --dir", dir.string(),
                       error.message());
  const auto settingsFile = demoSettingsFile(dir);
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
  if (simulatorPort) settings.WriteString(kPortSection, "use tcpip vp port", fmt::format("{}", *simulatorPort));
  if (!settings.flush())
    return fmt::format("the demo's settings {} cannot be written; choose another folder with --dir",
                       settingsFile.string());
  return writeDemoPage(locateFolders(dir, settings).webfiles);
}

int runDemo(const DemoOptions& options, std::FILE* out) {
  // Before the demo's settings are written (this makes the folder too).
  const ProgramFolderLock folderLock = lockProgramFolder(options.dir);
  if (!folderLock.lock) {
    fmt::print(stderr, "nimbrel demo: {}\n", folderLock.problem);
    return 1;
  }
  const SystemTime start =
      options.start.value_or(lastDemoProgramTime(options.dir).value_or(std::chrono::system_clock::now()));
  return options.speed.simulated ? runSimulatedDemo(options, start, out) : runRealTimeDemo(options, start, out);
}

}  // namespace nimbrel
