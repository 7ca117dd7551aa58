// nimbrel: the weather-station program's command line.

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "app/decode_command.h"
#include "app/demo_command.h"
#include "app/run_command.h"
#include "core/version.h"

namespace {

// "--start" as program time; CLI11 gives the text, this checks it.
std::string checkStart(const std::string& text) {
  return nimbrel::parseLocalTime(text) ? std::string() : "expected \"YYYY-MM-DD HH:MM:SS\" (local time)";
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{
      "Nimbrel reads a personal weather station, keeps its records and writes its logs and web files.\n"
      "Without a command it runs the station program (the same as `nimbrel run`)."};
  app.set_version_flag("--version", fmt::format("nimbrel {} (build {})", nimbrel::kVersion, nimbrel::kBuildNumber));
  app.require_subcommand(0, 1);

  nimbrel::RunOptions run;
  std::string start;
  double runFor = 0;
  app.add_option("--dir", run.dir, "program folder with NIMBREL.INI, logfiles/ and webfiles/ (default: .)");
  app.add_option("--start", start, "local time the program clock starts at, \"YYYY-MM-DD HH:MM:SS\" (default: now)")
      ->check(checkStart);
  app.add_option("--speed", run.speed, "run the clock N times faster than real time (default 1)")
      ->check(CLI::PositiveNumber);
  app.add_option("--run-for", runFor, "stop after this many seconds of program time")->check(CLI::PositiveNumber);
  auto* runCmd = app.add_subcommand(
      "run",
      "Run the station program until Ctrl-C or SIGTERM.\n"
      "Example: nimbrel run --dir /var/lib/nimbrel\n"
      "Example: nimbrel run --dir test --start \"2026-12-30 23:00:00\" --speed 60 --run-for 7200");
  runCmd->fallthrough();

  nimbrel::DemoOptions demo;
  std::string demoStart;
  double demoRunFor = 0;
  auto* demoCmd = app.add_subcommand(
      "demo",
      "Run the program against a simulated Davis Vantage Pro console inside it, then list the files written.\n"
      "A folder without settings gets a NIMBREL.INI for the simulated station.\n"
      "Example: nimbrel demo --run-for 3600          (an hour of program time in a minute)\n"
      "Example: nimbrel demo --dir /tmp/demo --speed 1440 --run-for 86400   (a day in a minute)");
  demoCmd->add_option("--dir", demo.dir, "program folder of the demo (default: ./nimbrel-demo)");
  demoCmd->add_option("--speed", demo.speed, "run the clock N times faster than real time (default 60)")
      ->check(CLI::PositiveNumber);
  demoCmd->add_option("--run-for", demoRunFor, "stop after this many seconds of program time (default: Ctrl-C)")
      ->check(CLI::PositiveNumber);
  demoCmd->add_option("--start", demoStart, "local time the program clock starts at (default: now)")
      ->check(checkStart);

  nimbrel::DecodeRequest decode;
  auto* decodeCmd = app.add_subcommand(
      "decode",
      "Decode a capture of what a station sent and print one JSON line per frame.\n"
      "Example: nimbrel decode --type \"DAVIS VANTAGE PRO\" capture.bin");
  decodeCmd->add_option("--type", decode.stationName, "the station name as stored in the settings")->required();
  decodeCmd->add_option("file", decode.file, "the capture (default: standard input)");
  decodeCmd->add_flag("--revb", decode.revb, "the console sends the barometric trend at byte 3 (\"use revb\")");
  decodeCmd->add_flag("--extra-sensors", decode.extraSensors, "decode the extra sensors too");

  CLI11_PARSE(app, argc, argv);
  if (decodeCmd->parsed()) return nimbrel::runDecode(decode, stdout, stderr);
  if (demoCmd->parsed()) {
    if (!demoStart.empty()) demo.start = nimbrel::parseLocalTime(demoStart);
    if (demoRunFor > 0) demo.runForSeconds = demoRunFor;
    return nimbrel::runDemo(demo, stdout);
  }
  if (!start.empty()) run.start = nimbrel::parseLocalTime(start);
  if (runFor > 0) run.runForSeconds = runFor;
  return nimbrel::runStation(run);
}
