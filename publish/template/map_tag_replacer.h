#pragma once
// A replacer backed by a table of fixed texts: for tags whose values are set
// once (the station's name, its position), and for trying the engine out.

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "publish/template/tag_replacer.h"

namespace nimbrel {

class MapTagReplacer : public TagReplacer {
 public:
  // `name` without its "%" signs.
  void set(std::string name, std::string value) { values_[std::move(name)] = std::move(value); }

  std::optional<std::string> value(std::string_view tag, const TagRun&) const override {
    if (tag.size() < 3) return std::nullopt;
    const auto found = values_.find(tag.substr(1, tag.size() - 2));
    if (found == values_.end()) return std::nullopt;
    return found->second;
  }

 private:
  std::map<std::string, std::string, std::less<>> values_;
};

}  // namespace nimbrel
