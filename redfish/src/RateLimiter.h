// Requests per client address: a token bucket per address that refills at
// `perSecond` tokens a second up to `burst` (kBurstSeconds of requests).
#pragma once

#include <chrono>
#include <mutex>
#include <string>
#include <unordered_map>

namespace zeda::redfish {

// A client may send this many seconds' worth of requests at once.
inline constexpr double kBurstSeconds = 2;
// Addresses remembered at most; beyond, full buckets are forgotten.
inline constexpr std::size_t kMaxTrackedAddresses = 10000;

class RateLimiter {
 public:
  using Clock = std::chrono::steady_clock;

  // perSecond 0: no limit.
  explicit RateLimiter(double perSecond);

  // A new rate (a reload of the configuration); the buckets start afresh.
  void SetRate(double perSecond);

  // 0 when the request of `address` may go ahead at `now`, else the whole
  // seconds (at least 1) after which it may (Retry-After).
  int Admit(const std::string& address, Clock::time_point now = Clock::now());

 private:
  struct Bucket {
    double tokens;
    Clock::time_point last;
  };
  void Forget(Clock::time_point now);

  std::mutex mutex_;
  double perSecond_;  // under mutex_
  double burst_;      // under mutex_
  std::unordered_map<std::string, Bucket> buckets_;
};

}  // namespace zeda::redfish
