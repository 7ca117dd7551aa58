#include "datafiles/log_append.h"

#include <cerrno>
#include <system_error>

#include "core/file_io.h"
#include "core/text_log.h"

namespace nimbrel {

LogAppend appendLogLine(const std::filesystem::path& file, std::string_view header, std::string_view line,
                        IoStatus& status, TextLog& errorLog) {
  std::error_code ec;
  const bool exists = std::filesystem::exists(file, ec);
  std::string text;
  if (!exists) text.append(header);
  text.append(line);
  std::string why;
  errno = 0;
  if (!appendToFile(file, text, &why)) {
    status.lastResult = errno != 0 ? errno : EIO;
    status.lastError = why;
    if (!status.failing) errorLog.write("cannot write the log " + file.string() + ": " + why);
    status.failing = true;
    return LogAppend::Failed;
  }
  status.lastResult = 0;
  status.lastError.clear();
  status.failing = false;
  return exists ? LogAppend::Appended : LogAppend::Created;
}

}  // namespace nimbrel
