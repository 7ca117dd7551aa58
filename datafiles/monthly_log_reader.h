#pragma once
// Reading a monthly log back: the seventeen blank-separated fields of each
// data line, by position. The header, blank lines and lines that are not
// seventeen numbers (a foreign or damaged line) are skipped, and so is a last
// line without its line end, which the writer may still be appending.

#include <array>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/live_record.h"
#include "datafiles/log_fields.h"

namespace nimbrel {

struct MonthlyLogLine {
  std::array<std::string_view, kLogColumns> fields;

  std::string_view operator[](LogColumn column) const { return fields[static_cast<std::size_t>(column)]; }
  // The field as a number; every field of a line that was kept is one.
  double number(LogColumn column) const;
};

// The text of one log and its data lines, which point into that text.
// Moving keeps the lines valid.
class MonthlyLogText {
 public:
  explicit MonthlyLogText(std::string text);

  const std::vector<MonthlyLogLine>& lines() const { return lines_; }
  // Lines that were not data lines: the header, blank, foreign or half-written ones.
  std::size_t skipped() const { return skipped_; }

 private:
  std::unique_ptr<const std::string> text_;
  std::vector<MonthlyLogLine> lines_;
  std::size_t skipped_ = 0;
};

// Nothing when the file cannot be read.
std::optional<MonthlyLogText> readMonthlyLog(const std::filesystem::path& file);

// The date and time of the last whole data line of a monthly log, read from
// the file's end; nothing when it has none or cannot be read.
std::optional<ReadingTime> lastLoggedTime(const std::filesystem::path& file);

}  // namespace nimbrel
