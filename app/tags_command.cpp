#include "app/tags_command.h"

#include <fmt/format.h>

#include <chrono>

#include "app/folder_tag_state.h"
#include "core/file_io.h"
#include "publish/tags/page_fill.h"
#include "publish/tags/vocabulary.h"
#include "publish/template/template_lines.h"

namespace nimbrel {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kAllTagsTemplate = "testtags.txt";
constexpr std::string_view kAllTagsOutput = "testtags.php";

// The preview's own messages: shown on standard error, kept in no file.
class PreviewLog {
 public:
  explicit PreviewLog(std::FILE* err) : log_({}, clock_) {
    log_.echoThrough([err](std::string_view line) { fmt::print(err, "{}", line); });
  }
  TextLog& log() { return log_; }

 private:
  ScaledClock clock_;
  TextLog log_;
};

fs::path templatePath(const TagsRequest& request, const ProgramFolders& folders) {
  const fs::path given(request.templateFile);
  std::error_code ec;
  if (fs::exists(given, ec) || given.has_parent_path()) return given;
  return folders.webfiles / given;
}

std::string joined(const std::vector<std::string>& lines, std::string_view lineEnd) {
  std::string text;
  for (const auto& line : lines) {
    text += line;
    text += lineEnd;
  }
  return text;
}

int fillAll(FolderTagState& state, std::FILE* out, std::FILE* err, TextLog& log) {
  const fs::path folder = state.folders().webfiles;
  std::string error;
  if (!writeFileAtomically(folder / kAllTagsTemplate, allTagsTemplate(), &error, Durability::Cached)) {
    fmt::print(err, "cannot write {}: {}\n", (folder / kAllTagsTemplate).string(), error);
    return 2;
  }
  const auto snapshot = state.snapshot();
  const TemplateJob job{folder, std::string(kAllTagsTemplate), std::string(kAllTagsOutput)};
  if (!fillPage(job, *snapshot, false, [&log](std::string_view m) { log.write(m); }, state.memory())) return 2;
  fmt::print(out, "{}\n", (folder / kAllTagsOutput).string());
  return 0;
}

}  // namespace

std::string allTagsTemplate() {
  std::string text;
  for (const TagDef& def : vocabulary().tags()) text += fmt::format("{} = %{}%\r\n", def.name, def.name);
  return text;
}

int runTags(const TagsRequest& request, std::FILE* out, std::FILE* err) {
  PreviewLog preview(err);
  std::error_code ec;
  if (!fs::is_directory(request.dir, ec)) {
    fmt::print(err, "{} is not a folder\n", request.dir.string());
    return 2;
  }
  FolderTagState state(request.dir, preview.log(), std::chrono::system_clock::now());
  if (!state.hasReadings())
    fmt::print(err, "no readings in {}: the tags of current readings show \"---\"\n",
               (state.folders().webfiles / "clientraw.txt").string());
  if (request.all) return fillAll(state, out, err, preview.log());

  const fs::path source = templatePath(request, state.folders());
  const auto text = readWholeFile(source);
  if (!text) {
    fmt::print(err, "cannot read the template {}\n", source.string());
    return 2;
  }
  const auto snapshot = state.snapshot();
  const auto lines = fillLines(templateLines(*text), source.filename().string(), *snapshot,
                               [&preview](std::string_view m) { preview.log().write(m); }, state.memory());
  if (request.outputFile.empty()) {
    fmt::print(out, "{}", joined(lines, "\n"));
    return 0;
  }
  std::string error;
  if (!writeFileAtomically(request.outputFile, joined(lines, "\r\n"), &error, Durability::Cached)) {
    fmt::print(err, "cannot write {}: {}\n", request.outputFile, error);
    return 2;
  }
  return 0;
}

}  // namespace nimbrel
