// How long a snapshot taken out of service stays in memory for the requests
// that may still hold references into it.
#pragma once

#include <chrono>

namespace zeda::pelka::platform {

// PELKA_SNAPSHOT_GRACE_SECONDS when it holds a number of seconds, 0 or more
// (fractions allowed, e.g. 0.25); else 300 seconds, far longer than the
// slowest request measured (an enumeration of 100,000 disks takes seconds).
// Read at every retirement.
std::chrono::steady_clock::duration SnapshotGracePeriod() noexcept;

}  // namespace zeda::pelka::platform
