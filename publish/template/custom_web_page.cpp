#include "publish/template/custom_web_page.h"

#include <fmt/format.h>

#include "core/file_io.h"
#include "core/settings_store.h"
#include "publish/template/template_lines.h"

namespace nimbrel {
namespace {

bool isCustomTextOutput(std::string_view name) {
  if (name == "customtextout.txt") return true;
  for (int n = 2; n <= 10; ++n)
    if (name == fmt::format("customtextout{}.txt", n)) return true;
  return false;
}

// The template's lines, or the one line saying it is missing.
std::vector<std::string> loadTemplate(const TemplateJob& job, const ReplacerErrorSink& report) {
  const auto path = job.folder / job.templateName;
  std::error_code ec;
  if (std::filesystem::is_regular_file(path, ec))
    if (auto text = readWholeFile(path)) return templateLines(*text);
  std::string missing = "Custom file does not exist " + path.string();
  report(missing);
  return {std::move(missing)};
}

std::string joinLines(const std::vector<std::string>& lines, std::string text) {
  for (const auto& line : lines) text += line + "\r\n";
  return text;
}

}  // namespace

TemplateOptions readTemplateOptions(const SettingsStore& settings) {
  TemplateOptions options;
  options.displayUnits = settings.readSwitch(kTemplateSection, "display units");
  options.rawDataInHeader = settings.readSwitch(kTemplateSection, "raw data in header");
  return options;
}

TagRun tagRunFor(const TemplateOptions& options, std::string_view templateName) {
  TagRun run;
  run.displayUnits = options.displayUnits && templateName != "qzfulldata.htm";
  return run;
}

std::vector<std::string> fillTemplate(std::vector<std::string> lines, std::string_view templateName,
                                      const ReplacerChain& chain, const TagRun& run,
                                      const ReplacerErrorSink& onError) {
  const LineScan scan{chain, run, onError};
  for (auto& line : lines) replaceTagsInLine(line, scanBound(templateName, line.size()), scan);
  return lines;
}

bool customwebpage(const TemplateJob& job, const TemplateOptions& options, const ReplacerChain& chain,
                   const RawHeaderValues& header, const ReplacerErrorSink& report) {
  const TagRun run = tagRunFor(options, job.templateName);
  const auto lines = fillTemplate(loadTemplate(job, report), job.templateName, chain, run, report);

  std::string text;
  if (job.outputName == "wx.html" && options.rawDataInHeader) text = rawHeaderLine(header) + "\r\n";
  text = joinLines(lines, std::move(text));
  const auto target = job.folder / job.outputName;
  std::string error;
  const bool append = options.appendCustomText && isCustomTextOutput(job.outputName);
  const bool written = append ? appendToFile(target, text, &error)
                              : writeFileAtomically(target, text, &error, Durability::Cached);
  if (!written) report(fmt::format("cannot write {}: {}", target.string(), error));
  return written;
}

}  // namespace nimbrel
