#include "core/ini_text.h"

#include <algorithm>
#include <unordered_map>

namespace nimbrel {
namespace {

constexpr std::string_view kUtf8Bom = "\xEF\xBB\xBF";
constexpr std::string_view kLineEnd = "\r\n";

bool isControlByte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte < 0x20 && byte != '\t') || byte == 0x7F;
}

bool hasControlBytes(std::string_view text) { return std::any_of(text.begin(), text.end(), isControlByte); }

std::string_view withoutLeadingBlanks(std::string_view line) {
  const auto first = line.find_first_not_of(" \t");
  return first == std::string_view::npos ? std::string_view{} : line.substr(first);
}

// Line numbers by name, names compared as the document compares them.
using FirstLines = std::unordered_map<std::string, size_t, CaseInsensitiveHash, CaseInsensitiveEqual>;

// Reads the lines of `text` one by one and builds the document.
class IniReader {
 public:
  IniParseResult run(std::string_view text) {
    if (text.starts_with(kUtf8Bom)) text.remove_prefix(kUtf8Bom.size());
    while (!text.empty()) {
      const auto end = text.find('\n');
      std::string_view line = text.substr(0, end);
      text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
      if (line.ends_with('\r')) line.remove_suffix(1);
      ++lineNumber_;
      if (!readLine(withoutLeadingBlanks(line))) markDamaged();
    }
    return std::move(result_);
  }

 private:
  // False when the line is damaged.
  bool readLine(std::string_view line) {
    if (line.empty() || line.front() == ';') return true;
    if (line.size() > kMaxIniLineBytes || hasControlBytes(line)) return false;
    if (line.front() == '[') return readHeader(line);
    const auto equals = line.find('=');
    if (equals == 0 || equals == std::string_view::npos || !current_) return false;
    readEntry(line.substr(0, equals), line.substr(equals + 1));
    return true;
  }

  bool readHeader(std::string_view line) {
    const auto close = line.rfind(']');
    if (close == std::string_view::npos || close < 2) return false;
    const std::string_view name = line.substr(1, close - 1);
    const auto [first, isNew] = sectionLines_.try_emplace(std::string(name), lineNumber_);
    if (!isNew) result_.repeatedSections.push_back({std::string(name), first->second, lineNumber_});
    current_ = &result_.document.section(name);
    return true;
  }

  void readEntry(std::string_view key, std::string_view value) {
    const auto [first, isNew] = keyLines_.try_emplace(current_->name() + '\n' + std::string(key), lineNumber_);
    if (isNew) {
      current_->addIfNew(key, value);
      return;
    }
    result_.repeatedKeys.push_back({current_->name(), std::string(key), first->second, lineNumber_, std::string(value)});
  }

  void markDamaged() {
    if (result_.damagedLines++ == 0) result_.firstDamagedLine = lineNumber_;
  }

  IniParseResult result_;
  IniSection* current_ = nullptr;
  size_t lineNumber_ = 0;
  FirstLines sectionLines_;
  FirstLines keyLines_;  // by section name and key, joined with a line break
};

}  // namespace

IniParseResult parseIniText(std::string_view text) { return IniReader().run(text); }

std::string renderIniText(const IniDocument& document) {
  std::string text;
  for (const IniSection& section : document.sections()) {
    text.append("[").append(section.name()).append("]").append(kLineEnd);
    for (const IniEntry& entry : section.entries())
      text.append(entry.key).append("=").append(entry.value).append(kLineEnd);
    text.append(kLineEnd);
  }
  return text;
}

bool isWritableSectionName(std::string_view name) { return !name.empty() && !hasControlBytes(name); }

bool isWritableKeyName(std::string_view name) {
  return !name.empty() && !hasControlBytes(name) && name.find('=') == std::string_view::npos && name.front() != ' ' &&
         name.front() != '\t' && name.front() != ';' && name.front() != '[';
}

bool fitsOnALine(std::string_view key, std::string_view value) {
  return key.size() + 1 + value.size() <= kMaxIniLineBytes;
}

std::string writableValue(std::string_view value) {
  std::string stored(value);
  std::replace_if(stored.begin(), stored.end(), isControlByte, ' ');
  return stored;
}

}  // namespace nimbrel
