// CmpiProviderBase: owner of the one provider object of a class.
#include "CmpiProviderBase.h"

#include "CmpiBaseMI.h"

CmpiProviderBase::CmpiProviderBase() = default;

CmpiProviderBase::~CmpiProviderBase() = default;

void CmpiProviderBase::setBaseMI(CmpiBaseMI* mi) {
  // Storing the object already held must not destroy it.
  if (mi != baseMI_.get()) {
    baseMI_.reset(mi);
  }
}

std::unique_ptr<CmpiBaseMI> CmpiProviderBase::releaseBaseMI() { return std::move(baseMI_); }
