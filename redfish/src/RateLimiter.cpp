#include "RateLimiter.h"

#include <algorithm>
#include <cmath>

namespace zeda::redfish {

RateLimiter::RateLimiter(double perSecond)
    : perSecond_(perSecond), burst_(std::max(1.0, perSecond * kBurstSeconds)) {}

void RateLimiter::SetRate(double perSecond) {
  const std::lock_guard<std::mutex> lock(mutex_);
  perSecond_ = perSecond;
  burst_ = std::max(1.0, perSecond * kBurstSeconds);
  buckets_.clear();
}

void RateLimiter::Forget(Clock::time_point now) {
  for (auto it = buckets_.begin(); it != buckets_.end();) {
    const std::chrono::duration<double> idle = now - it->second.last;
    const bool full = it->second.tokens + idle.count() * perSecond_ >= burst_;
    it = full ? buckets_.erase(it) : std::next(it);
  }
}

int RateLimiter::Admit(const std::string& address, Clock::time_point now) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (perSecond_ <= 0) return 0;
  if (buckets_.size() >= kMaxTrackedAddresses && buckets_.count(address) == 0) Forget(now);
  auto [it, added] = buckets_.try_emplace(address, Bucket{burst_, now});
  Bucket& bucket = it->second;
  const std::chrono::duration<double> elapsed = now - bucket.last;
  if (elapsed.count() > 0) {
    bucket.tokens = std::min(burst_, bucket.tokens + elapsed.count() * perSecond_);
    bucket.last = now;
  }
  if (bucket.tokens >= 1) {
    bucket.tokens -= 1;
    return 0;
  }
  return std::max(1, static_cast<int>(std::ceil((1 - bucket.tokens) / perSecond_)));
}

}  // namespace zeda::redfish
