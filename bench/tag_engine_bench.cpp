#include <benchmark/benchmark.h>

#include <array>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "publish/template/custom_web_page.h"
#include "publish/template/map_tag_replacer.h"

namespace {

// `count` made-up tag names dealt round the eight replacers, so that a tag
// is found after one to eight lookups, as in the real vocabulary.
struct BenchVocabulary {
  explicit BenchVocabulary(int count) {
    for (int i = 0; i < count; ++i) {
      names.push_back(fmt::format("benchtag{:04}reading", i));
      replacers[i % 8].set(names.back(), fmt::format("{:.1f}", i * 0.7));
    }
    for (std::size_t k = 0; k < replacers.size(); ++k) chain[k] = &replacers[k];
  }
  std::vector<std::string> names;
  std::array<nimbrel::MapTagReplacer, 8> replacers;
  nimbrel::ReplacerChain chain{};
};

void fillPage(benchmark::State& state, const std::vector<std::string>& page, const BenchVocabulary& vocabulary,
              const char* templateName) {
  const nimbrel::ReplacerErrorSink ignore = [](std::string_view) {};
  for (auto _ : state)
    benchmark::DoNotOptimize(nimbrel::fillTemplate(page, templateName, vocabulary.chain, {}, ignore));
}

// A typical page: 200 lines, half of them plain markup, the other half with
// one tag each among some text and a "%" that starts no tag.
void BM_TypicalPage200Lines100Tags(benchmark::State& state) {
  const BenchVocabulary vocabulary(300);
  std::vector<std::string> page;
  for (int i = 0; i < 200; ++i)
    page.push_back(i % 2 ? fmt::format("<tr><td>Reading {}</td><td>%{}% (100% sure)</td></tr>", i,
                                       vocabulary.names[i * 3 % 300])
                         : "<div class=\"row\"><span>plain markup of the page</span></div>");
  fillPage(state, page, vocabulary, "wxlocal.html");
}
BENCHMARK(BM_TypicalPage200Lines100Tags)->Unit(benchmark::kMicrosecond);

// The test file of all tags: 2300 lines, one tag each.
void BM_AllTagsPage2300Tags(benchmark::State& state) {
  const BenchVocabulary vocabulary(2300);
  std::vector<std::string> page;
  for (const auto& name : vocabulary.names) page.push_back(fmt::format("{} = %{}%<br>", name, name));
  fillPage(state, page, vocabulary, "testtags.txt");
}
BENCHMARK(BM_AllTagsPage2300Tags)->Unit(benchmark::kMicrosecond);

}  // namespace
