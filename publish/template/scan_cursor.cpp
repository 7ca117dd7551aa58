#include "publish/template/scan_cursor.h"

#include <algorithm>

namespace nimbrel {

ScanCursor::ScanCursor(std::string& line) : done_(line), original_(std::move(line)), rest_(original_) {
  done_.clear();
  done_.reserve(original_.size());
}

bool ScanCursor::toNextSign() {
  const std::size_t sign = ahead_.find('%');
  if (sign != std::string::npos) {
    done_.append(ahead_, 0, sign);
    ahead_.erase(0, sign);
    return true;
  }
  done_ += ahead_;
  ahead_.clear();
  const std::size_t next = rest_.find('%');
  done_ += rest_.substr(0, next);
  rest_.remove_prefix(next == std::string_view::npos ? rest_.size() : next);
  return !rest_.empty();
}

void ScanCursor::step() {
  if (ahead().empty()) return;
  done_ += ahead_.front();
  ahead_.erase(0, 1);
}

std::string_view ScanCursor::ahead() {
  if (ahead_.size() < kAhead && !rest_.empty()) {
    // A few characters more than needed, so that refills are rare.
    const std::size_t take = std::min(rest_.size(), 2 * kAhead);
    ahead_.append(rest_.substr(0, take));
    rest_.remove_prefix(take);
  }
  return ahead_;
}

void ScanCursor::finish() {
  done_ += ahead_;
  done_ += rest_;
  ahead_.clear();
  rest_ = {};
}

}  // namespace nimbrel
