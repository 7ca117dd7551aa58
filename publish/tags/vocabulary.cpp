#include "publish/tags/vocabulary.h"

#include <stdexcept>

#include "publish/tags/tag_tables.h"

namespace nimbrel {
namespace {

void append(std::vector<TagDef>& all, std::vector<TagDef> table, Replacer replacer) {
  for (TagDef& def : table) {
    def.replacer = replacer;
    all.push_back(std::move(def));
  }
}

}  // namespace

Vocabulary::Vocabulary() {
  append(tags_, currentTags(), Replacer::r1);
  append(tags_, todayTags(), Replacer::r2);
  append(tags_, recordTags(), Replacer::r3);
  append(tags_, climateTags(), Replacer::r4);
  append(tags_, almanacTags(), Replacer::r5);
  append(tags_, sensorTags(), Replacer::r6);
  append(tags_, otherStationTags(), Replacer::r6b);
  append(tags_, serviceTags(), Replacer::r7);
  byName_.reserve(tags_.size() * 2);
  for (const TagDef& def : tags_)
    if (!byName_.emplace(def.name, &def).second) throw std::logic_error("tag listed twice: " + def.name);
}

const TagDef* Vocabulary::find(std::string_view name) const {
  const auto found = byName_.find(name);
  return found == byName_.end() ? nullptr : found->second;
}

const Vocabulary& vocabulary() {
  static const Vocabulary words;
  return words;
}

std::string_view replacerNumber(Replacer replacer) {
  return kReplacerNumbers[static_cast<std::size_t>(replacer)];
}

std::string tagText(const TagDef& def, const TagContext& context, bool displayUnits) {
  const TagWriting writing{context.units.units, displayUnits, context.options.htmlDegreeSign,
                           context.options.spellMinus};
  return formatTag(def, def.value ? def.value(context) : noData(), writing);
}

VocabularyChain::VocabularyChain(const Vocabulary& words, const TagContext& context)
    : words_(words), context_(context) {
  for (std::size_t i = 0; i < kReplacerCount; ++i) {
    slots_[i].bind(this, static_cast<Replacer>(i));
    chain_[i] = &slots_[i];
  }
}

std::optional<std::string> VocabularyChain::Slot::value(std::string_view tag, const TagRun& run) const {
  if (tag.size() < 3) return std::nullopt;
  const TagDef* def = owner_->words_.find(tag.substr(1, tag.size() - 2));
  if (def == nullptr || def->replacer != replacer_) return std::nullopt;
  return tagText(*def, owner_->context_, run.displayUnits);
}

}  // namespace nimbrel
