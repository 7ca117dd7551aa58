#include "core/ini_store.h"

#include <fmt/format.h>

#include <system_error>

#include "core/file_io.h"
#include "core/ini_text.h"

namespace nimbrel {

IniStore::IniStore(std::filesystem::path file, TextLog& errorLog) : file_(std::move(file)), errorLog_(&errorLog) {
  load();
}

void IniStore::load() {
  std::string error;
  const auto text = readWholeFile(file_, &error);
  if (!text) {
    std::error_code ec;
    const bool missing = !std::filesystem::exists(file_, ec) && !ec;
    if (!missing)
      errorLog_->write(
          fmt::format("settings file {} cannot be read ({}); starting with empty settings", file_.string(), error));
    return;
  }
  IniParseResult parsed = parseIniText(*text);
  document_ = std::move(parsed.document);
  if (parsed.damagedLines > 0)
    errorLog_->write(fmt::format("settings file {} is damaged: skipped {} unreadable line(s), the first at line {}",
                                 file_.string(), parsed.damagedLines, parsed.firstDamagedLine));
}

std::string IniStore::ReadString(std::string_view section, std::string_view key, std::string_view fallback) const {
  const std::string* stored = document_.value(section, key);
  return stored ? *stored : std::string(fallback);
}

void IniStore::WriteString(std::string_view section, std::string_view key, std::string_view value) {
  if (!isWritableSectionName(section) || !isWritableKeyName(key)) {
    errorLog_->write(fmt::format("settings file {}: cannot store key \"{}\" of section \"{}\"", file_.string(),
                                 writableValue(key), writableValue(section)));
    return;
  }
  if (document_.set(section, key, writableValue(value))) changed_ = true;
}

void IniStore::ReadSection(std::string_view section, std::vector<std::string>& keys) const {
  keys.clear();
  const IniSection* holder = document_.find(section);
  if (!holder) return;
  for (const IniEntry& entry : holder->entries()) keys.push_back(entry.key);
}

void IniStore::EraseSection(std::string_view section) {
  if (document_.eraseSection(section)) changed_ = true;
}

void IniStore::DeleteKey(std::string_view section, std::string_view key) {
  if (document_.eraseKey(section, key)) changed_ = true;
}

bool IniStore::flush() {
  if (!changed_) return true;
  std::string error;
  if (!writeFileAtomically(file_, renderIniText(document_), &error)) {
    if (!lastFlushFailed_) errorLog_->write(fmt::format("settings file {} cannot be saved: {}", file_.string(), error));
    lastFlushFailed_ = true;
    return false;
  }
  changed_ = false;
  lastFlushFailed_ = false;
  return true;
}

}  // namespace nimbrel
