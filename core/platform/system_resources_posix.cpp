#include "core/platform/system_resources.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <sstream>
#include <string>

namespace nimbrel::platform {
namespace {

std::optional<long long> kilobytesIn(const char* path, std::string_view key) {
  std::ifstream in(path);
  if (!in) return std::nullopt;
  std::ostringstream text;
  text << in.rdbuf();
  return kilobytesOf(text.str(), key);
}

}  // namespace

std::optional<long long> kilobytesOf(std::string_view procText, std::string_view key) {
  std::size_t at = 0;
  while (at < procText.size()) {
    const std::size_t end = std::min(procText.find('\n', at), procText.size());
    const std::string_view line = procText.substr(at, end - at);
    at = end + 1;
    if (line.size() <= key.size() || !line.starts_with(key) || line[key.size()] != ':') continue;
    const std::size_t digits = line.find_first_of("0123456789", key.size() + 1);
    if (digits == std::string_view::npos) return std::nullopt;
    long long value = 0;
    const auto [ptr, error] = std::from_chars(line.data() + digits, line.data() + line.size(), value);
    if (error != std::errc{}) return std::nullopt;
    return value;
  }
  return std::nullopt;
}

std::optional<long long> residentMemoryKb() { return kilobytesIn("/proc/self/status", "VmRSS"); }

std::optional<long long> availableMemoryKb() { return kilobytesIn("/proc/meminfo", "MemAvailable"); }

std::optional<double> uptimeSeconds() {
  std::ifstream in("/proc/uptime");
  double seconds = 0;
  if (!(in >> seconds)) return std::nullopt;
  return seconds;
}

}  // namespace nimbrel::platform
