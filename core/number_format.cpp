#include "core/number_format.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <cmath>
#include <string_view>

namespace nimbrel {
namespace {

std::string_view trimmed(const std::string& text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string::npos) return {};
  const auto last = text.find_last_not_of(" \t");
  return std::string_view(text).substr(first, last - first + 1);
}

// Far from a tie the binary value and its shortest decimal text round the
// same way, and {fmt} rounds the binary value directly, which is much
// cheaper than the digit work below. Empty near a tie, for large values or
// many decimals, where the digits must decide.
std::optional<std::string> fixedAwayFromTies(double value, int width, int decimals) {
  constexpr double kPowersOfTen[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};
  if (decimals >= static_cast<int>(std::size(kPowersOfTen))) return std::nullopt;
  const double scaled = std::fabs(value) * kPowersOfTen[decimals];
  if (scaled >= 1e9) return std::nullopt;
  const double fraction = scaled - std::floor(scaled);
  if (std::fabs(fraction - 0.5) < 1e-6) return std::nullopt;
  const bool roundsToZero = scaled < 0.5;  // print 0, never -0
  return fmt::format("{:>{}.{}f}", roundsToZero ? 0.0 : value, width, decimals);
}

}  // namespace

// Rounds half away from zero on the decimal digits of the shortest text that
// reads back as the value, so 9.95 gives "10.0" and 1013.25 gives "1013.3"
// (a binary-exact rounding would give "9.9" and round ties to even).
std::string fixed(double value, int width, int decimals) {
  if (!std::isfinite(value)) return fmt::format("{:>{}}", value, width);
  decimals = std::max(decimals, 0);
  if (auto quick = fixedAwayFromTies(value, width, decimals)) return std::move(*quick);
  char buffer[64];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value),
                                    std::chars_format::scientific);
  const std::string_view text(buffer, static_cast<size_t>(result.ptr - buffer));
  const auto e = text.find('e');
  std::string digits;
  for (char c : text.substr(0, e))
    if (c != '.') digits += c;
  const int exponent = std::stoi(std::string(text.substr(e + 1)));

  // The digits of round(|value| x 10^decimals).
  const int kept = exponent + 1 + decimals;
  std::string scaled;
  if (kept > 0) {
    scaled = digits.substr(0, std::min<size_t>(digits.size(), static_cast<size_t>(kept)));
    scaled.resize(static_cast<size_t>(kept), '0');
  }
  const bool roundUp = kept >= 0 && static_cast<size_t>(kept) < digits.size() && digits[kept] >= '5';
  if (roundUp) {
    int i = static_cast<int>(scaled.size()) - 1;
    for (; i >= 0 && scaled[i] == '9'; --i) scaled[i] = '0';
    if (i >= 0)
      ++scaled[i];
    else
      scaled.insert(scaled.begin(), '1');
  }
  const auto firstNonZero = scaled.find_first_not_of('0');
  const bool isZero = firstNonZero == std::string::npos;
  scaled = isZero ? "" : scaled.substr(firstNonZero);
  if (scaled.size() < static_cast<size_t>(decimals) + 1) scaled.insert(0, decimals + 1 - scaled.size(), '0');
  if (decimals > 0) scaled.insert(scaled.size() - decimals, 1, '.');
  if (std::signbit(value) && !isZero) scaled.insert(0, 1, '-');  // never "-0.0"
  return fmt::format("{:>{}}", scaled, width);
}

std::string padded(long long value, int width) { return fmt::format("{:>{}}", value, width); }

std::string floatText(double value) {
  if (value == 0.0) return "0";
  return fmt::format("{:.15g}", value);
}

bool parseInt(const std::string& text, long long& out) {
  const auto t = trimmed(text);
  if (t.empty()) return false;
  const char* begin = t.data();
  if (*begin == '+') ++begin;
  const auto [end, ec] = std::from_chars(begin, t.data() + t.size(), out);
  return ec == std::errc{} && end == t.data() + t.size();
}

bool parseDouble(const std::string& text, double& out) {
  const auto t = trimmed(text);
  if (t.empty()) return false;
  const char* begin = t.data();
  if (*begin == '+') ++begin;
  const auto [end, ec] = std::from_chars(begin, t.data() + t.size(), out);
  return ec == std::errc{} && end == t.data() + t.size() && std::isfinite(out);
}

}  // namespace nimbrel
