#include "processing/records/record_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "core/number_format.h"

namespace nimbrel {
namespace {

constexpr std::size_t kDateFields = 5;

std::vector<std::string> fieldsOf(std::string_view text) {
  std::vector<std::string> fields;
  std::size_t start = 0;
  while (start < text.size()) {
    const std::size_t end = std::min(text.find(' ', start), text.size());
    if (end > start) fields.emplace_back(text.substr(start, end - start));
    start = end + 1;
  }
  return fields;
}

bool parseWithin(const std::string& text, int min, int max, int& out) {
  long long parsed = 0;
  if (!parseInt(text, parsed) || parsed < min || parsed > max) return false;
  out = static_cast<int>(parsed);
  return true;
}

}  // namespace

// {fmt} rounds the exact binary value to the nearest and ties to even, as
// printf does in the default rounding mode; std::nearbyint does the same.
std::string tenthsText(double value) { return fmt::format("{:.0f}", value * 10); }

double roundedToTenths(double value) { return std::nearbyint(value * 10) / 10; }

std::string directionText(double degrees) { return fmt::format("{:.0f}", degrees); }

std::string recordValueText(const RecordValue& record) {
  const RecordTime& t = record.when;
  return fmt::format("{} {} {} {} {} {} ", tenthsText(record.value), t.year, t.month, t.day, t.hour, t.minute);
}

std::optional<RecordValue> parseRecordValue(std::string_view text) {
  const std::vector<std::string> fields = fieldsOf(text);
  if (fields.size() < 1 + kDateFields) return std::nullopt;
  double tenths = 0;
  if (!parseDouble(fields[0], tenths)) return std::nullopt;
  RecordValue record{tenths / 10, {}};
  RecordTime& t = record.when;
  const bool dateOk = parseWithin(fields[1], 1, 65535, t.year) && parseWithin(fields[2], 1, 12, t.month) &&
                      parseWithin(fields[3], 1, 31, t.day) && parseWithin(fields[4], 0, 23, t.hour) &&
                      parseWithin(fields[5], 0, 59, t.minute);
  if (!dateOk) return std::nullopt;
  return record;
}

}  // namespace nimbrel
