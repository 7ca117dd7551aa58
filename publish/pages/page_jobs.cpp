#include "publish/pages/page_jobs.h"

#include <fmt/format.h>

#include "core/settings_store.h"
#include "publish/template/custom_web_page.h"

namespace nimbrel {
namespace {

constexpr int kMinuteDue = 0;
constexpr int kLocalPageSecond = 15;

std::string suffix(int n) { return n == 1 ? std::string() : std::to_string(n); }

std::string pageExtension(const SettingsStore& main) {
  const std::string chosen = main.ReadString(kTemplateSection, "file extension");
  if (chosen.empty()) return ".html";
  return chosen.front() == '.' ? chosen : "." + chosen;
}

}  // namespace

std::vector<PageJob> readPageJobs(const SettingsStore& main) {
  std::vector<PageJob> jobs;
  for (int n = 1; n <= kCustomTextOutputs; ++n) {
    const std::string s = suffix(n);
    if (!main.readSwitch(kCustomTextSection, "make" + s)) continue;
    PageJob job;
    job.templateName = main.ReadString(kCustomTextSection, "template" + s, fmt::format("customtext{}.txt", s));
    job.outputName = fmt::format("customtextout{}.txt", s);
    job.everySeconds =
        static_cast<int>(main.readInteger(kCustomTextSection, "seconds" + s, 60, IntegerRule{5, 86400}));
    job.append = main.readSwitch(kCustomTextSection, "append" + s);
    jobs.push_back(std::move(job));
  }
  jobs.push_back(PageJob{"wxlocal.html", "wx" + pageExtension(main), kMinuteDue, false, true});
  return jobs;
}

std::vector<const PageJob*> PageSchedule::due(SystemTime now, const LocalTime& local) {
  std::vector<const PageJob*> result;
  for (std::size_t i = 0; i < jobs_.size(); ++i) {
    const PageJob& job = jobs_[i];
    auto& last = last_[i];
    bool isDue = false;
    if (job.everySeconds == kMinuteDue) {
      const SystemTime minuteStart = now - std::chrono::seconds(local.second);
      isDue = local.second >= kLocalPageSecond && (!last || *last < minuteStart);
    } else {
      isDue = !last || now - *last >= std::chrono::seconds(job.everySeconds) || now < *last;
    }
    if (!isDue) continue;
    last = now;
    result.push_back(&job);
  }
  return result;
}

}  // namespace nimbrel
