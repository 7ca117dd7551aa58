#include "core/platform/durable_file.h"

#include <unistd.h>

namespace nimbrel::platform {

bool syncToDisk(std::FILE* file) {
  if (std::fflush(file) != 0) return false;
  return ::fsync(::fileno(file)) == 0;
}

}  // namespace nimbrel::platform
