#pragma once
// The pages the running program fills from templates on its own, and when:
//
// - the custom text outputs "customtextout.txt", "customtextout2.txt" ...
//   "customtextout10.txt", each switched on in section "Custom text out"
//   (N is empty for the first, "2" to "10" for the others):
//     "makeN"      "yes": fill this output
//     "templateN"  its template in the web-files folder (default "customtextN.txt")
//     "secondsN"   seconds between fills, 5 to 86400 (default 60)
//     "appendN"    "yes": each fill is added to the end of the output
// - the local web page: "wxlocal.html" in the web-files folder, when it is
//   there, filled once a minute (from second 15, after the minute's logs)
//   into "wx" with the extension of "Use my own template" / "file
//   extension" (default ".html").

#include <optional>
#include <string>
#include <vector>

#include "core/clock.h"

namespace nimbrel {

class SettingsStore;

inline constexpr std::string_view kCustomTextSection = "Custom text out";
inline constexpr int kCustomTextOutputs = 10;

struct PageJob {
  std::string templateName;
  std::string outputName;
  int everySeconds = 60;  // 0: once a minute, from second 15
  bool append = false;
  bool onlyWhenTemplateExists = false;  // no template, no page and no message
};

// The jobs the settings switch on, and the local web page.
std::vector<PageJob> readPageJobs(const SettingsStore& main);

// When each job is due: every `everySeconds` of program time from its first
// fill, or once in each minute.
class PageSchedule {
 public:
  explicit PageSchedule(std::vector<PageJob> jobs) : jobs_(std::move(jobs)), last_(jobs_.size()) {}

  // The jobs due at `now`; each counts as filled from then on.
  std::vector<const PageJob*> due(SystemTime now, const LocalTime& local);
  const std::vector<PageJob>& jobs() const { return jobs_; }

 private:
  std::vector<PageJob> jobs_;
  std::vector<std::optional<SystemTime>> last_;
};

}  // namespace nimbrel
