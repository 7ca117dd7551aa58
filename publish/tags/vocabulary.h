#pragma once
// The whole tag vocabulary, put together from the eight replacers' tables,
// and the replacers the template engine asks.
//
// Every name is found through one hash of the vocabulary; each replacer
// answers only for the names of its own table, so the engine's chain gives
// the same result as eight separate searches.

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "publish/tags/tag_context.h"
#include "publish/tags/tag_def.h"
#include "publish/tags/tag_format.h"
#include "publish/template/tag_replacer.h"

namespace nimbrel {

class Vocabulary {
 public:
  // Throws std::logic_error when two rows share a name.
  Vocabulary();

  // `name` without the "%" signs; null for a name not in the vocabulary.
  const TagDef* find(std::string_view name) const;
  std::span<const TagDef> tags() const { return tags_; }

 private:
  std::vector<TagDef> tags_;
  std::unordered_map<std::string_view, const TagDef*> byName_;
};

// The vocabulary, built on first use and never changed afterwards.
const Vocabulary& vocabulary();

// The replacer numbers as the error messages and the owners' list name them.
std::string_view replacerNumber(Replacer replacer);

// A tag's value as written for this fill.
std::string tagText(const TagDef& def, const TagContext& context, bool displayUnits);

// The eight replacers for one fill, bound to its context.
class VocabularyChain {
 public:
  VocabularyChain(const Vocabulary& words, const TagContext& context);
  VocabularyChain(const VocabularyChain&) = delete;
  VocabularyChain& operator=(const VocabularyChain&) = delete;

  const ReplacerChain& chain() const { return chain_; }

 private:
  class Slot final : public TagReplacer {
   public:
    Slot() = default;
    void bind(const VocabularyChain* owner, Replacer replacer) {
      owner_ = owner;
      replacer_ = replacer;
    }
    std::optional<std::string> value(std::string_view tag, const TagRun& run) const override;

   private:
    const VocabularyChain* owner_ = nullptr;
    Replacer replacer_ = Replacer::r1;
  };

  const Vocabulary& words_;
  const TagContext& context_;
  std::array<Slot, kReplacerCount> slots_;
  ReplacerChain chain_{};
};

}  // namespace nimbrel
