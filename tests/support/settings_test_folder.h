#pragma once
// A fresh folder for one settings test, with an error log inside it.

#include <filesystem>
#include <string>
#include <string_view>

#include "core/clock.h"
#include "core/file_io.h"
#include "core/ini_store.h"
#include "core/text_log.h"
#include "support/temp_folder.h"

namespace nimbrel::testsupport {

class SettingsTestFolder {
 public:
  SettingsTestFolder() : log_(folder_.path() / kProgramErrorLogName, clock_) {}

  const std::filesystem::path& path() const { return folder_.path(); }
  std::filesystem::path operator/(std::string_view name) const { return folder_.path() / name; }
  TextLog& log() { return log_; }
  std::string logText() const { return readWholeFile(log_.path()).value_or(""); }
  void write(std::string_view name, std::string_view text) const { writeFileAtomically(*this / name, text); }
  std::string read(std::string_view name) const { return readWholeFile(*this / name).value_or("<missing>"); }
  // Writes `iniText` as the main settings file and returns what `reader`
  // makes of it.
  template <class Reader>
  auto readMainSettings(std::string_view iniText, Reader reader) {
    write("NIMBREL.INI", iniText);
    return reader(IniStore(*this / "NIMBREL.INI", log_));
  }

 private:
  TempFolder folder_;
  ManualClock clock_;
  TextLog log_;
};

}  // namespace nimbrel::testsupport
