// libFuzzer target: arbitrary bytes as a template, through the line split
// and the tag scan with a small vocabulary whose values are longer, shorter,
// empty or hold "%" signs. Only termination and memory safety are checked,
// plus one rule: a template without "%" comes out unchanged.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "publish/template/custom_web_page.h"
#include "publish/template/map_tag_replacer.h"
#include "publish/template/template_lines.h"

namespace {

nimbrel::MapTagReplacer vocabulary(int share) {
  nimbrel::MapTagReplacer replacer;
  const char* values[][2] = {{"temp", "12.3"}, {"hum", ""}, {"long", "................................................"},
                             {"pct", "%"}, {"tag", "%temp%"}, {"open", "%te"}, {"a", "mp%"}};
  for (int i = share; i < 7; i += 2) replacer.set(values[i][0], values[i][1]);
  return replacer;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 1) return 0;
  static const nimbrel::MapTagReplacer first = vocabulary(0), second = vocabulary(1);
  const nimbrel::ReplacerChain chain{&first, nullptr, nullptr, &second, nullptr, nullptr, &first, nullptr};
  const char* names[] = {"wx.html", "climatedata.html", "testtags.txt", "wxlocal2.html"};
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  const auto lines = nimbrel::templateLines(text);
  const nimbrel::ReplacerErrorSink ignore = [](std::string_view) {};
  const auto filled = nimbrel::fillTemplate(lines, names[data[0] % 4], chain, {}, ignore);
  if (text.find('%') == std::string_view::npos && filled != lines) std::abort();
  return 0;
}
