#pragma once
// A settings store over a copy of an INI document, never written to a file:
// a snapshot of the settings for work done on another thread, and a store
// that previews and dry runs may change without touching the owner's file.

#include "core/ini_document.h"
#include "core/settings_store.h"

namespace nimbrel {

class DocumentSettingsStore final : public SettingsStore {
 public:
  DocumentSettingsStore() = default;
  explicit DocumentSettingsStore(IniDocument document) : document_(std::move(document)) {}

  std::string ReadString(std::string_view section, std::string_view key,
                         std::string_view fallback = "") const override {
    const std::string* stored = document_.value(section, key);
    return stored ? *stored : std::string(fallback);
  }
  void WriteString(std::string_view section, std::string_view key, std::string_view value) override {
    document_.set(section, key, value);
  }
  void ReadSection(std::string_view section, std::vector<std::string>& keys) const override {
    keys.clear();
    if (const IniSection* holder = document_.find(section))
      for (const IniEntry& entry : holder->entries()) keys.push_back(entry.key);
  }
  void EraseSection(std::string_view section) override { document_.eraseSection(section); }
  void DeleteKey(std::string_view section, std::string_view key) override { document_.eraseKey(section, key); }
  bool flush() override { return true; }

  const IniDocument& document() const { return document_; }

 private:
  IniDocument document_;
};

}  // namespace nimbrel
