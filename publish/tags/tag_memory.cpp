#include "publish/tags/tag_memory.h"

namespace nimbrel {

LogMinutes& TagMemory::logs(const std::filesystem::path& folder, const LogReading& reading) {
  if (!logs_ || logs_->folder() != folder || !(logs_->reading() == reading)) {
    logs_.emplace(folder, reading);
    climateMonths.clear();
    rainMonths.clear();
    sunMonths.clear();
  }
  return *logs_;
}

}  // namespace nimbrel
