#include "publish/template/tag_scan.h"

#include <algorithm>
#include <exception>

#include <fmt/format.h>

#include "publish/template/scan_cursor.h"

namespace nimbrel {
namespace {

enum class Outcome { Unchanged, Replaced, Failed };

// Asks the replacers in order until one changes the line. A value equal to
// the tag leaves the line as it was, so the next replacer is asked as well.
Outcome askChain(ScanCursor& cursor, std::size_t length, const LineScan& scan) {
  const std::string_view tag = cursor.ahead().substr(0, length);
  bool failed = false;
  for (std::size_t k = 0; k < kReplacerCount; ++k) {
    const TagReplacer* replacer = scan.chain[k];
    if (!replacer) continue;
    try {
      const auto text = replacer->value(tag, scan.run);
      if (text && *text != tag) {
        cursor.replace(length, *text);
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

// The candidates that begin where the cursor stands, on a "%": the text from
// there to each later "%" within the longest tag's reach. Since names hold no
// "%", only the one that ends at the next "%" can be a tag. After a
// replacement the longer lengths are tried at the same place on the new
// text. A candidate that runs to the end of the line comes back once for
// every longer length, so a replacer that failed on it is asked (and fails)
// again each time.
void scanAt(ScanCursor& cursor, const LineScan& scan) {
  std::size_t length = kShortestTag;
  while (length <= kLongestTag) {
    const std::string_view text = cursor.ahead();
    if (text.empty() || text.front() != '%') return;
    const std::size_t close = text.find('%', 1);
    if (close == std::string_view::npos) return;
    const std::size_t candidate = close + 1;
    if (candidate < kShortestTag || candidate > kLongestTag) return;
    const bool endsLine = candidate == text.size() && cursor.aheadIsAll();
    if (candidate < length && !endsLine) return;  // every longer text holds a "%" inside
    length = std::max(length, candidate);
    const Outcome outcome = askChain(cursor, candidate, scan);
    if (outcome == Outcome::Unchanged) return;  // asking again would give the same answers
    if (outcome == Outcome::Failed && !endsLine) return;
    ++length;
  }
}

}  // namespace

void replaceTagsInLine(std::string& line, std::size_t bound, const LineScan& scan) {
  if (line.find('%') == std::string::npos) return;
  ScanCursor cursor(line);
  while (cursor.toNextSign() && cursor.position() < bound) {
    scanAt(cursor, scan);
    cursor.step();
  }
  cursor.finish();
}

}  // namespace nimbrel
