#pragma once
// One template line with its tags replaced. The scan visits each "%" up to a
// bound fixed before the first replacement, so a line lengthened by its
// values may keep tags pushed past that bound; templates rely on the margin
// the bound leaves, which is why it is kept as it is.

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "publish/template/tag_replacer.h"

namespace nimbrel {

// Where a replacer's failure is reported ("error with new custom string 6b ...").
using ReplacerErrorSink = std::function<void(std::string_view message)>;

struct LineScan {
  const ReplacerChain& chain;
  const TagRun& run;
  const ReplacerErrorSink& onError;
};

// The longest and shortest tag, both "%" signs included.
inline constexpr std::size_t kLongestTag = 43;
inline constexpr std::size_t kShortestTag = 3;

// Replaces the tags of `line` in place, visiting the "%" signs at positions
// 1 to `bound` (1-based) that still lie within the changing line.
void replaceTagsInLine(std::string& line, std::size_t bound, const LineScan& scan);

}  // namespace nimbrel
