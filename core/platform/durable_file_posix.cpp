#include "core/platform/durable_file.h"

#include <fcntl.h>
#include <stdio.h>
#include <unistd.h>

namespace nimbrel::platform {

bool syncToDisk(std::FILE* file) {
  if (std::fflush(file) != 0) return false;
  return ::fsync(::fileno(file)) == 0;
}

bool exchangeFiles(const std::filesystem::path& first, const std::filesystem::path& second) {
#ifdef RENAME_EXCHANGE
  return ::renameat2(AT_FDCWD, first.c_str(), AT_FDCWD, second.c_str(), RENAME_EXCHANGE) == 0;
#else
  (void)first;
  (void)second;
  return false;
#endif
}

}  // namespace nimbrel::platform
