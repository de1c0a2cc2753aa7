// Internal: the one routine behind every static drive… function. It finds the
// provider object behind an MI record, makes its broker the current one,
// runs the call and turns whatever comes out of it, a returned status or any
// exception, into the C status for the object manager. No exception leaves it.
#ifndef ZEDA_CMPI_SRC_CMPIDRIVE_H
#define ZEDA_CMPI_SRC_CMPIDRIVE_H

#include <exception>
#include <string>

#include "CmpiBaseMI.h"
#include "CmpiCall.h"

namespace cmpi_detail {

// The provider object an MI record's handle refers to (null for a null
// record or handle). The instance MI record declares its handle const.
template <class MI>
CmpiBaseMI* providerOf(const MI* mi) noexcept {
  return mi == nullptr ? nullptr : CmpiBaseMI::fromHandle(const_cast<void*>(mi->hdl));
}

// Runs `call(base)` for the provider behind `hdl` with its broker installed
// and converts the outcome. `call` returns a CmpiStatus.
template <class Call>
CMPIStatus driveProvider(CmpiBaseMI* base, Call&& call) noexcept {
  if (base == nullptr) {
    return makeCStatus(nullptr, CMPI_RC_ERR_INVALID_HANDLE, nullptr);
  }
  const CMPIBroker* broker = base->getBroker().getEnc();
  try {
    const CmpiBrokerScope scope(broker);
    return call(*base).toCMPIStatus(broker);
  } catch (const CmpiStatus& status) {
    return status.toCMPIStatus(broker);
  } catch (const std::exception& e) {
    return makeCStatus(broker, CMPI_RC_ERR_FAILED, e.what());
  } catch (...) {
    return makeCStatus(broker, CMPI_RC_ERR_FAILED, "unknown exception");
  }
}

// driveProvider for the operations of one interface: the provider object
// must implement `Interface`, otherwise the answer is CMPI_RC_ERR_NOT_SUPPORTED.
template <class Interface, class MI, class Call>
CMPIStatus drive(const MI* mi, const char* interfaceName, Call&& call) noexcept {
  return driveProvider(providerOf(mi), [&](CmpiBaseMI& base) {
    auto* provider = dynamic_cast<Interface*>(&base);
    if (provider == nullptr) {
      return CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED,
                        std::string("the provider has no ") + interfaceName + " interface");
    }
    return call(*provider);
  });
}

}  // namespace cmpi_detail

#endif
