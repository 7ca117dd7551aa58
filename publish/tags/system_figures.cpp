#include "publish/tags/system_figures.h"

#include "core/platform/system_resources.h"

namespace nimbrel::systemfigures {
namespace {

constexpr double kKilobytesPerMegabyte = 1024.0;

std::optional<double> megabytes(std::optional<long long> kb) {
  if (!kb) return std::nullopt;
  return static_cast<double>(*kb) / kKilobytesPerMegabyte;
}

std::string counted(long long count, const char* unit) {
  return std::to_string(count) + " " + unit + (count == 1 ? "" : "s");
}

}  // namespace

std::string durationText(double seconds) {
  const long long minutes = seconds > 0 ? static_cast<long long>(seconds / 60) : 0;
  const long long days = minutes / (24 * 60);
  const long long hours = minutes / 60 % 24;
  std::string text;
  if (days > 0) text = counted(days, "day") + " ";
  if (days > 0 || hours > 0) text += counted(hours, "hour") + " ";
  return text + counted(minutes % 60, "minute");
}

std::optional<double> memoryUsedMb() { return megabytes(platform::residentMemoryKb()); }

std::optional<double> freeMemoryMb() { return megabytes(platform::availableMemoryKb()); }

std::optional<double> uptimeSeconds() { return platform::uptimeSeconds(); }

}  // namespace nimbrel::systemfigures
