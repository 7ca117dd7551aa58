#include "datafiles/monthly_log_reader.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "core/file_io.h"

namespace nimbrel {
namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }

bool isInteger(std::string_view text) {
  long value = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  return ec == std::errc{} && end == text.data() + text.size();
}

bool isNumber(std::string_view text) {
  double value = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  return ec == std::errc{} && end == text.data() + text.size() && std::isfinite(value);
}

// Splits on runs of blanks into exactly seventeen fields: date and time as
// integers, the rest as numbers. Anything else is not a data line.
std::optional<MonthlyLogLine> parseLine(std::string_view text) {
  MonthlyLogLine line;
  std::size_t count = 0;
  std::size_t i = 0;
  while (i < text.size()) {
    while (i < text.size() && isBlank(text[i])) ++i;
    if (i == text.size()) break;
    const std::size_t start = i;
    while (i < text.size() && !isBlank(text[i])) ++i;
    if (count == kLogColumns) return std::nullopt;
    const std::string_view field = text.substr(start, i - start);
    const bool valid = count < kDateColumns ? isInteger(field) : isNumber(field);
    if (!valid) return std::nullopt;
    line.fields[count++] = field;
  }
  if (count != kLogColumns) return std::nullopt;
  return line;
}

}  // namespace

double MonthlyLogLine::number(LogColumn column) const {
  const std::string_view text = (*this)[column];
  double value = std::numeric_limits<double>::quiet_NaN();
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

MonthlyLogText::MonthlyLogText(std::string text)
    : text_(std::make_unique<const std::string>(std::move(text))) {
  const std::string_view all = *text_;
  lines_.reserve(all.size() / 96 + 1);  // a metric minute line is about 90 characters
  std::size_t start = 0;
  while (start < all.size()) {
    const std::size_t end = all.find('\n', start);
    if (end == std::string_view::npos) {  // no line end yet: still being written
      ++skipped_;
      break;
    }
    std::string_view line = all.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (auto parsed = parseLine(line))
      lines_.push_back(*parsed);
    else
      ++skipped_;
    start = end + 1;
  }
}

std::optional<MonthlyLogText> readMonthlyLog(const std::filesystem::path& file) {
  auto text = readWholeFile(file);
  if (!text) return std::nullopt;
  return MonthlyLogText(std::move(*text));
}


std::optional<ReadingTime> lastLoggedTime(const std::filesystem::path& file) {
  // A few lines from the end are enough: a line is about 90 characters.
  constexpr std::size_t kTail = 4096;
  auto tail = readFileTail(file, kTail);
  if (!tail) return std::nullopt;
  // The tail's first line may be cut; a cut line is no data line, so it is
  // skipped anyway unless it happens to end in seventeen numbers: drop it.
  if (tail->size() == kTail) {
    const auto firstEnd = tail->find('\n');
    tail->erase(0, firstEnd == std::string::npos ? tail->size() : firstEnd + 1);
  }
  const MonthlyLogText text(std::move(*tail));
  if (text.lines().empty()) return std::nullopt;
  const MonthlyLogLine& line = text.lines().back();
  auto field = [&](LogColumn column) { return static_cast<std::uint16_t>(line.number(column)); };
  return ReadingTime{field(LogColumn::day),  field(LogColumn::month),  field(LogColumn::year),
                     field(LogColumn::hour), field(LogColumn::minute), 0};
}

}  // namespace nimbrel
