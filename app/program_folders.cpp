#include "app/program_folders.h"

#include <string>
#include <system_error>

#include "core/file_io.h"
#include "core/settings_store.h"
#include "core/text_log.h"

namespace nimbrel {
namespace {

std::filesystem::path chosenFolder(const std::filesystem::path& program, const SettingsStore& settings,
                                   const char* key, const char* fallback) {
  const std::string stored = settings.ReadString("Folders", key);
  if (stored.empty()) return program / fallback;
  const std::filesystem::path p(stored);
  return p.is_absolute() ? p : program / p;
}

void checkWritable(const std::filesystem::path& folder, const char* key, TextLog& errorLog) {
  std::error_code ec;
  std::filesystem::create_directories(folder, ec);
  std::string why;
  const auto probe = folder / ".nimbrel-write-test";
  if (!ec && writeFileAtomically(probe, "", &why)) {
    std::filesystem::remove(probe, ec);
    return;
  }
  errorLog.write("cannot write to the folder " + folder.string() + " (section \"Folders\" key \"" + key +
                 "\"): " + (why.empty() ? ec.message() : why) +
                 "; choose a folder this program may write to");
}

}  // namespace

ProgramFolders locateFolders(const std::filesystem::path& programFolder, const SettingsStore& mainSettings) {
  ProgramFolders f;
  f.program = programFolder;
  f.logs = chosenFolder(programFolder, mainSettings, "logs", "logfiles");
  f.webfiles = chosenFolder(programFolder, mainSettings, "webfiles", "webfiles");
  return f;
}

ProgramFolders prepareFolders(const std::filesystem::path& programFolder, const SettingsStore& mainSettings,
                              TextLog& errorLog) {
  const ProgramFolders f = locateFolders(programFolder, mainSettings);
  checkWritable(f.logs, "logs", errorLog);
  checkWritable(f.webfiles, "webfiles", errorLog);
  return f;
}

}  // namespace nimbrel
