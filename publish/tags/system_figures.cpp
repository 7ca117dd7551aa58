#include "publish/tags/system_figures.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <sstream>

namespace nimbrel::systemfigures {
namespace {

constexpr double kKilobytesPerMegabyte = 1024.0;

std::optional<std::string> fileText(const char* path) {
  std::ifstream in(path);
  if (!in) return std::nullopt;
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

std::optional<double> megabytesOf(const char* path, std::string_view key) {
  const std::optional<std::string> text = fileText(path);
  if (!text) return std::nullopt;
  const std::optional<long long> kb = kilobytesOf(*text, key);
  if (!kb) return std::nullopt;
  return static_cast<double>(*kb) / kKilobytesPerMegabyte;
}

std::string counted(long long count, const char* unit) {
  return std::to_string(count) + " " + unit + (count == 1 ? "" : "s");
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

std::string durationText(double seconds) {
  const long long minutes = seconds > 0 ? static_cast<long long>(seconds / 60) : 0;
  const long long days = minutes / (24 * 60);
  const long long hours = minutes / 60 % 24;
  std::string text;
  if (days > 0) text = counted(days, "day") + " ";
  if (days > 0 || hours > 0) text += counted(hours, "hour") + " ";
  return text + counted(minutes % 60, "minute");
}

std::optional<double> memoryUsedMb() { return megabytesOf("/proc/self/status", "VmRSS"); }

std::optional<double> freeMemoryMb() { return megabytesOf("/proc/meminfo", "MemAvailable"); }

std::optional<double> uptimeSeconds() {
  std::ifstream in("/proc/uptime");
  double seconds = 0;
  if (!(in >> seconds)) return std::nullopt;
  return seconds;
}

}  // namespace nimbrel::systemfigures
