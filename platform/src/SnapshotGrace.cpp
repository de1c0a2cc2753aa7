#include "SnapshotGrace.h"

#include <cmath>
#include <cstdlib>

namespace zeda::pelka::platform {

std::chrono::steady_clock::duration SnapshotGracePeriod() noexcept {
  using Seconds = std::chrono::duration<double>;
  constexpr double kDefaultSeconds = 300;
  constexpr double kLongestSeconds = 365.0 * 24 * 3600;  // keeps the time point arithmetic in range
  double seconds = kDefaultSeconds;
  if (const char* setting = std::getenv("PELKA_SNAPSHOT_GRACE_SECONDS")) {
    char* end = nullptr;
    const double configured = std::strtod(setting, &end);
    if (end != setting && *end == '\0' && std::isfinite(configured) && configured >= 0) {
      seconds = std::fmin(configured, kLongestSeconds);
    }
  }
  return std::chrono::duration_cast<std::chrono::steady_clock::duration>(Seconds(seconds));
}

}  // namespace zeda::pelka::platform
