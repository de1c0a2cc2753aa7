// CmpiOwner: handing an object over to the object manager.
#include "CmpiOwner.h"

void CmpiOwner::handOver() const noexcept {
  // Every copy shares the one deleter: marking it covers them all.
  if (Releaser* releaser = std::get_deleter<Releaser>(ref_)) {
    releaser->handedOver = true;
  }
}
