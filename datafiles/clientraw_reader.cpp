#include "datafiles/clientraw_reader.h"

#include "core/file_io.h"
#include "datafiles/clientraw_layout.h"

namespace nimbrel {
namespace {

std::string_view withoutLineEnd(std::string_view text) {
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.remove_suffix(1);
  return text;
}

// Each blank ends a field, so two blanks in a row give an empty field, just
// as the web pages that split the file see it. The blank after the last field
// ends it and starts nothing.
std::vector<std::string> splitOnBlanks(std::string_view text) {
  std::vector<std::string> fields;
  std::size_t start = 0;
  while (start < text.size()) {
    const std::size_t blank = text.find(' ', start);
    if (blank == std::string_view::npos) {
      fields.emplace_back(text.substr(start));
      break;
    }
    fields.emplace_back(text.substr(start, blank - start));
    start = blank + 1;
  }
  return fields;
}

}  // namespace

std::optional<std::string_view> ClientrawReading::field(std::size_t index) const {
  if (index >= fields_.size()) return std::nullopt;
  return fields_[index];
}

std::optional<std::string> ClientrawReading::hourMinute() const {
  const auto h = field(clientraw::hour);
  const auto m = field(clientraw::minute);
  if (!h || !m) return std::nullopt;
  return std::string(*h) + ":" + std::string(*m);
}

std::optional<std::string> ClientrawReading::dayMonth(UnitSystem dateOrder) const {
  const auto d = field(clientraw::day);
  const auto m = field(clientraw::month);
  if (!d || !m) return std::nullopt;
  const bool monthFirst = dateOrder == UnitSystem::usa;
  return std::string(monthFirst ? *m : *d) + "/" + std::string(monthFirst ? *d : *m);
}

bool ClientrawReading::hasTrailer() const {
  if (fields_.size() < 2) return false;
  const std::string_view last = fields_.back();
  return last.size() > clientraw::kTrailerOpening.size() + clientraw::kTrailerClosing.size() &&
         last.starts_with(clientraw::kTrailerOpening) && last.ends_with(clientraw::kTrailerClosing);
}

std::optional<ClientrawReading> readClientraw(std::string_view text) {
  std::vector<std::string> fields = splitOnBlanks(withoutLineEnd(text));
  if (fields.empty() || fields.front() != clientraw::kMagic) return std::nullopt;
  return ClientrawReading(std::move(fields));
}

std::optional<ClientrawReading> readClientrawFile(const std::filesystem::path& file) {
  const auto text = readWholeFile(file);
  if (!text) return std::nullopt;
  return readClientraw(*text);
}

}  // namespace nimbrel
