#pragma once
// Web pages and text files from the owner's templates: every tag in the
// template ("%temp%") replaced by its value, the result written beside it.

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "publish/template/raw_header.h"
#include "publish/template/tag_replacer.h"
#include "publish/template/tag_scan.h"

namespace nimbrel {

class SettingsStore;

// One template to process: both files lie in `folder` (the web-files folder).
struct TemplateJob {
  std::filesystem::path folder;
  std::string templateName;
  std::string outputName;
};

// Settings section "Use my own template", plus the custom text outputs'
// append switch.
struct TemplateOptions {
  bool displayUnits = false;
  bool rawDataInHeader = false;
  bool appendCustomText = false;
};

inline constexpr std::string_view kTemplateSection = "Use my own template";

TemplateOptions readTemplateOptions(const SettingsStore& settings);

// What the replacers are told for a fill of `templateName`: the full-data
// file is read by programs, which want bare numbers.
TagRun tagRunFor(const TemplateOptions& options, std::string_view templateName);

// The template's lines with their tags replaced.
std::vector<std::string> fillTemplate(std::vector<std::string> lines, std::string_view templateName,
                                      const ReplacerChain& chain, const TagRun& run,
                                      const ReplacerErrorSink& onError);

// Reads the job's template (its first 4500 lines), replaces the tags and
// writes the output: appended for the custom text outputs when their append
// switch is on, replaced whole otherwise; "wx.html" starts with the raw
// header line when asked. A missing template is reported to `log` and its
// message becomes the output. False when the output cannot be written.
// Messages go to `report` (the status log, or a collector when the page is
// filled away from the thread that owns the log).
bool customwebpage(const TemplateJob& job, const TemplateOptions& options, const ReplacerChain& chain,
                   const RawHeaderValues& header, const ReplacerErrorSink& report);

}  // namespace nimbrel
