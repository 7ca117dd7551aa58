#pragma once
// Pages filled on a worker thread of their own, so that a long template never
// holds up the station's one-second tick. Each fill works on a snapshot of
// the station's state taken on the station's thread when the page fell due;
// its messages come back to the station's thread through `post`.
//
// An output whose previous fill is still under way is not started again:
// the page waits for its next turn rather than queueing fills that would
// overwrite each other.
//
// In simulated time there is no real tick to keep on time, and a fill
// handed to another thread would finish at whatever program moment the
// machine's scheduling allows: there the fills run on the caller's thread,
// at the moment they fall due, the same on every machine.

#include <asio/thread_pool.hpp>

#include <functional>
#include <memory>
#include <set>
#include <string>

#include "publish/tags/tag_snapshot.h"
#include "publish/template/custom_web_page.h"

namespace nimbrel {

class BackgroundFills {
 public:
  // Runs `work` on the station's thread (asio::post to its io_context).
  using Post = std::function<void(std::function<void()> work)>;
  // Called on the station's thread with each message of a fill.
  using Report = std::function<void(const std::string& message)>;

  BackgroundFills(Post post, Report report) : post_(std::move(post)), report_(std::move(report)) {}
  // Waits for the fill under way.
  ~BackgroundFills() { pool_.join(); }
  BackgroundFills(const BackgroundFills&) = delete;
  BackgroundFills& operator=(const BackgroundFills&) = delete;

  // Station's thread only. False when the output's previous fill is still
  // under way.
  bool start(std::unique_ptr<TagSnapshot> snapshot, TemplateJob job, bool append);
  bool busy(const std::string& outputName) const { return busy_.contains(outputName); }
  // Simulated time: every fill runs within start().
  void fillOnTheCallersThread() { onTheCallersThread_ = true; }
  // Fills finished since the start (station's thread).
  std::size_t finished() const { return finished_; }

 private:
  std::vector<std::string> fill(const TemplateJob& job, TagSnapshot& snapshot, bool append);
  void done(const std::string& outputName, std::vector<std::string> messages);

  Post post_;
  Report report_;
  std::set<std::string> busy_;
  std::size_t finished_ = 0;
  bool onTheCallersThread_ = false;
  std::shared_ptr<int> alive_ = std::make_shared<int>(0);
  // What the tags keep from one fill to the next; only the thread that fills
  // (the worker, or the caller in simulated time; one fill at a time)
  // touches it.
  TagMemory memory_;
  asio::thread_pool pool_{1};  // last: joined before the members above go
};

}  // namespace nimbrel
