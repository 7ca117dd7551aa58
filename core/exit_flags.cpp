#include "core/exit_flags.h"

#include <array>
#include <string_view>

namespace nimbrel {
namespace {

struct ExitFlag {
  std::string_view section;
  std::string_view key;
  std::string_view raised;   // written at exit
  std::string_view lowered;  // written at start
};

constexpr std::array<ExitFlag, 12> kExitFlags{{
    {"latest wmr100 data", "exit realtime", "yes", "no"},
    {"latest wmr100 data", "exit wunderground", "yes", "no"},
    {"latest wmr100 data", "exit wundergroundbug", "yes", "no"},
    {"latest wmr100 data", "exit 1 wire reader", "yes", "no"},
    {"latest wmr100 data", "exit 1 wire reader2", "yes", "no"},
    {"latest wmr100 data", "exit mysql", "yes", "no"},
    {"latest wmr100 data", "exit rain sound", "yes", "no"},
    {"latest wmr100 data", "exit tethering", "yes", "no"},
    {"Web cam capture", "exit now", "yes", "no"},
    {"Client ftp", "exit", "close", "open"},
    {"Client ftp2", "exit", "close", "open"},
    {"watchdog", "close now", "yes", "no"},
}};

}  // namespace

bool raiseCompanionExitFlags(SettingsStore& interProcessStore) {
  for (const ExitFlag& flag : kExitFlags) interProcessStore.WriteString(flag.section, flag.key, flag.raised);
  return interProcessStore.flush();
}

bool clearCompanionExitFlags(SettingsStore& interProcessStore) {
  for (const ExitFlag& flag : kExitFlags) interProcessStore.WriteString(flag.section, flag.key, flag.lowered);
  return interProcessStore.flush();
}

}  // namespace nimbrel
