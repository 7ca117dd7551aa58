#include "publish/tags/vocabulary.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <string>

#include "support/tag_world.h"

namespace nimbrel {
namespace {

std::set<std::string> listedNames() {
  std::ifstream list(NIMBREL_SOURCE_DIR "/publish/tags/tag_names.txt");
  std::set<std::string> names;
  for (std::string line; std::getline(list, line);) names.insert(line);
  return names;
}

TEST(Vocabulary, HoldsExactlyTheListedNamesEachOnce) {
  const std::set<std::string> listed = listedNames();
  ASSERT_EQ(listed.size(), 2321u);
  std::set<std::string> held;
  for (const TagDef& def : vocabulary().tags()) {
    EXPECT_TRUE(listed.contains(def.name)) << def.name << " is not in the list";
    held.insert(def.name);
  }
  EXPECT_EQ(held.size(), vocabulary().tags().size());
  for (const std::string& name : listed) EXPECT_TRUE(held.contains(name)) << name << " is missing";
}

TEST(Vocabulary, EveryTagFitsTheScanAndSaysWhatItGives) {
  for (const TagDef& def : vocabulary().tags()) {
    EXPECT_GE(def.name.size() + 2, 3u);
    EXPECT_LE(def.name.size() + 2, 43u) << def.name;
    EXPECT_EQ(def.name.find('%'), std::string::npos) << def.name;
    EXPECT_FALSE(def.gives.empty()) << def.name;
  }
}

TEST(Vocabulary, OnlyTheOwningReplacerAnswers) {
  testsupport::TagWorld world;
  const TagContext context = world.context();
  VocabularyChain chain(vocabulary(), context);
  const TagDef* time = vocabulary().find("time");
  ASSERT_NE(time, nullptr);
  int answers = 0;
  for (const TagReplacer* replacer : chain.chain())
    if (replacer->value("%time%", TagRun{})) ++answers;
  EXPECT_EQ(answers, 1);
  for (const TagReplacer* replacer : chain.chain()) EXPECT_FALSE(replacer->value("%Time%", TagRun{}));
}

}  // namespace
}  // namespace nimbrel
