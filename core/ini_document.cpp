#include "core/ini_document.h"

#include <algorithm>

namespace nimbrel {
namespace {

unsigned char asciiLower(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte >= 'A' && byte <= 'Z') ? static_cast<unsigned char>(byte + ('a' - 'A')) : byte;
}

}  // namespace

size_t CaseInsensitiveHash::operator()(std::string_view name) const noexcept {
  // FNV-1a over the lower-cased bytes.
  size_t hash = 14695981039346656037ULL;
  for (char c : name) {
    hash ^= asciiLower(c);
    hash *= 1099511628211ULL;
  }
  return hash;
}

bool CaseInsensitiveEqual::operator()(std::string_view a, std::string_view b) const noexcept {
  return a.size() == b.size() &&
         std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return asciiLower(x) == asciiLower(y); });
}

bool containsIgnoringCase(std::string_view text, std::string_view part) {
  const auto sameLetter = [](char x, char y) { return asciiLower(x) == asciiLower(y); };
  return std::search(text.begin(), text.end(), part.begin(), part.end(), sameLetter) != text.end();
}

const IniEntry* IniSection::find(std::string_view key) const {
  const auto found = index_.find(key);
  return found == index_.end() ? nullptr : &entries_[found->second];
}

bool IniSection::set(std::string_view key, std::string_view value) {
  const auto found = index_.find(key);
  if (found == index_.end()) return addIfNew(key, value);
  std::string& stored = entries_[found->second].value;
  if (stored == value) return false;
  stored.assign(value);
  return true;
}

bool IniSection::addIfNew(std::string_view key, std::string_view value) {
  const auto [where, added] = index_.try_emplace(std::string(key), entries_.size());
  if (!added) return false;
  entries_.push_back({where->first, std::string(value)});
  return true;
}

bool IniSection::erase(std::string_view key) {
  const auto found = index_.find(key);
  if (found == index_.end()) return false;
  const size_t position = found->second;
  index_.erase(found);
  entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(position));
  reindexFrom(position);
  return true;
}

void IniSection::reindexFrom(size_t first) {
  for (size_t i = first; i < entries_.size(); ++i) index_.find(entries_[i].key)->second = i;
}

const IniSection* IniDocument::find(std::string_view section) const {
  const auto found = index_.find(section);
  return found == index_.end() ? nullptr : &sections_[found->second];
}

IniSection* IniDocument::findMutable(std::string_view name) {
  const auto found = index_.find(name);
  return found == index_.end() ? nullptr : &sections_[found->second];
}

const std::string* IniDocument::value(std::string_view section, std::string_view key) const {
  const IniSection* holder = find(section);
  if (!holder) return nullptr;
  const IniEntry* entry = holder->find(key);
  return entry ? &entry->value : nullptr;
}

IniSection& IniDocument::section(std::string_view name) {
  if (IniSection* existing = findMutable(name)) return *existing;
  index_.emplace(std::string(name), sections_.size());
  return sections_.emplace_back(std::string(name));
}

bool IniDocument::set(std::string_view sectionName, std::string_view key, std::string_view value) {
  return section(sectionName).set(key, value);
}

bool IniDocument::eraseSection(std::string_view name) {
  const auto found = index_.find(name);
  if (found == index_.end()) return false;
  const size_t position = found->second;
  index_.erase(found);
  sections_.erase(sections_.begin() + static_cast<std::ptrdiff_t>(position));
  for (size_t i = position; i < sections_.size(); ++i) index_.find(sections_[i].name())->second = i;
  return true;
}

bool IniDocument::eraseKey(std::string_view section, std::string_view key) {
  IniSection* holder = findMutable(section);
  return holder && holder->erase(key);
}

}  // namespace nimbrel
