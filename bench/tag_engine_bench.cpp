// Filling templates with the whole vocabulary from a station's real state:
// a demo folder run for a simulated day (logs, extremes, records), read back
// as `nimbrel tags` reads it. One fill includes everything a fill costs:
// the scan, the lookups, the values (logs read back, sun and moon worked
// out once per fill) and their formatting.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "app/demo_command.h"
#include "app/folder_tag_state.h"
#include "datafiles/log_fields.h"
#include "datafiles/log_files.h"
#include "publish/tags/civil_calendar.h"
#include "publish/tags/page_fill.h"
#include "publish/tags/vocabulary.h"

namespace {

using namespace nimbrel;

// A demo folder with a day of the program's files, made once; with
// `earlierDays`, the monthly logs also hold that many days before the demo's
// day, as a station running for a month or a year has them: each is the
// demo's day again under its own date, with an hour of rain every fifth day.
class DemoState {
 public:
  explicit DemoState(int earlierDays)
      : folder_(std::filesystem::temp_directory_path() / fmt::format("nimbrel-tag-bench-{}", earlierDays)),
        log_({}, clock_) {
    std::filesystem::remove_all(folder_);
    std::FILE* quiet = std::fopen("/dev/null", "w");
    DemoOptions options;
    options.dir = folder_;
    options.start = fromLocalTime(kYear, kMonth, kDay, 0, 0, 0);
    options.speed = ClockSpeed::max();
    options.runForSeconds = 86400;
    runDemo(options, quiet);
    std::fclose(quiet);
    if (earlierDays > 0) addEarlierDays(earlierDays);
    state_ = std::make_unique<FolderTagState>(folder_, log_, std::chrono::system_clock::now());
  }
  ~DemoState() { std::filesystem::remove_all(folder_); }
  std::unique_ptr<TagSnapshot> snapshot() const { return state_->snapshot(); }

 private:
  static constexpr int kYear = 2026, kMonth = 3, kDay = 10;

  void addEarlierDays(int earlierDays) {
    const std::filesystem::path logs = folder_ / "logfiles";
    const std::filesystem::path dayFile = monthFile(logs, LogMonth{kMonth, kYear}, "lg.txt");
    std::ifstream in(dayFile, std::ios::binary);
    std::string header;
    std::getline(in, header);
    std::vector<std::vector<std::string>> lines;  // the demo day's lines, split into fields
    std::string line;
    while (std::getline(in, line)) {
      std::istringstream fields(line);
      std::vector<std::string> split;
      for (std::string field; fields >> field;) split.push_back(field);
      if (split.size() == kLogColumns) lines.push_back(std::move(split));
    }
    in.close();
    std::map<std::filesystem::path, std::string> files;
    const int demoDay = dayNumber(kYear, kMonth, kDay);
    for (int day = demoDay - earlierDays; day <= demoDay; ++day) {
      const CivilDate date = civilDate(day);
      std::string& text = files[monthFile(logs, LogMonth{date.month, date.year}, "lg.txt")];
      if (text.empty()) text = header + "\n";
      for (std::vector<std::string> fields : lines) {
        if (day != demoDay) {
          if (fields[0] != std::to_string(kDay)) continue;  // the next day's first minute
          fields[0] = std::to_string(date.day);
          fields[1] = std::to_string(date.month);
          fields[2] = std::to_string(date.year);
          if (day % 5 == 0 && fields[3] == "6") fields[12] = "0.2";
        }
        for (const std::string& field : fields) text += field + ' ';
        text.back() = '\r';
        text += '\n';
      }
    }
    for (const auto& [file, text] : files) std::ofstream(file, std::ios::binary) << text;
  }

  std::filesystem::path folder_;
  ScaledClock clock_;
  TextLog log_;
  std::unique_ptr<FolderTagState> state_;
};

// The demo's day alone, with a month and with a year of logs before it.
enum Logs : int { dayOfLogs = 0, monthOfLogs = 31, yearOfLogs = 365 };

const DemoState& demoState(int earlierDays = dayOfLogs) {
  static std::map<int, std::unique_ptr<DemoState>> states;
  auto& state = states[earlierDays];
  if (!state) state = std::make_unique<DemoState>(earlierDays);
  return *state;
}

// Fills as the program does: the memory is the filler's and goes on from
// one fill to the next (`firstFills`: a new memory each time, the cost of
// the first fill after a start).
void fill(benchmark::State& state, const std::vector<std::string>& page, const char* templateName,
          int earlierDays = dayOfLogs, bool firstFills = false) {
  const auto snapshot = demoState(earlierDays).snapshot();
  const ReplacerErrorSink ignore = [](std::string_view) {};
  auto memory = std::make_unique<TagMemory>();
  if (!firstFills) fillLines(page, templateName, *snapshot, ignore, *memory);  // the logs read once, as at a start
  for (auto _ : state) {
    if (firstFills) memory = std::make_unique<TagMemory>();
    benchmark::DoNotOptimize(fillLines(page, templateName, *snapshot, ignore, *memory));
  }
}

// A typical page: 200 lines, half of them plain markup, the other half with
// one tag each (today's readings, highs and lows, rain, records) among some
// text and a "%" that starts no tag.
std::vector<std::string> typicalPage() {
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
  return page;
}

void BM_TypicalPage200Lines100Tags(benchmark::State& state) { fill(state, typicalPage(), "wxlocal.html"); }
BENCHMARK(BM_TypicalPage200Lines100Tags)->Unit(benchmark::kMicrosecond);
void BM_TypicalPage200Lines100TagsMonthOfLogs(benchmark::State& state) {
  fill(state, typicalPage(), "wxlocal.html", monthOfLogs);
}
BENCHMARK(BM_TypicalPage200Lines100TagsMonthOfLogs)->Unit(benchmark::kMicrosecond);
void BM_TypicalPage200Lines100TagsYearOfLogs(benchmark::State& state) {
  fill(state, typicalPage(), "wxlocal.html", yearOfLogs);
}
BENCHMARK(BM_TypicalPage200Lines100TagsYearOfLogs)->Unit(benchmark::kMicrosecond);

// The test file of all tags: one line per tag of the vocabulary.
std::vector<std::string> allTagsPage() {
  std::vector<std::string> page;
  for (const TagDef& def : vocabulary().tags()) page.push_back(fmt::format("{} = %{}%", def.name, def.name));
  return page;
}

void BM_AllTagsPage(benchmark::State& state) { fill(state, allTagsPage(), "testtags.txt"); }
BENCHMARK(BM_AllTagsPage)->Unit(benchmark::kMicrosecond);
void BM_AllTagsPageMonthOfLogs(benchmark::State& state) { fill(state, allTagsPage(), "testtags.txt", monthOfLogs); }
BENCHMARK(BM_AllTagsPageMonthOfLogs)->Unit(benchmark::kMicrosecond);
void BM_AllTagsPageYearOfLogs(benchmark::State& state) { fill(state, allTagsPage(), "testtags.txt", yearOfLogs); }
BENCHMARK(BM_AllTagsPageYearOfLogs)->Unit(benchmark::kMicrosecond);
// The first fill after the program starts: every log read back.
void BM_AllTagsPageYearOfLogsFirstFill(benchmark::State& state) {
  fill(state, allTagsPage(), "testtags.txt", yearOfLogs, true);
}
BENCHMARK(BM_AllTagsPageYearOfLogsFirstFill)->Unit(benchmark::kMillisecond);

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
