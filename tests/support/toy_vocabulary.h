#pragma once
// A small made-up tag vocabulary spread over the eight replacers, with the
// awkward cases the engine must survive: empty values, values longer than
// their tags, values holding "%", a value equal to its own tag, the longest
// name that fits and one that does not, and a replacer that throws on a name
// a later one also knows.

#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "publish/template/tag_replacer.h"

namespace nimbrel::testsupport {

struct ToySlot {
  std::map<std::string, std::string, std::less<>> values;  // name (no "%") -> value
  std::set<std::string, std::less<>> failing;              // names whose value throws
};

inline std::string longestName() { return std::string(41, 'n'); }    // "%...%" is 43 long
inline std::string tooLongName() { return std::string(42, 'm'); }    // 44 long: never a tag
inline std::string longValue() { return std::string(70, 'L'); }

inline std::vector<ToySlot> toySlots() {
  std::vector<ToySlot> s(kReplacerCount);
  s[0].values = {{"temp", "12.3"}, {"temp,", "12.3,"}, {"x", "X"}, {"same", "%same%"}};
  s[1].values = {{"hum", "81"}, {"dew", ""}, {"baro", "1013.2 hPa"}};
  s[1].failing = {"rain"};
  s[2].values = {{"long", longValue()}, {"pct", "50%"}, {"opener", "%h"}};
  s[3].values = {{"same", "S"}, {longestName(), "43!"}, {tooLongName(), "44!"}};
  s[4].values = {{"wind dir", "NNE"}, {"a/b=", "slash"}, {"empty", ""}};
  s[4].failing = {"broken"};  // nobody else knows it
  s[5].values = {{"rain", "0.4 mm"}, {"mid", "mid%dle"}};
  s[6].values = {{"sixb", "6b"}, {"twin", "%temp%"}};
  s[6].failing = {"bad"};
  s[7].values = {{"seven", "7777777777777777777777777"}, {"bad", "recovered"}};
  return s;
}

// The engine's view of one toy slot: a lookup by the tag's name.
class ToyReplacer final : public TagReplacer {
 public:
  explicit ToyReplacer(const ToySlot& slot) : slot_(&slot) {}
  std::optional<std::string> value(std::string_view tag, const TagRun&) const override {
    const std::string_view name = tag.substr(1, tag.size() - 2);
    if (slot_->failing.contains(name)) throw std::runtime_error("no reading for " + std::string(name));
    const auto found = slot_->values.find(name);
    if (found == slot_->values.end()) return std::nullopt;
    return found->second;
  }

 private:
  const ToySlot* slot_;
};

}  // namespace nimbrel::testsupport
