#pragma once
// The one interface through which every part reads and writes its settings:
// sections of keys with text values. Everything is text; the reader converts.
// A missing key reads as the empty text, and an empty text means "use the
// setting's built-in default". Switches are on only when the text is "yes".
//
// Numbers are read through readInteger and readDecimal, which every reader
// shares: a stored text that is not a number, or lies outside what the
// setting can mean, gives the setting's default and is reported, naming the
// section, the key, the text and the value used instead.

#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace nimbrel {

// What a whole-number setting may hold: the bounds are included; when
// `choices` is given, only those values.
struct IntegerRule {
  long long min = std::numeric_limits<long long>::min();
  long long max = std::numeric_limits<long long>::max();
  std::span<const long long> choices = {};
};

struct DecimalRange {
  double min = -std::numeric_limits<double>::infinity();
  double max = std::numeric_limits<double>::infinity();
};

// Common rules by meaning.
inline constexpr IntegerRule kHourOfDay{0, 23};
inline constexpr IntegerRule kMonthOfYear{1, 12};
inline constexpr IntegerRule kNetworkPort{1, 65535};
inline constexpr IntegerRule kPositive{1};
inline constexpr IntegerRule kNotNegative{0};
inline constexpr DecimalRange kNotNegativeAmount{0};  // rain totals, sums

// `value` as it may appear in a log: hidden for keys that hold a password or
// another secret, and shortened when long.
std::string shownSettingValue(std::string_view key, std::string_view value);

class SettingsStore {
 public:
  virtual ~SettingsStore() = default;

  // The stored text, or `fallback` when the key is missing.
  virtual std::string ReadString(std::string_view section, std::string_view key,
                                 std::string_view fallback = "") const = 0;
  virtual void WriteString(std::string_view section, std::string_view key, std::string_view value) = 0;
  // Fills `keys` with the key names of `section`, in stored order.
  virtual void ReadSection(std::string_view section, std::vector<std::string>& keys) const = 0;
  virtual void EraseSection(std::string_view section) = 0;
  virtual void DeleteKey(std::string_view section, std::string_view key) = 0;
  // Writes the store to its backing file; false (and the reason logged) on failure.
  virtual bool flush() = 0;

  bool readSwitch(std::string_view section, std::string_view key) const {
    return ReadString(section, key) == "yes";
  }
  void writeSwitch(std::string_view section, std::string_view key, bool on) {
    WriteString(section, key, on ? "yes" : "no");
  }

  // The stored number, or `fallback` when the text is empty, is not a number
  // or breaks the rule (the last two reported through reportUnusable).
  long long readInteger(std::string_view section, std::string_view key, long long fallback,
                        const IntegerRule& rule = {}) const;
  double readDecimal(std::string_view section, std::string_view key, double fallback,
                     const DecimalRange& range = {}) const;

 protected:
  // A stored text that could not be used; `problem` says what the setting
  // should hold and which value is used instead. A store with an error log
  // writes it there; this one says nothing.
  virtual void reportUnusable(std::string_view /*section*/, std::string_view /*key*/, std::string_view /*stored*/,
                              std::string_view /*problem*/) const {}
};

}  // namespace nimbrel
