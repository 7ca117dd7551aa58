#pragma once
// Writing whole files and whole lines with as few system calls as the job
// takes: the program writes a few dozen files a minute for years, on boards
// where each call counts.

#include <filesystem>
#include <string_view>

namespace nimbrel::platform {

// Creates or empties `path` and writes `text` to it in full; with `sync`
// the data is on the disk when it returns. False (errno set) on any failure.
bool writeWholeFile(const std::filesystem::path& path, std::string_view text, bool sync);

// Appends `header` (only when the file is new or empty) and `text` to
// `path` in one write. A write that does not go in whole (a full disk) is
// taken back: the file is cut to its old length, so a reader never sees a
// torn line with the next one glued on. `wasEmpty` says whether the header
// went in. False (errno set) on any failure.
bool appendWhole(const std::filesystem::path& path, std::string_view header, std::string_view text, bool* wasEmpty);

}  // namespace nimbrel::platform
