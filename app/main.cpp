// nimbrel: the weather-station program's command line.

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "app/decode_command.h"
#include "core/version.h"

int main(int argc, char** argv) {
  CLI::App app{"Nimbrel reads a personal weather station, keeps its records and writes its logs and web files."};
  app.set_version_flag("--version", fmt::format("nimbrel {} (build {})", nimbrel::kVersion, nimbrel::kBuildNumber));
  app.require_subcommand(0, 1);

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
  fmt::print("{}", app.help());
  return 0;
}
