#pragma once
// One row of the tag vocabulary: a tag's name, the replacer that owns it,
// how its value is found and how it is written.
//
// A value is found in the internal units of the live record (°C, knots, hPa,
// mm, mm per hour) and converted on output to the unit the owner chose for
// the web, or to the unit the tag's own name states ("tempinmetric",
// "windinmph"). `decimals` is the count for the metric unit; inches of
// mercury, kilopascals and inches of rain, whose numbers are smaller, get
// one decimal more.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace nimbrel {

struct TagContext;

// The replacers in the order the engine asks them ("newcustomstring" is 1,
// "newcustomstring6b" sits between 6 and 7).
enum class Replacer : std::uint8_t { r1, r2, r3, r4, r5, r6, r6b, r7 };

enum class Unit : std::uint8_t {
  none,               // a count, an index, a percentage, a time or a word: shown as it is
  temperature,        // °C, shown in the owner's temperature unit
  temperatureChange,  // a difference of temperatures: converted without the offset
  speed,              // knots, shown in the owner's wind unit (Beaufort shows the force)
  pressure,           // hPa, shown in the owner's pressure unit
  rain,               // mm, shown in the owner's rain unit
  rainRate,           // mm per hour, shown in the owner's rain unit per hour
  // Units the tag's name states, used whatever the owner chose:
  celsius,
  fahrenheit,
  kmh,
  mph,
  metresPerSecond,
  knots,
  beaufort,
  hPa,
  mb,
  inHg,
  kPa,
  mm,
  inches,
  mmPerHour,
  inchesPerHour,
};

// What a tag's source gives: nothing (written "---"), a number in the
// internal unit of the tag's family, or a finished text.
class TagValue {
 public:
  TagValue() = default;
  TagValue(double number) : value_(number) {}
  TagValue(int number) : value_(static_cast<double>(number)) {}
  TagValue(std::optional<double> number) {
    if (number) value_ = *number;
  }
  TagValue(std::string text) : value_(std::move(text)) {}
  TagValue(const char* text) : value_(std::string(text)) {}
  TagValue(std::string_view text) : value_(std::string(text)) {}

  bool missing() const { return std::holds_alternative<std::monostate>(value_); }
  const double* number() const { return std::get_if<double>(&value_); }
  const std::string* text() const { return std::get_if<std::string>(&value_); }

 private:
  std::variant<std::monostate, double, std::string> value_;
};

// The no-data value: a source the program does not have, a sensor the
// station lacks, a value not computed yet.
inline TagValue noData() { return {}; }

using TagSource = std::function<TagValue(const TagContext&)>;

struct TagDef {
  std::string name;  // without the "%" signs
  Replacer replacer;
  Unit unit = Unit::none;
  int width = 1;  // numbers are right-aligned in at least this many characters
  int decimals = 0;
  bool showsUnit = false;  // the display-units flag appends the unit's symbol
  TagSource value;         // empty: always "---"
  std::string gives;       // what the tag gives, for the owners' list of tags
  bool decimalComma = false;  // the number is written "12,3" (tags whose name ends in ",")
};

}  // namespace nimbrel
