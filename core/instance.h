#pragma once
// Several copies of the program can run side by side, each with its own
// settings. A copy finds its instance number from a marker file in its
// program folder: the first of "2qz.txt", "3qz.txt", ..., "10qz.txt" that
// exists gives the number, and the settings file names carry it
// ("NIMBREL5.INI", "SYNOP5.INI", "nimbrelftp5.ini"). Without a marker the
// plain names are used. The SYNOP file of instance 6 is "SYNOP6INI", without
// the point: existing installations have it under that name.
//
// Marker names are matched exactly as written (on a case-sensitive file
// system "5QZ.TXT" is no marker); only regular files (or links to them)
// count, not folders.

#include <filesystem>
#include <string>

#include "core/ini_store.h"
#include "core/text_log.h"

namespace nimbrel {

inline constexpr int kFirstInstanceNumber = 2;
inline constexpr int kLastInstanceNumber = 10;

// "2qz.txt" for instance 2, and so on.
std::string instanceMarkerName(int instanceNumber);
// The instance number given by the markers in `programFolder`; 0 for none.
int findInstanceNumber(const std::filesystem::path& programFolder);

struct InstanceFileNames {
  int instanceNumber = 0;  // 0: the plain names
  std::string mainSettings;
  std::string synopSettings;
  std::string registryStore;
};

// The file names of instance `instanceNumber` (0, or 2 to 10).
InstanceFileNames instanceFileNames(int instanceNumber);

// The three settings stores of this instance, opened in this order: main
// settings, SYNOP settings, and the upload/inter-process store (on every
// system an INI file in the program folder; the companion programs read it).
// They live as long as the program.
struct SettingsStores {
  SettingsStores(const std::filesystem::path& programFolder, TextLog& errorLog);

  // Flushes all three, true when all succeeded.
  bool flushAll();

  InstanceFileNames names;  // first: the stores below are opened from it
  IniStore main;
  IniStore synop;
  IniStore registry;
};

// Selects the instance and opens its stores.
SettingsStores openSettingsStores(const std::filesystem::path& programFolder, TextLog& errorLog);

}  // namespace nimbrel
