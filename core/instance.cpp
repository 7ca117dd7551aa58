#include "core/instance.h"

#include <fmt/format.h>

#include <system_error>

namespace nimbrel {

std::string instanceMarkerName(int instanceNumber) { return fmt::format("{}qz.txt", instanceNumber); }

int findInstanceNumber(const std::filesystem::path& programFolder) {
  for (int number = kFirstInstanceNumber; number <= kLastInstanceNumber; ++number) {
    std::error_code ec;
    if (std::filesystem::is_regular_file(programFolder / instanceMarkerName(number), ec)) return number;
  }
  return 0;
}

InstanceFileNames instanceFileNames(int instanceNumber) {
  if (instanceNumber == 0) return {0, "NIMBREL.INI", "SYNOP.INI", "nimbrelftp.ini"};
  return {instanceNumber, fmt::format("NIMBREL{}.INI", instanceNumber),
          // Instance 6 has always used "SYNOP6INI"; renaming it would lose its settings.
          instanceNumber == 6 ? std::string("SYNOP6INI") : fmt::format("SYNOP{}.INI", instanceNumber),
          fmt::format("nimbrelftp{}.ini", instanceNumber)};
}

SettingsStores::SettingsStores(const std::filesystem::path& programFolder, TextLog& errorLog)
    : names(instanceFileNames(findInstanceNumber(programFolder))),
      main(programFolder / names.mainSettings, errorLog),
      synop(programFolder / names.synopSettings, errorLog),
      registry(programFolder / names.registryStore, errorLog) {}

bool SettingsStores::flushAll() {
  const bool mainSaved = main.flush();
  const bool synopSaved = synop.flush();
  const bool registrySaved = registry.flush();
  return mainSaved && synopSaved && registrySaved;
}

SettingsStores openSettingsStores(const std::filesystem::path& programFolder, TextLog& errorLog) {
  return SettingsStores(programFolder, errorLog);
}

}  // namespace nimbrel
