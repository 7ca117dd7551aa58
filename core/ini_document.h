#pragma once
// The contents of an INI file held in memory: sections of key/value pairs in
// the order they were read or added. Section and key names compare without
// regard to ASCII letter case; the spelling first used is the one kept.
// Values are kept exactly as given.

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace nimbrel {

// Hash and equality of names that ignore ASCII letter case; transparent so
// that lookups take a string_view without building a string.
struct CaseInsensitiveHash {
  using is_transparent = void;
  size_t operator()(std::string_view name) const noexcept;
};
struct CaseInsensitiveEqual {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const noexcept;
};

// Whether `text` holds `part`, letter case aside.
bool containsIgnoringCase(std::string_view text, std::string_view part);

struct IniEntry {
  std::string key;
  std::string value;
};

class IniSection {
 public:
  explicit IniSection(std::string name) : name_(std::move(name)) {}

  const std::string& name() const { return name_; }
  const std::vector<IniEntry>& entries() const { return entries_; }
  const IniEntry* find(std::string_view key) const;

  // Sets the value of `key`, appending the key when new. True when the
  // stored text changed.
  bool set(std::string_view key, std::string_view value);
  // Appends `key` unless the section has it already (the first one read wins).
  bool addIfNew(std::string_view key, std::string_view value);
  bool erase(std::string_view key);

 private:
  void reindexFrom(size_t first);

  std::string name_;
  std::vector<IniEntry> entries_;
  std::unordered_map<std::string, size_t, CaseInsensitiveHash, CaseInsensitiveEqual> index_;
};

class IniDocument {
 public:
  const std::vector<IniSection>& sections() const { return sections_; }
  const IniSection* find(std::string_view section) const;
  const std::string* value(std::string_view section, std::string_view key) const;

  // The section named `name`, appended at the end when missing.
  IniSection& section(std::string_view name);
  // True when the stored text changed.
  bool set(std::string_view section, std::string_view key, std::string_view value);
  bool eraseSection(std::string_view name);
  bool eraseKey(std::string_view section, std::string_view key);

 private:
  IniSection* findMutable(std::string_view name);

  std::vector<IniSection> sections_;
  std::unordered_map<std::string, size_t, CaseInsensitiveHash, CaseInsensitiveEqual> index_;
};

}  // namespace nimbrel
