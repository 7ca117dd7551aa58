#pragma once
// File writing that never leaves a half-written file behind: the text is
// written under a temporary name, flushed to disk and then renamed over the
// published name, so a crash or power cut leaves the old or the new file.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace nimbrel {

// Synced: the data reach the disk before the rename (settings, records), so
// a power cut leaves the old or the new file. Cached: the rename alone, for
// files rewritten every few seconds (clientraw) whose readers only need never
// to see half a file; forcing those to disk would wear out a small board's
// card and slow a fast-running clock.
enum class Durability { Synced, Cached };

// Replaces `target` with `content`. On failure the old file is untouched,
// the temporary file is removed and `error` (when given) says why.
bool writeFileAtomically(const std::filesystem::path& target, std::string_view content,
                         std::string* error = nullptr, Durability durability = Durability::Synced);

// Copies `source` over `target` through a temporary file in the target's folder.
bool copyFileAtomically(const std::filesystem::path& source, const std::filesystem::path& target,
                        std::string* error = nullptr, Durability durability = Durability::Synced);

// Overwrites `target` in place with `content`: for scratch files nobody
// reads while they are written, where the cost of a rename is not worth it.
// The old text is written over and the file then cut to length rather than
// emptied first: some file systems push a file emptied and refilled out to
// the disk at once, which for a file rewritten every few seconds is wasted.
bool overwriteFile(const std::filesystem::path& target, std::string_view content, std::string* error = nullptr);

// Appends `text` to `target`, creating it when missing.
bool appendToFile(const std::filesystem::path& target, std::string_view text,
                  std::string* error = nullptr);

// Appends `text` to `target`, preceded by `header` when the file is new or
// empty; `created` (when given) says whether the header went in.
bool appendWithHeader(const std::filesystem::path& target, std::string_view header, std::string_view text,
                      bool* created = nullptr, std::string* error = nullptr);

// The whole file, or nothing when it cannot be read.
std::optional<std::string> readWholeFile(const std::filesystem::path& source,
                                         std::string* error = nullptr);

// The file's last `most` bytes (all of a shorter file), or nothing when it
// cannot be read.
std::optional<std::string> readFileTail(const std::filesystem::path& source, std::size_t most);

}  // namespace nimbrel
