#pragma once
// A template as the engine holds it: a list of lines, at most 4500; lines
// past the last one kept are dropped without a word.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace nimbrel {

inline constexpr std::size_t kMostTemplateLines = 4500;

// The lines of `text`, split at "\n" with a "\r" before it removed; a last
// line without a line end counts, an empty text has no lines.
std::vector<std::string> templateLines(std::string_view text);

// How far (1-based) the scan of a line of `length` characters goes: the
// length plus 10, and more for the templates whose lines grow most.
std::size_t scanBound(std::string_view templateName, std::size_t length);

}  // namespace nimbrel
