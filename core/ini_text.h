#pragma once
// INI text to and from an IniDocument.
//
// Reading accepts LF and CR LF line ends and a leading UTF-8 byte-order mark.
// A line is, after any leading blanks and tabs:
//   - empty, or a comment starting with ';': skipped;
//   - "[name]": starts a section; the name runs to the last ']' of the line;
//   - "key=value": the key is everything before the first '=', the value
//     everything after it up to the line end, both kept exactly as written.
//     Blanks around '=' are therefore part of the key and the value: the
//     program writes "key=value" without blanks, and some of its key names
//     end in a blank, which trimming would break.
// A section seen again adds its keys to the first one; a key seen again in a
// section is ignored (the first one wins). Both are listed in the result, so
// that the owner can be told which lines were merged or dropped. Anything
// else is damage: a line without '=', a header without ']', a key before the
// first section, a line holding control bytes (NUL and the like, as in binary
// garbage), a line longer than kMaxIniLineBytes (no setting is that long; a
// file glued to a binary one is). Damaged lines are skipped and counted;
// everything else still loads.
//
// Writing gives "[name]" and "key=value" lines ending in CR LF, with an empty
// line after each section, in stored order.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/ini_document.h"

namespace nimbrel {

inline constexpr size_t kMaxIniLineBytes = 64 * 1024;

// A section header met again: its keys went into the section of `firstLine`.
struct IniRepeatedSection {
  std::string name;  // as written on `line`
  size_t firstLine = 0;
  size_t line = 0;
};

// A key met again in its section: the value of `firstLine` is kept, the one
// of `line` dropped.
struct IniRepeatedKey {
  std::string section;  // the section's first spelling
  std::string key;      // as written on `line`
  size_t firstLine = 0;
  size_t line = 0;
  std::string droppedValue;
};

struct IniParseResult {
  IniDocument document;
  size_t damagedLines = 0;
  size_t firstDamagedLine = 0;  // 1-based; 0 when there is none
  std::vector<IniRepeatedSection> repeatedSections;
  std::vector<IniRepeatedKey> repeatedKeys;

  // Whether writing the document back would lose lines of the text.
  bool dropsLines() const { return damagedLines > 0 || !repeatedKeys.empty(); }
};

IniParseResult parseIniText(std::string_view text);
std::string renderIniText(const IniDocument& document);

// Whether a section or key name can be written and read back unchanged.
bool isWritableSectionName(std::string_view name);
bool isWritableKeyName(std::string_view name);
// Whether "key=value" fits on a line that reads back undamaged.
bool fitsOnALine(std::string_view key, std::string_view value);
// `value` with every control character that would end or damage its line
// (CR, LF, NUL and the like; tabs are kept) replaced by a blank.
std::string writableValue(std::string_view value);

}  // namespace nimbrel
