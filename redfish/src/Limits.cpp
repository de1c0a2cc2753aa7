#include "Limits.h"

namespace zeda::redfish {

bool ConnectionCounter::Take(const std::string& address) {
  const std::lock_guard<std::mutex> lock(mutex_);
  std::size_t& mine = byAddress_[address];
  if (open_ >= kMaxConnections || mine >= kMaxConnectionsPerAddress) {
    if (mine == 0) byAddress_.erase(address);
    return false;
  }
  ++open_;
  ++mine;
  return true;
}

void ConnectionCounter::Give(const std::string& address) {
  const std::lock_guard<std::mutex> lock(mutex_);
  const auto found = byAddress_.find(address);
  if (found == byAddress_.end()) return;
  --open_;
  if (--found->second == 0) byAddress_.erase(found);
}

std::size_t ConnectionCounter::Open() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return open_;
}

}  // namespace zeda::redfish
