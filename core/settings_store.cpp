#include "core/settings_store.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "core/ini_document.h"
#include "core/number_format.h"

namespace nimbrel {
namespace {

constexpr size_t kLongestShownValue = 40;
// Parts of key names that mark a secret ("FTPPassword", "api secret").
constexpr std::array<std::string_view, 4> kSecretMarks{"password", "passwd", "secret", "token"};

bool holdsASecret(std::string_view key) {
  return std::any_of(kSecretMarks.begin(), kSecretMarks.end(),
                     [&](std::string_view mark) { return containsIgnoringCase(key, mark); });
}

std::string numberText(long long n) { return fmt::format("{}", n); }
std::string numberText(double n) { return floatText(n); }

// Whether a bound says something to the owner: whole numbers end up in an
// int, so its own limits bound nothing; decimals are unbounded unless a range
// gives a finite bound.
bool isRealBound(long long n) { return n > std::numeric_limits<int>::min() && n < std::numeric_limits<int>::max(); }
bool isRealBound(double n) { return std::isfinite(n); }

// " from 0 to 23", " of at least 1", "" for a number without bounds.
template <class Number>
std::string boundsText(Number min, Number max) {
  const bool hasMin = isRealBound(min);
  const bool hasMax = isRealBound(max);
  if (hasMin && hasMax) return fmt::format(" from {} to {}", numberText(min), numberText(max));
  if (hasMin) return fmt::format(" of at least {}", numberText(min));
  if (hasMax) return fmt::format(" of at most {}", numberText(max));
  return {};
}

std::string ruleText(const IntegerRule& rule) {
  if (rule.choices.empty()) return "a whole number" + boundsText(rule.min, rule.max);
  return fmt::format("one of {}", fmt::join(rule.choices, ", "));
}

bool follows(const IntegerRule& rule, long long n) {
  if (n < rule.min || n > rule.max) return false;
  return rule.choices.empty() || std::find(rule.choices.begin(), rule.choices.end(), n) != rule.choices.end();
}

}  // namespace

std::string shownSettingValue(std::string_view key, std::string_view value) {
  if (holdsASecret(key)) return "(hidden)";
  if (value.size() <= kLongestShownValue) return fmt::format("\"{}\"", value);
  return fmt::format("\"{}...\" ({} characters)", value.substr(0, kLongestShownValue), value.size());
}

long long SettingsStore::readInteger(std::string_view section, std::string_view key, long long fallback,
                                     const IntegerRule& rule) const {
  const std::string stored = ReadString(section, key);
  if (stored.empty()) return fallback;
  long long parsed = 0;
  if (parseInt(stored, parsed) && follows(rule, parsed)) return parsed;
  reportUnusable(section, key, stored, fmt::format("is not {}; using {}", ruleText(rule), fallback));
  return fallback;
}

double SettingsStore::readDecimal(std::string_view section, std::string_view key, double fallback,
                                  const DecimalRange& range) const {
  const std::string stored = ReadString(section, key);
  if (stored.empty()) return fallback;
  double parsed = 0;
  if (parseDouble(stored, parsed) && parsed >= range.min && parsed <= range.max) return parsed;
  reportUnusable(section, key, stored,
                 fmt::format("is not a number{}; using {}", boundsText(range.min, range.max), floatText(fallback)));
  return fallback;
}

}  // namespace nimbrel
