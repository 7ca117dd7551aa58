// nimbrel: the weather-station program's command line.

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "app/decode_command.h"
#include "app/tag_list.h"
#include "app/tags_command.h"
#include "app/demo_command.h"
#include "app/run_command.h"
#include "core/number_format.h"
#include "core/version.h"

namespace {

// "--start" as program time; CLI11 gives the text, this checks it.
std::string checkStart(const std::string& text) {
  return nimbrel::parseLocalTime(text)
             ? std::string()
             : fmt::format("\"{}\" is not a local date and time that exists; write it \"YYYY-MM-DD HH:MM:SS\"", text);
}

std::string checkSpeed(const std::string& text) {
  return nimbrel::parseClockSpeed(text)
             ? std::string()
             : fmt::format("\"{}\" is no speed; give \"max\" (simulated time, as fast as the machine goes) "
                           "or a number of program seconds per real second above 0, up to 1000000",
                           text);
}

std::string checkSeconds(const std::string& text) {
  double seconds = 0;
  return nimbrel::parseDouble(text, seconds) && seconds > 0 && seconds <= 1e10
             ? std::string()
             : fmt::format("\"{}\" is no span of program time; give seconds above 0", text);
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
  std::string speed = "1";
  double runFor = 0;
  app.add_option("--dir", run.dir, "program folder with NIMBREL.INI, logfiles/ and webfiles/ (default: .)");
  app.add_option("--start", start, "local time the program clock starts at, \"YYYY-MM-DD HH:MM:SS\" (default: now)")
      ->check(checkStart);
  app.add_option("--speed", speed,
                 "run the clock N times faster than real time (default 1), or \"max\": simulated time, "
                 "as fast as the machine computes it")
      ->check(checkSpeed);
  app.add_option("--run-for", runFor, "stop after this many seconds of program time")->check(checkSeconds);
  auto* runCmd = app.add_subcommand(
      "run",
      "Run the station program until Ctrl-C or SIGTERM.\n"
      "Example: nimbrel run --dir /var/lib/nimbrel\n"
      "Example: nimbrel run --dir test --start \"2026-12-30 23:00:00\" --speed 60 --run-for 7200");
  runCmd->fallthrough();

  nimbrel::DemoOptions demo;
  std::string demoStart;
  std::string demoSpeed = "60";
  double demoRunFor = 0;
  long long cutEvery = 0, cutFor = 0;
  auto* demoCmd = app.add_subcommand(
      "demo",
      "Run the program against a simulated Davis Vantage Pro console inside it, then list the files written.\n"
      "A folder without settings gets a NIMBREL.INI for the simulated station.\n"
      "A folder where a demo ran before goes on from the program time at which it stopped.\n"
      "Example: nimbrel demo --speed max --run-for 86400   (a simulated day in seconds)\n"
      "Example: nimbrel demo --run-for 3600                (an hour of program time in a minute)");
  demoCmd->add_option("--dir", demo.dir, "program folder of the demo (default: ./nimbrel-demo)");
  demoCmd->add_option("--speed", demoSpeed,
                      "N times real time (default 60), or \"max\": simulated time, as fast as the machine goes")
      ->check(checkSpeed);
  demoCmd->add_option("--run-for", demoRunFor, "stop after this many seconds of program time (default: Ctrl-C)")
      ->check(checkSeconds);
  demoCmd->add_option("--start", demoStart,
                      "local time the program clock starts at (default: where the last demo here stopped, or now)")
      ->check(checkStart);
  demoCmd->add_option("--seed", demo.seed, "seed of the simulated weather and faults (default 1)");
  // For long tests of the program against a faulty console.
  const std::string faultGroup = "Faults of the simulated console";
  demoCmd->add_option("--faults", demo.faults.rate, "share of packets with a bad CRC, split, or followed by garbage")
      ->check(CLI::Range(0.0, 1.0))
      ->group(faultGroup);
  auto* cutEveryOption = demoCmd->add_option("--cut-every", cutEvery, "cut the console's cable every N program seconds")
                             ->check(CLI::PositiveNumber)
                             ->group(faultGroup);
  auto* cutForOption =
      demoCmd->add_option("--cut-for", cutFor, "...for N program seconds")->check(CLI::PositiveNumber)->group(faultGroup);
  cutEveryOption->needs(cutForOption);
  cutForOption->needs(cutEveryOption);
  demoCmd->add_option("--record", demo.recordFile, "append one JSON line per LOOP packet the console sent")
      ->group(faultGroup);

  nimbrel::DecodeRequest decode;
  auto* decodeCmd = app.add_subcommand(
      "decode",
      "Decode a capture of what a station sent and print one JSON line per frame.\n"
      "Example: nimbrel decode --type \"DAVIS VANTAGE PRO\" capture.bin");
  decodeCmd->add_option("--type", decode.stationName, "the station name as stored in the settings")->required();
  decodeCmd->add_option("file", decode.file, "the capture (default: standard input)");
  decodeCmd->add_flag("--revb", decode.revb, "the console sends the barometric trend at byte 3 (\"use revb\")");
  decodeCmd->add_flag("--extra-sensors", decode.extraSensors, "decode the extra sensors too");

  nimbrel::TagsRequest tags;
  auto* tagsCmd = app.add_subcommand(
      "tags",
      "Fill a template with the values a program folder holds (its settings, extremes, records and the last\n"
      "readings it wrote), to preview a page; or, with --all, write the test file of every tag.\n"
      "Example: nimbrel tags wxlocal.html --dir nimbrel-demo            (the filled page on standard output)\n"
      "Example: nimbrel tags wxlocal.html preview.html --dir nimbrel-demo\n"
      "Example: nimbrel tags --all --dir nimbrel-demo      (webfiles/testtags.txt filled into testtags.php)");
  tagsCmd->add_option("--dir", tags.dir, "program folder (default: .)");
  tagsCmd->add_option("template", tags.templateFile,
                      "the template; a bare name not found here is taken from the folder's web files");
  tagsCmd->add_option("output", tags.outputFile, "where the filled page goes (default: standard output)");
  tagsCmd->add_flag("--all", tags.all, "write testtags.txt with every tag and fill it into testtags.php");
  bool listTags = false;
  tagsCmd->add_flag("--list", listTags, "print the list of every tag, what it gives and its format (Markdown)");

  CLI11_PARSE(app, argc, argv);
  if (tagsCmd->parsed()) {
    if (listTags) {
      fmt::print("{}", nimbrel::tagListMarkdown());
      return 0;
    }
    if (!tags.all && tags.templateFile.empty()) {
      fmt::print(stderr, "give a template, or --all\n");
      return 2;
    }
    return nimbrel::runTags(tags, stdout, stderr);
  }
  if (decodeCmd->parsed()) return nimbrel::runDecode(decode, stdout, stderr);
  if (demoCmd->parsed()) {
    if (!demoStart.empty()) demo.start = nimbrel::parseLocalTime(demoStart);
    if (demoRunFor > 0) demo.runForSeconds = demoRunFor;
    demo.speed = *nimbrel::parseClockSpeed(demoSpeed);
    demo.faults.cutEvery = std::chrono::seconds(cutEvery);
    demo.faults.cutFor = std::chrono::seconds(cutFor);
    return nimbrel::runDemo(demo, stdout);
  }
  if (!start.empty()) run.start = nimbrel::parseLocalTime(start);
  run.speed = *nimbrel::parseClockSpeed(speed);
  if (runFor > 0) run.runForSeconds = runFor;
  return nimbrel::runStation(run);
}
