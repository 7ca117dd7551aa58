// nimbrel-vantage-sim: a simulated Davis Vantage console on a loopback TCP
// port or a pseudo-terminal, for trying the program without a station and
// for end-to-end tests.

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <asio.hpp>
#include <csignal>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>

#include "core/clock.h"
#include "tools/vantage_sim/console.h"
#include "tools/vantage_sim/packet_record.h"
#include "tools/vantage_sim/server.h"

namespace {

using namespace nimbrel;

struct Settings {
  std::optional<std::uint16_t> tcpPort;
  bool pty = false;
  bool revb = false;
  std::string start;
  double speed = 1.0;
  std::uint64_t seed = 1;
  double runForSeconds = 0;
  sim::FaultSettings faults;
  std::int64_t silenceEverySeconds = 0, silenceForSeconds = 0;
  std::int64_t dropEverySeconds = 0, dropForSeconds = 0;
  std::string recordPath;
};

constexpr std::uint16_t kLoggerPort = 22222;  // what network loggers listen on

void addOptions(CLI::App& app, Settings& s) {
  auto* tcp = app.add_option("--tcp", s.tcpPort, "Serve on 127.0.0.1:PORT (0 = any free port; default 22222)");
  app.add_flag("--pty", s.pty, "Serve on a new pseudo-terminal instead of TCP")->excludes(tcp);
  app.add_flag("--revb", s.revb, "Byte 3 of LOOP packets is the barometer trend instead of 'P'");
  app.add_option("--start", s.start, "Program time to start at, \"YYYY-MM-DD HH:MM:SS\" local (default: now)");
  app.add_option("--speed", s.speed, "Program seconds per real second")->check(CLI::PositiveNumber);
  app.add_option("--seed", s.seed, "Seed of the weather and the faults");
  app.add_option("--run-for", s.runForSeconds, "Stop after this many real seconds (0 = run until signalled)")
      ->check(CLI::NonNegativeNumber);
  app.add_option("--bad-crc", s.faults.badCrcRate, "Share of LOOP packets sent with a bad CRC")
      ->check(CLI::Range(0.0, 1.0));
  app.add_option("--split", s.faults.splitRate, "Share of LOOP packets sent in two writes")
      ->check(CLI::Range(0.0, 1.0));
  app.add_option("--garbage", s.faults.garbageRate, "Share of LOOP packets followed by random bytes")
      ->check(CLI::Range(0.0, 1.0));
  auto* silenceEvery = app.add_option("--silence-every", s.silenceEverySeconds,
                                      "Go silent every this many program seconds")->check(CLI::PositiveNumber);
  auto* silenceFor = app.add_option("--silence-for", s.silenceForSeconds, "...for this many program seconds")
                         ->check(CLI::PositiveNumber);
  silenceEvery->needs(silenceFor);
  silenceFor->needs(silenceEvery);
  auto* dropEvery = app.add_option("--drop-every", s.dropEverySeconds,
                                   "TCP: cut the client off every this many program seconds")
                        ->check(CLI::PositiveNumber);
  auto* dropFor = app.add_option("--drop-for", s.dropForSeconds, "...and refuse connections this long")
                      ->check(CLI::PositiveNumber);
  dropEvery->needs(dropFor)->excludes("--pty");
  dropFor->needs(dropEvery);
  app.add_option("--record", s.recordPath, "Append one JSON line per LOOP packet sent to this file");
}

// Everything the simulator runs with, alive for the whole run.
class Simulator {
 public:
  Simulator(const Settings& s, SystemTime start)
      : settings_(s), clock_(start, s.speed), console_(clock_, consoleOptions(s)), signals_(io_, SIGINT, SIGTERM),
        deadline_(io_) {}

  int run() {
    if (!openRecord() || !openServer()) return 1;
    signals_.async_wait([this](const asio::error_code& error, int) {
      if (!error) io_.stop();
    });
    if (settings_.runForSeconds > 0) {
      deadline_.expires_after(std::chrono::duration_cast<std::chrono::nanoseconds>(
          std::chrono::duration<double>(settings_.runForSeconds)));
      deadline_.async_wait([this](const asio::error_code& error) {
        if (!error) io_.stop();
      });
    }
    io_.run();
    fmt::print(stderr, "stopped: {} LOOP packets sent, {} rain clicks in all\n",
               console_.sent().empty() ? 0 : console_.sent().back().sequence, console_.model().totalRainClicks());
    return 0;
  }

 private:
  static sim::ConsoleOptions consoleOptions(const Settings& s) {
    sim::ConsoleOptions options;
    options.revb = s.revb;
    options.seed = s.seed;
    options.faults = s.faults;
    options.faults.silenceEvery = std::chrono::seconds(s.silenceEverySeconds);
    options.faults.silenceFor = std::chrono::seconds(s.silenceForSeconds);
    options.sentHistory = 1;
    return options;
  }

  bool openRecord() {
    if (settings_.recordPath.empty()) return true;
    record_ = sim::recordPacketsTo(console_, settings_.recordPath);
    if (!record_) fmt::print(stderr, "cannot open {} for appending\n", settings_.recordPath);
    return record_ != nullptr;
  }

  bool openServer() {
    sim::ServerOptions options;
    options.clockSpeed = settings_.speed;
    options.dropEvery = std::chrono::seconds(settings_.dropEverySeconds);
    options.dropFor = std::chrono::seconds(settings_.dropForSeconds);
    try {
      if (settings_.pty) {
        pty_.emplace(io_, clock_, console_, options);
        fmt::print("listening on pty {}\n", pty_->devicePath());
      } else {
        tcp_.emplace(io_, clock_, console_, settings_.tcpPort.value_or(kLoggerPort), options);
        fmt::print("listening on tcp port {}\n", tcp_->port());
      }
    } catch (const std::exception& error) {
      fmt::print(stderr, "cannot listen: {}\n", error.what());
      return false;
    }
    std::fflush(stdout);  // a test script waits for this line
    return true;
  }

  const Settings& settings_;
  asio::io_context io_;
  ScaledClock clock_;
  sim::Console console_;
  sim::RecordFile record_;
  std::optional<sim::TcpConsoleServer> tcp_;
  std::optional<sim::PtyConsoleServer> pty_;
  asio::signal_set signals_;
  asio::steady_timer deadline_;
};

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{"Simulated Davis Vantage console on a loopback TCP port or a pseudo-terminal"};
  Settings settings;
  addOptions(app, settings);
  CLI11_PARSE(app, argc, argv);

  SystemTime start = std::chrono::system_clock::now();
  if (!settings.start.empty()) {
    const auto parsed = parseLocalTime(settings.start);
    if (!parsed) {
      fmt::print(stderr, "--start wants \"YYYY-MM-DD HH:MM:SS\", not \"{}\"\n", settings.start);
      return 2;
    }
    start = *parsed;
  }
  Simulator simulator(settings, start);
  return simulator.run();
}
