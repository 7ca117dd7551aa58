#pragma once
// Reading a clientraw line back, from this station's file or a copy fetched
// from another station: the fields are split on single blanks and the text is
// taken only when its first field is "12345"; anything else (an empty file,
// an error page from a web server, another file altogether) is refused.

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/unit_choices.h"

namespace nimbrel {

class ClientrawReading {
 public:
  explicit ClientrawReading(std::vector<std::string> fields) : fields_(std::move(fields)) {}

  const std::vector<std::string>& fields() const { return fields_; }
  // The field at `index`, or nothing past the end of a short line.
  std::optional<std::string_view> field(std::size_t index) const;

  // "hh:mm" from the hour and minute fields, as the mesonet views show it.
  std::optional<std::string> hourMinute() const;
  // The day and month fields joined with "/", day first for the metric date
  // order and month first for the US one.
  std::optional<std::string> dayMonth(UnitSystem dateOrder) const;
  // The line ended with its trailer field: it was written to its end.
  bool hasTrailer() const;

 private:
  std::vector<std::string> fields_;
};

// The fields of `text`, or nothing when field 0 is not "12345". A line end
// after the last field is allowed.
std::optional<ClientrawReading> readClientraw(std::string_view text);
// The same for a file; nothing when it cannot be read.
std::optional<ClientrawReading> readClientrawFile(const std::filesystem::path& file);

}  // namespace nimbrel
