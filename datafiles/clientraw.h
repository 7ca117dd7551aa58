#pragma once
// Writes "clientraw.txt", the one-line snapshot of the present readings that
// web pages and the program's own views read, into the web-files folder.
//
// The line goes first to "clientrawtemp.txt" and is then copied over
// "clientraw.txt"; both steps replace their file in one rename, so an
// uploader or a page never reads half a file. With a second folder the
// finished file is copied there too (and "customclientraw.txt", which
// another writer makes, when that copy is switched on). A failed write or
// copy leaves the previous file in place, shows no message, puts the error
// in the status word (written to the error log once per spell of failures)
// and the next interval tries again.

#include <filesystem>
#include <optional>

#include "datafiles/clientraw_line.h"

namespace nimbrel {

struct ClientrawOptions;
struct IoStatus;
class TextLog;

// What the writer changes besides its files, all owned by the caller for the
// life of the program.
struct ClientrawWriterState {
  bool& busy;          // set while the file is made; a call that finds it set does nothing
  IoStatus& status;    // the data-file writers' status word
  TextLog& errorLog;
};

// Makes the line, writes the files and returns the text (also when writing
// is switched off), or nothing when the writer was already busy.
//
// With the alternative forecast icon switched on and not set yet, the
// record's `forecasticonalt` is first given the value of `forecasticon`.
// `now` gives the time and date fields; `stationName` is written with its
// blanks as "_".
std::optional<ClientrawText> updateclientrawfilenow(LiveRecord& record, const StationStatistics& statistics,
                                                    const ClientrawOptions& options,
                                                    const std::filesystem::path& webFolder, const LocalTime& now,
                                                    std::string_view stationName, ClientrawWriterState state);

}  // namespace nimbrel
