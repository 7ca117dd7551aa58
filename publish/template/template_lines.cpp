#include "publish/template/template_lines.h"

namespace nimbrel {

std::vector<std::string> templateLines(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty() && lines.size() < kMostTemplateLines) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (end != std::string_view::npos && line.ends_with('\r')) line.remove_suffix(1);
    lines.emplace_back(line);
    text = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
  }
  return lines;
}

std::size_t scanBound(std::string_view templateName, std::size_t length) {
  std::size_t bound = length + 10;
  if (templateName == "climatedata.html") bound += 80;
  if (templateName == "testtags.txt" || templateName == "wxlocal.html" || templateName == "wxlocal2.html")
    bound += 50;
  return bound;
}

}  // namespace nimbrel
