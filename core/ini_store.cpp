#include "core/ini_store.h"

#include <fmt/format.h>

#include <system_error>

#include "core/file_io.h"

namespace nimbrel {
namespace {

// Past this many, repeated sections and keys are counted rather than listed.
constexpr size_t kMostRepeatsListed = 10;

// "NIMBREL.INI.damaged-20260310-080509" beside "NIMBREL.INI".
std::filesystem::path damagedCopyName(const std::filesystem::path& file, const LocalTime& t) {
  auto kept = file;
  kept += fmt::format(".damaged-{:04}{:02}{:02}-{:02}{:02}{:02}", t.year, t.month, t.day, t.hour, t.minute, t.second);
  return kept;
}

std::vector<std::string> repeatLines(const IniParseResult& parsed) {
  std::vector<std::string> lines;
  const IniDocument& document = parsed.document;
  for (const IniRepeatedSection& repeat : parsed.repeatedSections)
    lines.push_back(fmt::format("section \"{}\" at line {} is merged into section \"{}\" of line {}", repeat.name,
                                repeat.line, document.find(repeat.name)->name(), repeat.firstLine));
  for (const IniRepeatedKey& repeat : parsed.repeatedKeys)
    lines.push_back(fmt::format(
        "key \"{}\" at line {} of section \"{}\" repeats line {}: {} of line {} is kept, {} of line {} is dropped",
        repeat.key, repeat.line, repeat.section, repeat.firstLine,
        shownSettingValue(repeat.key, *document.value(repeat.section, repeat.key)), repeat.firstLine,
        shownSettingValue(repeat.key, repeat.droppedValue), repeat.line));
  return lines;
}

}  // namespace

IniStore::IniStore(std::filesystem::path file, TextLog& errorLog) : file_(std::move(file)), errorLog_(&errorLog) {
  load();
}

void IniStore::load() {
  std::string error;
  auto text = readWholeFile(file_, &error);
  if (!text) {
    std::error_code ec;
    const bool missing = !std::filesystem::exists(file_, ec) && !ec;
    if (!missing) leaveFileAlone(error);
    return;
  }
  IniParseResult parsed = parseIniText(*text);
  reportRepeats(parsed);
  if (parsed.dropsLines()) keepOriginalBeforeSaving(std::move(*text), parsed);
  document_ = std::move(parsed.document);
}

void IniStore::leaveFileAlone(const std::string& whyUnreadable) {
  leaveFileAlone_ = true;
  errorLog_->write(fmt::format("settings file {} cannot be read ({}); its settings are at their defaults and the "
                               "file is left as it is: nothing is saved to it until the program starts with the file "
                               "readable",
                               file_.string(), whyUnreadable));
}

void IniStore::keepOriginalBeforeSaving(std::string original, const IniParseResult& parsed) {
  keptOriginal_ = damagedCopyName(file_, errorLog_->clock().local());
  originalToKeep_ = std::move(original);
  const std::string keeping =
      fmt::format("the original is kept as {} before the file is next saved", keptOriginal_.filename().string());
  if (parsed.damagedLines > 0)
    errorLog_->write(fmt::format("settings file {} is damaged: skipped {} unreadable line(s), the first at line {}; {}",
                                 file_.string(), parsed.damagedLines, parsed.firstDamagedLine, keeping));
  else
    errorLog_->write(fmt::format("settings file {}: {}", file_.string(), keeping));
}

void IniStore::reportRepeats(const IniParseResult& parsed) const {
  const std::vector<std::string> lines = repeatLines(parsed);
  for (size_t i = 0; i < lines.size() && i < kMostRepeatsListed; ++i)
    errorLog_->write(fmt::format("settings file {}: {}", file_.string(), lines[i]));
  if (lines.size() > kMostRepeatsListed)
    errorLog_->write(fmt::format("settings file {}: {} more repeated sections and keys are merged the same way",
                                 file_.string(), lines.size() - kMostRepeatsListed));
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
  if (!fitsOnALine(key, value)) {
    errorLog_->write(fmt::format("settings file {}: the value of key \"{}\" of section \"{}\" is too long to store "
                                 "({} characters)",
                                 file_.string(), key, section, value.size()));
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
  if (!changed_ || leaveFileAlone_) return true;
  if (originalToKeep_ && !keepOriginalBeside()) return false;
  return write();
}

bool IniStore::keepOriginalBeside() {
  std::string error;
  if (!writeFileAtomically(keptOriginal_, *originalToKeep_, &error))
    return saveFailed(fmt::format("settings file {} is not saved: its original cannot be kept as {} first ({})",
                                  file_.string(), keptOriginal_.filename().string(), error));
  originalToKeep_.reset();
  return true;
}

bool IniStore::write() {
  std::string error;
  if (!writeFileAtomically(file_, renderIniText(document_), &error))
    return saveFailed(fmt::format("settings file {} cannot be saved: {}", file_.string(), error));
  changed_ = false;
  lastFlushFailed_ = false;
  return true;
}

bool IniStore::saveFailed(const std::string& message) {
  if (!lastFlushFailed_) errorLog_->write(message);
  lastFlushFailed_ = true;
  return false;
}

void IniStore::reportUnusable(std::string_view section, std::string_view key, std::string_view stored,
                              std::string_view problem) const {
  std::string which = fmt::format("{}\n{}\n{}", section, key, stored);
  if (!reported_.insert(std::move(which)).second) return;
  errorLog_->write(fmt::format("settings file {}, section \"{}\" key \"{}\": {} {}", file_.string(), section, key,
                               shownSettingValue(key, stored), problem));
}

}  // namespace nimbrel
