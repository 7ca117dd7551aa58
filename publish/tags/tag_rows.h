#pragma once
// Short forms for writing the vocabulary's tables: one call per row, the
// name first and what the tag gives last, so that a table reads as a list.
// The replacer is filled in when the tables are put together.

#include <string>
#include <utility>

#include "publish/tags/tag_context.h"
#include "publish/tags/tag_def.h"

namespace nimbrel::tagrows {

// A number in `unit`, `width` characters at least with `decimals` decimals;
// the display-units flag appends the unit's symbol.
inline TagDef number(std::string name, Unit unit, int width, int decimals, TagSource value, std::string gives) {
  return TagDef{std::move(name), Replacer::r1, unit, width, decimals, unit != Unit::none, std::move(value),
                std::move(gives)};
}

// The same number without the symbol, whatever the display-units flag says
// (tags whose name asks for the bare number: "tempnounits", "tempnodp").
inline TagDef bare(std::string name, Unit unit, int width, int decimals, TagSource value, std::string gives) {
  return TagDef{std::move(name), Replacer::r1, unit, width, decimals, false, std::move(value), std::move(gives)};
}

// A word, a time, a date or any other finished text.
inline TagDef text(std::string name, TagSource value, std::string gives) {
  return TagDef{std::move(name), Replacer::r1, Unit::none, 1, 0, false, std::move(value), std::move(gives)};
}

// A tag whose source this program does not have: always "---". `gives`
// says what the tag would give and why there is no value.
inline TagDef missing(std::string name, std::string gives) {
  return TagDef{std::move(name), Replacer::r1, Unit::none, 1, 0, false, TagSource{}, std::move(gives)};
}

// The same row written with a decimal comma, for pages in languages that
// write decimals so ("%temp,%" gives "12,3").
inline TagDef withDecimalComma(TagDef row) {
  row.decimalComma = true;
  return row;
}

// A value of the live record: nothing before the station's first reading.
inline TagValue reading(const TagContext& context, double value) {
  return context.readingsSeen ? TagValue(value) : noData();
}

}  // namespace nimbrel::tagrows
