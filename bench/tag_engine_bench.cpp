// Filling templates with the whole vocabulary from a station's real state:
// a demo folder run for a simulated day (logs, extremes, records), read back
// as `nimbrel tags` reads it. One fill includes everything a fill costs:
// the scan, the lookups, the values (logs read back, sun and moon worked
// out once per fill) and their formatting.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "app/demo_command.h"
#include "app/folder_tag_state.h"
#include "publish/tags/page_fill.h"
#include "publish/tags/vocabulary.h"

namespace {

using namespace nimbrel;

// A demo folder with a day of the program's files, made once.
class DemoState {
 public:
  DemoState() : folder_(std::filesystem::temp_directory_path() / "nimbrel-tag-bench"), log_({}, clock_) {
    std::filesystem::remove_all(folder_);
    std::FILE* quiet = std::fopen("/dev/null", "w");
    DemoOptions options;
    options.dir = folder_;
    options.start = fromLocalTime(2026, 3, 10, 0, 0, 0);
    options.speed = ClockSpeed::max();
    options.runForSeconds = 86400;
    runDemo(options, quiet);
    std::fclose(quiet);
    state_ = std::make_unique<FolderTagState>(folder_, log_, std::chrono::system_clock::now());
  }
  ~DemoState() { std::filesystem::remove_all(folder_); }
  std::unique_ptr<TagSnapshot> snapshot() const { return state_->snapshot(); }

 private:
  std::filesystem::path folder_;
  ScaledClock clock_;
  TextLog log_;
  std::unique_ptr<FolderTagState> state_;
};

const DemoState& demoState() {
  static const DemoState state;
  return state;
}

void fill(benchmark::State& state, const std::vector<std::string>& page, const char* templateName) {
  const auto snapshot = demoState().snapshot();
  const ReplacerErrorSink ignore = [](std::string_view) {};
  TagMemory memory;  // the filler's, kept from one fill to the next as the program keeps it
  for (auto _ : state) benchmark::DoNotOptimize(fillLines(page, templateName, *snapshot, ignore, memory));
}

// A typical page: 200 lines, half of them plain markup, the other half with
// one tag each (today's readings, highs and lows, rain, records) among some
// text and a "%" that starts no tag.
void BM_TypicalPage200Lines100Tags(benchmark::State& state) {
  const std::vector<std::string> tags = {"temp",    "hum",      "dew",      "baro",       "avgspd",  "gstspd",
                                         "dirlabel", "maxtemp", "maxtempt", "mintemp",    "mintempt", "dayrn",
                                         "monthrn", "yearrn",   "heati",    "windch",     "highhum",  "lowhum",
                                         "maxgst",  "maxgstt",  "date",     "time",       "feelslike", "dewnodp",
                                         "recordhightemp"};
  std::vector<std::string> page;
  for (int i = 0; i < 200; ++i)
    page.push_back(i % 2 ? fmt::format("<tr><td>Reading {}</td><td>%{}% (100% sure)</td></tr>", i,
                                       tags[static_cast<std::size_t>(i / 2) % tags.size()])
                         : "<div class=\"row\"><span>plain markup of the page</span></div>");
  fill(state, page, "wxlocal.html");
}
BENCHMARK(BM_TypicalPage200Lines100Tags)->Unit(benchmark::kMicrosecond);

// The test file of all tags: one line per tag of the vocabulary.
void BM_AllTagsPage(benchmark::State& state) {
  std::vector<std::string> page;
  for (const TagDef& def : vocabulary().tags()) page.push_back(fmt::format("{} = %{}%", def.name, def.name));
  fill(state, page, "testtags.txt");
}
BENCHMARK(BM_AllTagsPage)->Unit(benchmark::kMicrosecond);

}  // namespace

namespace {

// The tags of one replacer alone: where a fill of every tag spends its time.
void BM_OneReplacersTags(benchmark::State& state) {
  const auto replacer = static_cast<Replacer>(state.range(0));
  std::vector<std::string> page;
  for (const TagDef& def : vocabulary().tags())
    if (def.replacer == replacer) page.push_back(fmt::format("{} = %{}%", def.name, def.name));
  state.SetLabel(fmt::format("replacer {}, {} tags", replacerNumber(replacer), page.size()));
  fill(state, page, "testtags.txt");
}
BENCHMARK(BM_OneReplacersTags)->DenseRange(0, 7)->Unit(benchmark::kMicrosecond);

}  // namespace
