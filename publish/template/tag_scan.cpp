#include "publish/template/tag_scan.h"

#include <algorithm>
#include <exception>

#include <fmt/format.h>

namespace nimbrel {
namespace {

enum class Outcome { Unchanged, Replaced, Failed };

// Asks the replacers in order until one changes the line. A value equal to
// the tag leaves the line as it was, so the next replacer is asked as well.
Outcome askChain(std::string& line, std::size_t at, std::size_t length, const LineScan& scan) {
  const std::string_view tag(line.data() + at, length);
  bool failed = false;
  for (std::size_t k = 0; k < kReplacerCount; ++k) {
    const TagReplacer* replacer = scan.chain[k];
    if (!replacer) continue;
    try {
      const auto text = replacer->value(tag, scan.run);
      if (text && *text != tag) {
        line.replace(at, length, *text);
        return Outcome::Replaced;
      }
    } catch (const std::exception& e) {
      failed = true;
      scan.onError(fmt::format("error with new custom string {} {}", kReplacerNumbers[k], e.what()));
    } catch (...) {
      failed = true;
      scan.onError(fmt::format("error with new custom string {} unknown exception", kReplacerNumbers[k]));
    }
  }
  return failed ? Outcome::Failed : Outcome::Unchanged;
}

// The candidates that begin at `at`: the text from there to each later "%"
// within the longest tag's reach. Since names hold no "%", only the one that
// ends at the next "%" can be a tag. After a replacement the longer lengths
// are tried at the same place on the new text. A candidate that runs to the
// end of the line comes back once for every longer length, so a replacer
// that failed on it is asked (and fails) again each time.
void scanAt(std::string& line, std::size_t at, const LineScan& scan) {
  std::size_t length = kShortestTag;
  while (length <= kLongestTag) {
    if (at >= line.size() || line[at] != '%') return;
    const std::size_t close = line.find('%', at + 1);
    if (close == std::string::npos) return;
    const std::size_t candidate = close - at + 1;
    if (candidate < kShortestTag || candidate > kLongestTag) return;
    const bool endsLine = close + 1 == line.size();
    if (candidate < length && !endsLine) return;  // every longer text holds a "%" inside
    length = std::max(length, candidate);
    const Outcome outcome = askChain(line, at, candidate, scan);
    if (outcome == Outcome::Unchanged) return;  // asking again would give the same answers
    if (outcome == Outcome::Failed && !endsLine) return;
    ++length;
  }
}

}  // namespace

void replaceTagsInLine(std::string& line, std::size_t bound, const LineScan& scan) {
  for (std::size_t at = line.find('%'); at != std::string::npos && at < bound; at = line.find('%', at + 1))
    scanAt(line, at, scan);
}

}  // namespace nimbrel
