#include "datafiles/clientraw.h"

#include <cerrno>
#include <string>

#include "core/file_io.h"
#include "core/live_record.h"
#include "core/text_log.h"
#include "datafiles/clientraw_layout.h"
#include "datafiles/clientraw_settings.h"
#include "datafiles/log_append.h"

namespace nimbrel {
namespace {

namespace fs = std::filesystem;

// Clears the busy flag however the call ends, an exception included, so that
// one failure never stops every later write.
class BusyFlag {
 public:
  explicit BusyFlag(bool& flag) : flag_(flag) { flag_ = true; }
  ~BusyFlag() { flag_ = false; }
  BusyFlag(const BusyFlag&) = delete;
  BusyFlag& operator=(const BusyFlag&) = delete;

 private:
  bool& flag_;
};

// The outcome of this call's file steps; the first failure is the one kept.
struct FileSteps {
  bool attempted = false;
  bool failed = false;
  int errorNumber = 0;
  std::string why;

  bool run(bool succeeded, const std::string& error) {
    attempted = true;
    if (!succeeded && !failed) {
      failed = true;
      errorNumber = errno != 0 ? errno : EIO;
      why = error;
    }
    return succeeded;
  }
};

// The status word tells of the last file operation: a call that touched no
// file (writing switched off, no second folder) leaves it as it was.
void report(const FileSteps& steps, IoStatus& status, TextLog& errorLog) {
  if (!steps.attempted) return;
  if (!steps.failed) {
    status.lastResult = 0;
    status.lastError.clear();
    status.failing = false;
    return;
  }
  status.lastResult = steps.errorNumber;
  status.lastError = steps.why;
  if (!status.failing) errorLog.write("cannot write the clientraw file: " + steps.why);
  status.failing = true;
}

void writeToWebFolder(const std::string& line, const fs::path& webFolder, FileSteps& steps) {
  const fs::path temporary = webFolder / clientraw::kTempFileName;
  std::string error;
  errno = 0;
  // The temporary file is written first and then "copied" into place; the copy
  // is made from the text in hand rather than read back from the disk.
  if (!steps.run(overwriteFile(temporary, line, &error), error)) return;
  errno = 0;
  steps.run(writeFileAtomically(webFolder / clientraw::kFileName, line, &error, Durability::Cached), error);
}

void copyToSecondFolder(const fs::path& webFolder, const fs::path& secondFolder, bool withCustom,
                        FileSteps& steps) {
  std::string error;
  errno = 0;
  steps.run(copyFileAtomically(webFolder / clientraw::kFileName, secondFolder / clientraw::kFileName, &error,
                               Durability::Cached),
            error);
  if (!withCustom) return;
  errno = 0;
  steps.run(copyFileAtomically(webFolder / clientraw::kCustomFileName, secondFolder / clientraw::kCustomFileName,
                               &error, Durability::Cached),
            error);
}

}  // namespace

std::optional<ClientrawText> updateclientrawfilenow(LiveRecord& record, const StationStatistics& statistics,
                                                    const ClientrawOptions& options, const fs::path& webFolder,
                                                    const LocalTime& now, std::string_view stationName,
                                                    ClientrawWriterState state) {
  if (state.busy) return std::nullopt;
  const BusyFlag busy(state.busy);

  if (options.alternativeIcon && record.forecasticonalt == kForecastIconNotSet)
    record.forecasticonalt = record.forecasticon;
  ClientrawText text = buildClientrawText(ClientrawSources{record, statistics, now, stationName}, options);

  FileSteps steps;
  if (options.writingEnabled) writeToWebFolder(text.line, webFolder, steps);
  if (options.secondFolder) copyToSecondFolder(webFolder, *options.secondFolder, options.copyCustomClientraw, steps);
  report(steps, state.status, state.errorLog);
  return text;
}

}  // namespace nimbrel
