#pragma once
// File writing that never leaves a half-written file behind: the text is
// written under a temporary name, flushed to disk and then renamed over the
// published name, so a crash or power cut leaves the old or the new file.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace nimbrel {

// Replaces `target` with `content`. On failure the old file is untouched,
// the temporary file is removed and `error` (when given) says why.
bool writeFileAtomically(const std::filesystem::path& target, std::string_view content,
                         std::string* error = nullptr);

// Copies `source` over `target` through a temporary file in the target's folder.
bool copyFileAtomically(const std::filesystem::path& source, const std::filesystem::path& target,
                        std::string* error = nullptr);

// Appends `text` to `target`, creating it when missing.
bool appendToFile(const std::filesystem::path& target, std::string_view text,
                  std::string* error = nullptr);

// The whole file, or nothing when it cannot be read.
std::optional<std::string> readWholeFile(const std::filesystem::path& source,
                                         std::string* error = nullptr);

}  // namespace nimbrel
