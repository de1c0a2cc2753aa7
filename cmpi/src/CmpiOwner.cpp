// CmpiOwner: the parts that do not depend on the owned object's type.
#include "CmpiOwner.h"

bool CmpiOwner::ownsObject() const {
  const Releaser* releaser = std::get_deleter<Releaser>(ref_);
  return releaser != nullptr && !releaser->handedOver;
}

void CmpiOwner::handOver() const noexcept {
  // Every copy shares the one deleter: marking it covers them all.
  if (Releaser* releaser = std::get_deleter<Releaser>(ref_)) {
    releaser->handedOver = true;
  }
}
