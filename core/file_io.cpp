#include "core/file_io.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <system_error>

#include "core/platform/durable_file.h"

namespace nimbrel {
namespace {

struct FileCloser {
  void operator()(std::FILE* f) const { std::fclose(f); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

bool fail(std::string* error, std::string text) {
  if (error) *error = std::move(text);
  return false;
}

std::string describe(const std::filesystem::path& p, const char* what) {
  return std::string(what) + " " + p.string() + ": " + std::strerror(errno);
}

std::filesystem::path temporaryNameFor(const std::filesystem::path& target) {
  auto tmp = target;
  tmp += ".tmp";
  return tmp;
}

}  // namespace

bool writeFileAtomically(const std::filesystem::path& target, std::string_view content, std::string* error,
                         Durability durability) {
  const auto tmp = temporaryNameFor(target);
  if (!platform::writeWholeFile(tmp, content, durability == Durability::Synced)) {
    std::string why = describe(tmp, "cannot write");
    std::error_code ec;
    if (std::filesystem::is_regular_file(tmp, ec)) std::filesystem::remove(tmp, ec);  // ours, half written
    return fail(error, why);
  }
  std::error_code ec;
  std::filesystem::rename(tmp, target, ec);
  if (ec) {
    std::filesystem::remove(tmp, ec);
    return fail(error, "cannot replace " + target.string() + ": " + ec.message());
  }
  return true;
}

bool copyFileAtomically(const std::filesystem::path& source, const std::filesystem::path& target,
                        std::string* error, Durability durability) {
  auto content = readWholeFile(source, error);
  if (!content) return false;
  return writeFileAtomically(target, *content, error, durability);
}

bool overwriteFile(const std::filesystem::path& target, std::string_view content, std::string* error) {
  long oldSize = 0;
  {
    FilePtr f(std::fopen(target.c_str(), "r+b"));
    if (f && std::fseek(f.get(), 0, SEEK_END) == 0) oldSize = std::ftell(f.get());
    if (f) std::rewind(f.get());
    if (!f) f.reset(std::fopen(target.c_str(), "wb"));
    if (!f) return fail(error, describe(target, "cannot create"));
    if (std::fwrite(content.data(), 1, content.size(), f.get()) != content.size() || std::fflush(f.get()) != 0)
      return fail(error, describe(target, "cannot write"));
  }
  if (oldSize >= 0 && static_cast<std::size_t>(oldSize) <= content.size()) return true;
  std::error_code ec;
  std::filesystem::resize_file(target, content.size(), ec);
  if (ec) return fail(error, "cannot shorten " + target.string() + ": " + ec.message());
  return true;
}

bool appendToFile(const std::filesystem::path& target, std::string_view text, std::string* error) {
  // Whole or not at all, as every log line.
  if (!platform::appendWhole(target, {}, text, nullptr)) return fail(error, describe(target, "cannot write"));
  return true;
}

bool appendWithHeader(const std::filesystem::path& target, std::string_view header, std::string_view text,
                      bool* created, std::string* error) {
  if (!platform::appendWhole(target, header, text, created)) return fail(error, describe(target, "cannot write"));
  return true;
}

std::optional<std::string> readFileTail(const std::filesystem::path& source, std::size_t most) {
  FilePtr f(std::fopen(source.c_str(), "rb"));
  if (!f || std::fseek(f.get(), 0, SEEK_END) != 0) return std::nullopt;
  const long size = std::ftell(f.get());
  if (size < 0) return std::nullopt;
  const long from = size > static_cast<long>(most) ? size - static_cast<long>(most) : 0;
  if (std::fseek(f.get(), from, SEEK_SET) != 0) return std::nullopt;
  std::string content(static_cast<std::size_t>(size - from), '\0');
  content.resize(std::fread(content.data(), 1, content.size(), f.get()));
  if (std::ferror(f.get())) return std::nullopt;
  return content;
}

std::optional<std::string> readWholeFile(const std::filesystem::path& source, std::string* error) {
  FilePtr f(std::fopen(source.c_str(), "rb"));
  if (!f) {
    fail(error, describe(source, "cannot open"));
    return std::nullopt;
  }
  std::string content;
  char buffer[8192];
  size_t n = 0;
  while ((n = std::fread(buffer, 1, sizeof buffer, f.get())) > 0) content.append(buffer, n);
  if (std::ferror(f.get())) {
    fail(error, describe(source, "cannot read"));
    return std::nullopt;
  }
  return content;
}

}  // namespace nimbrel
