#pragma once
// A settings store kept in memory and backed by one INI file.
//
// The file is read whole when the store is made and written back whole by
// flush(), only when something changed since the last good write, through a
// temporary file that is synced and renamed over the old one, so another
// process reading the file sees either the old or the new settings.
//
// A missing file gives an empty store without any message (first start). An
// unreadable file, or one with damaged lines, is reported once to the error
// log naming the file; whatever could be parsed is kept. Text rules (case,
// blanks, duplicates, damage) are those of core/ini_text.h.
//
// Names that could not be read back from the file (empty, holding '=' or
// line breaks, or a key starting with a blank, ';' or '[') are refused with a
// message in the error log; control characters in values become blanks.

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/ini_document.h"
#include "core/settings_store.h"
#include "core/text_log.h"

namespace nimbrel {

class IniStore final : public SettingsStore {
 public:
  // `errorLog` must outlive the store.
  IniStore(std::filesystem::path file, TextLog& errorLog);

  std::string ReadString(std::string_view section, std::string_view key, std::string_view fallback = "") const override;
  void WriteString(std::string_view section, std::string_view key, std::string_view value) override;
  void ReadSection(std::string_view section, std::vector<std::string>& keys) const override;
  void EraseSection(std::string_view section) override;
  void DeleteKey(std::string_view section, std::string_view key) override;
  // True when the file holds the store's contents afterwards (nothing to
  // write counts as success). A failed write keeps the changes pending, so
  // the next flush tries again; the first failure of a run of failures is
  // logged.
  bool flush() override;

  const std::filesystem::path& path() const { return file_; }
  bool lastFlushFailed() const { return lastFlushFailed_; }
  bool hasUnsavedChanges() const { return changed_; }
  const IniDocument& document() const { return document_; }

 private:
  void load();

  std::filesystem::path file_;
  TextLog* errorLog_;
  IniDocument document_;
  bool changed_ = false;
  bool lastFlushFailed_ = false;
};

}  // namespace nimbrel
