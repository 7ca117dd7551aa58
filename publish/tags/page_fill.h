#pragma once
// A template filled with the whole vocabulary from a snapshot of the
// station's state: the one call the program, the preview command and the
// upload scheduler use to make a page.

#include "publish/tags/tag_snapshot.h"
#include "publish/template/custom_web_page.h"

namespace nimbrel {

// Fills `job` as customwebpage does, with the template options of the
// snapshot's settings (`appendCustomText` from the caller). False when the
// output could not be written.
// `memory` is the filler's, kept from one fill to the next (logs read,
// summaries of past months).
bool fillPage(const TemplateJob& job, TagSnapshot& snapshot, bool appendCustomText, const ReplacerErrorSink& report,
              TagMemory& memory);

// The template's lines filled, for a preview that writes no file.
std::vector<std::string> fillLines(std::vector<std::string> lines, std::string_view templateName,
                                   TagSnapshot& snapshot, const ReplacerErrorSink& report, TagMemory& memory);

}  // namespace nimbrel
