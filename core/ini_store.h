#pragma once
// A settings store kept in memory and backed by one INI file.
//
// The file is read whole when the store is made and written back whole by
// flush(), only when something changed since the last good write, through a
// temporary file that is synced and renamed over the old one, so another
// process reading the file sees either the old or the new settings.
//
// The owner's file is never lost:
// - A missing file gives an empty store without any message (first start).
// - A file that exists but cannot be read (permissions, a read error) gives
//   an empty store, every setting at its default, and is never written by
//   this store: the file is left as it is, and the error log says so once.
//   A restart after the owner has made it readable picks it up again.
// - A file with damaged lines (core/ini_text.h) or repeated keys keeps what
//   could be read. Writing it back would lose the other lines, so before the
//   first write the original is copied beside it as
//   "<name>.damaged-YYYYMMDD-HHMMSS" (the program clock's local time); while
//   that copy cannot be made the file is not written.
// - Each repeated section and key is named in the error log with its line
//   numbers and the value kept (secrets hidden).
//
// Names that could not be read back from the file (empty, holding '=' or
// line breaks, or a key starting with a blank, ';' or '['), and values too
// long for a line, are refused with a message in the error log; control
// characters in values become blanks.
//
// Numbers that cannot be used (SettingsStore::readInteger) are reported to
// the error log once per key and stored text.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "core/ini_document.h"
#include "core/ini_text.h"
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
  // write counts as success), and for a store that leaves its unreadable
  // file alone: that was said at start. A failed write keeps the changes
  // pending, so the next flush tries again; the first failure of a run of
  // failures is logged.
  bool flush() override;

  const std::filesystem::path& path() const { return file_; }
  bool lastFlushFailed() const { return lastFlushFailed_; }
  bool hasUnsavedChanges() const { return changed_; }
  // The file exists but could not be read: it is never written.
  bool leavesFileAlone() const { return leaveFileAlone_; }
  const IniDocument& document() const { return document_; }

 private:
  void reportUnusable(std::string_view section, std::string_view key, std::string_view stored,
                      std::string_view problem) const override;
  void load();
  void leaveFileAlone(const std::string& whyUnreadable);
  void keepOriginalBeforeSaving(std::string original, const IniParseResult& parsed);
  void reportRepeats(const IniParseResult& parsed) const;
  bool keepOriginalBeside();
  bool write();
  bool saveFailed(const std::string& message);

  std::filesystem::path file_;
  TextLog* errorLog_;
  IniDocument document_;
  bool changed_ = false;
  bool lastFlushFailed_ = false;
  bool leaveFileAlone_ = false;
  // The text as read, while a rewrite would lose some of it and it has not
  // been copied to `keptOriginal_` yet.
  std::optional<std::string> originalToKeep_;
  std::filesystem::path keptOriginal_;
  // Unusable numbers already reported, by section, key and text.
  mutable std::unordered_set<std::string> reported_;
};

}  // namespace nimbrel
