#include "datafiles/log_append.h"

#include <cerrno>

#include "core/file_io.h"
#include "core/text_log.h"

namespace nimbrel {

LogAppend appendLogLine(const std::filesystem::path& file, std::string_view header, std::string_view line,
                        IoStatus& status, TextLog& errorLog) {
  std::string why;
  bool created = false;
  errno = 0;
  if (!appendWithHeader(file, header, line, &created, &why)) {
    status.lastResult = errno != 0 ? errno : EIO;
    status.lastError = why;
    const SystemTime now = errorLog.clock().now();
    const auto [reported, first] = status.failureReported.try_emplace(file.string(), now);
    if (first || now - reported->second >= kLogFailureReportEvery) {
      reported->second = now;
      errorLog.write("cannot write the log " + file.string() + ": " + why);
    }
    status.failing = true;
    return LogAppend::Failed;
  }
  if (!status.failureReported.empty()) status.failureReported.erase(file.string());
  status.lastResult = 0;
  status.lastError.clear();
  status.failing = false;
  return created ? LogAppend::Created : LogAppend::Appended;
}

}  // namespace nimbrel
