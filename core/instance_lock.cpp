#include "core/instance_lock.h"

#include <fmt/format.h>

#include <system_error>
#include <variant>

#include "core/instance.h"

namespace nimbrel {
namespace {

// The folder as the user would look for it: absolute, without "." parts or a
// trailing separator.
std::string shownFolder(const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::path shown = std::filesystem::absolute(folder, error).lexically_normal();
  if (error) return folder.string();
  if (!shown.has_filename() && shown.has_relative_path()) shown = shown.parent_path();
  return shown.string();
}

std::string refusalSentence(const std::filesystem::path& folder, const InstanceFileNames& names,
                            const std::string& lockFileName, const platform::LockRefusal& refusal) {
  const std::string which =
      fmt::format("the program folder {} (instance settings \"{}\")", shownFolder(folder), names.mainSettings);
  if (refusal.reason == platform::LockRefusal::Reason::CannotUseFile)
    return fmt::format(
        "{} cannot hold the lock file \"{}\" that keeps a second program out ({}); "
        "let this program write to the folder or give it another with --dir",
        which, lockFileName, refusal.systemError);
  const std::string holder =
      refusal.holderPid > 0 ? fmt::format("process {}", refusal.holderPid) : std::string("another process");
  return fmt::format("{} is in use by {}; stop that program first or give this one another folder with --dir", which,
                     holder);
}

std::string makeFolder(const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (!error) return {};
  return fmt::format("the program folder {} cannot be made ({}); choose another with --dir", shownFolder(folder),
                     error.message());
}

std::string notAFolderSentence(const std::filesystem::path& folder, bool somethingElseThere) {
  const std::string settings = instanceFileNames(0).mainSettings;
  if (somethingElseThere)
    return fmt::format("{} is not a folder; give the program folder that holds the station's {} with --dir",
                       shownFolder(folder), settings);
  return fmt::format("the program folder {} does not exist; give the folder that holds the station's {} with --dir "
                     "(nimbrel demo makes a folder of its own)",
                     shownFolder(folder), settings);
}

std::string noSettingsSentence(const std::filesystem::path& folder, const InstanceFileNames& names) {
  const std::string whose = names.instanceNumber == 0
                                ? std::string("the station's main settings")
                                : fmt::format("the main settings of instance {} (chosen by {})", names.instanceNumber,
                                              instanceMarkerName(names.instanceNumber));
  return fmt::format("the program folder {} has no {}, {}; put them there (an example comes with the program, "
                     "share/nimbrel/example/NIMBREL.INI) or give the folder that holds them with --dir",
                     shownFolder(folder), names.mainSettings, whose);
}

// Why `folder` holds no station to run; empty when it does.
std::string stationFolderProblem(const std::filesystem::path& folder) {
  std::error_code error;
  const auto folderStatus = std::filesystem::status(folder, error);
  if (!std::filesystem::is_directory(folderStatus))
    return notAFolderSentence(folder, std::filesystem::exists(folderStatus));
  const InstanceFileNames names = instanceFileNames(findInstanceNumber(folder));
  if (std::filesystem::exists(folder / names.mainSettings, error)) return {};
  return noSettingsSentence(folder, names);
}

}  // namespace

std::string instanceLockFileName(int instanceNumber) {
  return instanceFileNames(instanceNumber).mainSettings + ".lock";
}

ProgramFolderLock lockProgramFolder(const std::filesystem::path& programFolder, FolderStart start) {
  const std::string problem = start == FolderStart::existingStation ? stationFolderProblem(programFolder)
                                                                    : makeFolder(programFolder);
  if (!problem.empty()) return {std::nullopt, problem};
  const InstanceFileNames names = instanceFileNames(findInstanceNumber(programFolder));
  const std::string lockFileName = instanceLockFileName(names.instanceNumber);
  auto acquired = platform::InstanceLock::acquire(programFolder, lockFileName);
  if (auto* lock = std::get_if<platform::InstanceLock>(&acquired)) return {std::move(*lock), {}};
  return {std::nullopt,
          refusalSentence(programFolder, names, lockFileName, std::get<platform::LockRefusal>(acquired))};
}

}  // namespace nimbrel
