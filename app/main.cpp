// nimbrel: the weather-station program's command line.

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "core/version.h"

int main(int argc, char** argv) {
  CLI::App app{"Nimbrel: reads a personal weather station, keeps its records and writes its logs and web files."};
  app.set_version_flag("--version", fmt::format("nimbrel {} (build {})", nimbrel::kVersion, nimbrel::kBuildNumber));
  CLI11_PARSE(app, argc, argv);
  if (argc == 1) fmt::print("{}", app.help());
  return 0;
}
