#include "core/text_log.h"

#include <cstdio>

#include "core/file_io.h"

namespace nimbrel {

void TextLog::write(std::string_view message) {
  std::string line = formatLocalTime(clock_->local());
  line += ' ';
  line += message;
  line += '\n';
  if (file_.empty() || echo_) {
    echo(line);
    if (file_.empty()) return;  // a log for the terminal only
  }
  std::string error;
  if (appendToFile(file_, line, &error)) {
    failing_ = false;
    return;
  }
  // Say it once per failing spell rather than once per line.
  if (!failing_) std::fprintf(stderr, "nimbrel: log %s unavailable (%s)\n", file_.c_str(), error.c_str());
  failing_ = true;
  if (!echo_) echo(line);
}

void TextLog::echo(std::string_view line) const {
  if (echoSink_) {
    echoSink_(line);
    return;
  }
  std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace nimbrel
