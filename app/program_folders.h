#pragma once
// The folders the program writes to: the program folder (settings, error
// log), the logs folder and the web files folder. Section "Folders", keys
// "logs" and "webfiles", may point elsewhere; by default they are "logfiles"
// and "webfiles" inside the program folder.

#include <filesystem>

namespace nimbrel {

class SettingsStore;
class TextLog;

struct ProgramFolders {
  std::filesystem::path program;
  std::filesystem::path logs;
  std::filesystem::path webfiles;
};

// Where the settings put the folders, without looking at them.
ProgramFolders locateFolders(const std::filesystem::path& programFolder, const SettingsStore& mainSettings);

// Reads the folders and creates the missing ones; a folder that cannot be
// made or written is reported in one sentence naming the setting to change.
ProgramFolders prepareFolders(const std::filesystem::path& programFolder, const SettingsStore& mainSettings,
                              TextLog& errorLog);

}  // namespace nimbrel
