#include "publish/pages/background_fills.h"

#include <asio/post.hpp>

#include "publish/tags/page_fill.h"

namespace nimbrel {

std::vector<std::string> BackgroundFills::fill(const TemplateJob& job, TagSnapshot& snapshot, bool append) {
  std::vector<std::string> messages;
  try {
    fillPage(job, snapshot, append, [&messages](std::string_view m) { messages.emplace_back(m); }, memory_);
  } catch (const std::exception& e) {
    messages.push_back("error with custom web page " + job.outputName + " " + e.what());
  }
  return messages;
}

bool BackgroundFills::start(std::unique_ptr<TagSnapshot> snapshot, TemplateJob job, bool append) {
  if (!busy_.insert(job.outputName).second) return false;
  if (onTheCallersThread_) {
    done(job.outputName, fill(job, *snapshot, append));
    return true;
  }
  // The task owns the snapshot; std::function needs a copyable callable.
  std::shared_ptr<TagSnapshot> owned(std::move(snapshot));
  asio::post(pool_, [this, owned, job = std::move(job), append] {
    std::vector<std::string> messages = fill(job, *owned, append);
    // The completion may run after this object is gone (a loop polled once
    // more at stop): the token tells.
    post_([this, alive = std::weak_ptr<int>(alive_), output = job.outputName,
           messages = std::move(messages)]() mutable {
      if (alive.lock()) done(output, std::move(messages));
    });
  });
  return true;
}

void BackgroundFills::done(const std::string& outputName, std::vector<std::string> messages) {
  busy_.erase(outputName);
  ++finished_;
  for (const std::string& message : messages) report_(message);
}

}  // namespace nimbrel
