#include "core/reg_export.h"

#include "core/file_io.h"

namespace nimbrel {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

std::string regQuoted(std::string_view text) {
  std::string out = "\"";
  for (char c : text) {
    if (c == '\\' || c == '"') out += '\\';
    out += c;
  }
  out += '"';
  return out;
}

}  // namespace

std::string regExportText(const IniDocument& document, std::string_view storeName) {
  const std::string root = "HKEY_CURRENT_USER\\Software\\" + std::string(storeName);
  std::string text = "Windows Registry Editor Version 5.00";
  text.append(kLineEnd).append(kLineEnd);
  text.append("[").append(root).append("]").append(kLineEnd).append(kLineEnd);
  for (const IniSection& section : document.sections()) {
    text.append("[").append(root).append("\\").append(section.name()).append("]").append(kLineEnd);
    for (const IniEntry& entry : section.entries())
      text.append(regQuoted(entry.key)).append("=").append(regQuoted(entry.value)).append(kLineEnd);
    text.append(kLineEnd);
  }
  return text;
}

bool exportReg(const IniStore& store, const std::filesystem::path& target, std::string* error) {
  return writeFileAtomically(target, regExportText(store.document(), store.path().filename().string()), error);
}

}  // namespace nimbrel
