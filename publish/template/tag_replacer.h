#pragma once
// The replacers that give tags their values. A template tag is a name between
// two "%" signs ("%temp%"); the vocabulary is split over eight replacers,
// asked in a fixed order, each owning its own share of the names.

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace nimbrel {

// What a replacer may need to know about the run it serves.
struct TagRun {
  bool displayUnits = false;  // values carry their unit symbol ("12.3°C")
  bool metarLoaded = false;   // the nearby stations' METAR reports were read for this run
};

class TagReplacer {
 public:
  virtual ~TagReplacer() = default;
  // The text that replaces `tag` (both "%" signs included, e.g. "%temp%")
  // when this replacer owns the name, nothing otherwise. Tag names never hold
  // a "%" and are never empty, so the engine asks only about such candidates.
  // The answer must depend on the tag and the run alone; it may throw while
  // working out a value, and the engine then reports it and asks the next one.
  virtual std::optional<std::string> value(std::string_view tag, const TagRun& run) const = 0;
};

// The replacers in the order they are asked; an empty slot is skipped.
inline constexpr std::size_t kReplacerCount = 8;
using ReplacerChain = std::array<const TagReplacer*, kReplacerCount>;

// The replacers' numbers as the error messages name them.
inline constexpr std::array<std::string_view, kReplacerCount> kReplacerNumbers = {"1", "2", "3", "4",
                                                                                 "5", "6", "6b", "7"};

}  // namespace nimbrel
