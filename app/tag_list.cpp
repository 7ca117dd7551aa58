#include "app/tag_list.h"

#include <fmt/format.h>

#include <array>
#include <string_view>

#include "publish/tags/vocabulary.h"

namespace nimbrel {
namespace {

struct UnitWords {
  Unit unit;
  std::string_view words;
};

constexpr std::array<UnitWords, 22> kUnitWords = {{
    {Unit::none, ""},
    {Unit::temperature, "temperature unit"},
    {Unit::temperatureChange, "temperature unit (a difference)"},
    {Unit::speed, "wind unit"},
    {Unit::pressure, "pressure unit"},
    {Unit::rain, "rain unit"},
    {Unit::rainRate, "rain unit per hour"},
    {Unit::celsius, "°C"},
    {Unit::fahrenheit, "°F"},
    {Unit::kmh, "km/h"},
    {Unit::mph, "mph"},
    {Unit::metresPerSecond, "m/s"},
    {Unit::knots, "knots"},
    {Unit::beaufort, "Beaufort force"},
    {Unit::hPa, "hPa"},
    {Unit::mb, "mb"},
    {Unit::inHg, "inHg"},
    {Unit::kPa, "kPa"},
    {Unit::mm, "mm"},
    {Unit::inches, "inches"},
    {Unit::mmPerHour, "mm/hr"},
    {Unit::inchesPerHour, "in./hr"},
}};

struct Section {
  Replacer replacer;
  std::string_view title;
};

constexpr std::array<Section, kReplacerCount> kSections = {{
    {Replacer::r1, "Current readings, derived values and words"},
    {Replacer::r2, "Today's and yesterday's highs and lows, changes, recent maxima"},
    {Replacer::r3, "Records: all-time, this month, this year"},
    {Replacer::r4, "Averages, month and year to date, climate counts"},
    {Replacer::r5, "Date, time, sun, moon, seasons, the station"},
    {Replacer::r6, "Davis Vantage extra, soil and leaf sensors"},
    {Replacer::r6b, "Sensors of other station makes"},
    {Replacer::r7, "Forecasts, METAR, lightning, snow and the program"},
}};

std::string_view unitWords(Unit unit) {
  for (const auto& entry : kUnitWords)
    if (entry.unit == unit) return entry.words;
  return {};
}

std::string format(const TagDef& def) {
  if (!def.value) return "always ---";
  if (def.unit == Unit::none && def.decimals == 0 && def.width <= 1) return "text or whole number";
  std::string text = def.decimals == 0 ? "whole" : fmt::format("{} decimal{}", def.decimals, def.decimals > 1 ? "s" : "");
  if (def.width > 1) text += fmt::format(", at least {} characters", def.width);
  const std::string_view unit = unitWords(def.unit);
  if (!unit.empty()) text += fmt::format(", {}{}", unit, def.showsUnit ? " (symbol with display units)" : "");
  return text;
}

// Markdown table cells: a "|" would end the cell.
std::string cell(std::string_view text) {
  std::string out;
  for (char c : text) {
    if (c == '|')
      out += "\\|";
    else
      out += c;
  }
  return out;
}

constexpr std::string_view kIntroduction = R"(# Template tags

A template is any text file (a web page, a PHP include, a text for e-mail or
speech) in which a tag, a name between two "%" signs such as `%temp%`, is
replaced by the value it names. Names are matched exactly, letter case
included; an unknown name, and a "%" that starts no tag, stay as they are.

- Numbers are written with a point as decimal separator, in the units chosen
  for the web (the display units, or the web units when they differ). A tag
  whose name states a unit uses that unit. Inches of mercury, kilopascals and
  inches of rain get one decimal more than the figure given below.
- With "display units" on (settings section "Use my own template") a number
  whose format says so carries its unit: "12.3°C", "14.5 km/h", "1013.2 hPa".
  "html degree sign" writes the degree sign as `&deg;`; "spell minus" writes
  every "-" as "minus " for speech; "word language" (english, german,
  italian, spanish, french, danish) chooses the language of trend and
  compass words.
- "---" is written for a value the program does not have: before the
  station's first reading, for a sensor the station does not report, for a
  high or low not seen yet today, and always for the tags marked
  "always ---" below.
- Sun and moon times need the station's position: section "Station
  position", keys "latitude" and "longitude" in decimal degrees (north and
  east positive).

This list is made by the program (`nimbrel tags --list`); it names the
replacer that owns each tag as the program's error messages number them.
)";

}  // namespace

std::string tagListMarkdown() {
  std::string text(kIntroduction);
  for (const Section& section : kSections) {
    std::size_t count = 0;
    for (const TagDef& def : vocabulary().tags()) count += def.replacer == section.replacer;
    text += fmt::format("\n## {} (replacer {}, {} tags)\n\n| Tag | Gives | Format |\n|---|---|---|\n", section.title,
                        replacerNumber(section.replacer), count);
    for (const TagDef& def : vocabulary().tags())
      if (def.replacer == section.replacer)
        text += fmt::format("| `%{}%` | {} | {} |\n", cell(def.name), cell(def.gives), format(def));
  }
  return text;
}

}  // namespace nimbrel
