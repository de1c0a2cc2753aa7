#include "CallTrace.h"

#include <cstdlib>
#include <fstream>
#include <mutex>

namespace zeda::pelka::platform {

void TraceCall(const std::string& nas, const char* call, const std::string& argument) {
  const char* path = std::getenv("PELKA_NAS_TRACE");
  if (path == nullptr || *path == '\0') return;
  // One writer at a time keeps lines whole; each line is flushed (and the
  // file closed) before the next call, so a reader never sees half a line.
  static std::mutex mutex;
  const std::lock_guard<std::mutex> lock(mutex);
  std::ofstream trace(path, std::ios::app | std::ios::binary);
  trace << nas << '\t' << call << '\t' << argument << '\n';
  trace.flush();
}

}  // namespace zeda::pelka::platform
