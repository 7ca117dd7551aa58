#include "publish/tags/page_fill.h"

#include "publish/tags/vocabulary.h"

namespace nimbrel {

bool fillPage(const TemplateJob& job, TagSnapshot& snapshot, bool appendCustomText, const ReplacerErrorSink& report,
              TagMemory& memory) {
  TemplateOptions options = readTemplateOptions(snapshot.settings());
  options.appendCustomText = appendCustomText;
  const TagContext context = snapshot.context(memory);
  const VocabularyChain chain(vocabulary(), context);
  return customwebpage(job, options, chain.chain(), snapshot.rawHeader(), report);
}

std::vector<std::string> fillLines(std::vector<std::string> lines, std::string_view templateName,
                                   TagSnapshot& snapshot, const ReplacerErrorSink& report, TagMemory& memory) {
  const TagRun run = tagRunFor(readTemplateOptions(snapshot.settings()), templateName);
  const TagContext context = snapshot.context(memory);
  const VocabularyChain chain(vocabulary(), context);
  return fillTemplate(std::move(lines), templateName, chain.chain(), run, report);
}

}  // namespace nimbrel
