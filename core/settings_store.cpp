#include "core/settings_store.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "core/ini_document.h"

namespace nimbrel {
namespace {

constexpr size_t kLongestShownValue = 40;
// Parts of key names that mark a secret ("FTPPassword", "api secret").
constexpr std::array<std::string_view, 4> kSecretMarks{"password", "passwd", "secret", "token"};

bool holdsASecret(std::string_view key) {
  return std::any_of(kSecretMarks.begin(), kSecretMarks.end(),
                     [&](std::string_view mark) { return containsIgnoringCase(key, mark); });
}

}  // namespace

std::string shownSettingValue(std::string_view key, std::string_view value) {
  if (holdsASecret(key)) return "(hidden)";
  if (value.size() <= kLongestShownValue) return fmt::format("\"{}\"", value);
  return fmt::format("\"{}...\" ({} characters)", value.substr(0, kLongestShownValue), value.size());
}

}  // namespace nimbrel
