#pragma once
// A settings store held in a map, for tests that only need section/key/value
// access. Section and key names compare exactly.

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "core/settings_store.h"

namespace nimbrel::testsupport {

class MemorySettingsStore final : public SettingsStore {
 public:
  std::string ReadString(std::string_view section, std::string_view key,
                         std::string_view fallback = "") const override {
    const auto found = values_.find({std::string(section), std::string(key)});
    return found == values_.end() ? std::string(fallback) : found->second;
  }
  void WriteString(std::string_view section, std::string_view key, std::string_view value) override {
    values_[{std::string(section), std::string(key)}] = std::string(value);
  }
  void ReadSection(std::string_view section, std::vector<std::string>& keys) const override {
    keys.clear();
    for (const auto& [name, value] : values_)
      if (name.first == section) keys.push_back(name.second);
  }
  void EraseSection(std::string_view section) override {
    std::erase_if(values_, [section](const auto& entry) { return entry.first.first == section; });
  }
  void DeleteKey(std::string_view section, std::string_view key) override {
    values_.erase({std::string(section), std::string(key)});
  }
  bool flush() override { return true; }

  std::size_t size() const { return values_.size(); }

 private:
  std::map<std::pair<std::string, std::string>, std::string> values_;
};

}  // namespace nimbrel::testsupport
