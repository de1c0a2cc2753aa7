// The routine behind every exported factory: builds the class's provider
// object on first use (or reuses the one its provider base holds) and hands
// out the factory's MI record.
#ifndef ZEDA_PELKA_MODULE_MIFACTORY_H
#define ZEDA_PELKA_MODULE_MIFACTORY_H

#include <memory>

#include <cmpi/CmpiBaseMI.h>
#include <cmpi/CmpiBroker.h>
#include <cmpi/CmpiContext.h>
#include <cmpi/CmpiProviderBase.h>
#include <cmpi/CmpiStatus.h>

#include "module/FunctionTables.h"

namespace zeda::pelka {

// `Provider` is the provider class, constructed from (CmpiBroker, CmpiContext);
// `base` is its class's provider base, `mi` the statics of the calling export.
// Returns the MI record, or null with the failure in `status` (which must not
// be null; on success it is left untouched).
//
// The look-up and registration of the provider object take no lock: the
// object manager does not call two factories of one class at the same time.
template <class Provider, class Kind>
typename Kind::Record* CreateMI(MIExport<Kind>& mi, CmpiProviderBase& base,
                                const CMPIBroker* broker, const CMPIContext* context,
                                CMPIStatus* status) noexcept {
  std::unique_ptr<Provider> provider;
  try {
    mi.fillTableOnce();
    const CmpiContext ctx(context);
    mi.record.ft = &mi.table;

    if (CmpiBaseMI* const existing = base.getBaseMI()) {
      mi.record.hdl = CmpiBaseMI::toHandle(existing);
      base.incUseCount();
      return &mi.record;
    }

    // Value constructors inside the provider's constructor or initialize()
    // create their objects through the broker of the call in progress.
    const CmpiBrokerScope brokerScope(broker);
    provider = std::make_unique<Provider>(CmpiBroker(broker), ctx);
    provider->setProviderBase(&base);
    const CmpiStatus initialized = provider->initialize(ctx);

    if (initialized.rc() == CMPI_RC_OK) {
      CmpiBaseMI* const object = provider.get();
      base.setBaseMI(provider.release());
      mi.record.hdl = CmpiBaseMI::toHandle(object);
      base.incUseCount();
      return &mi.record;
    }

    provider.reset();
    // Code and message; the message text becomes a string made by the
    // broker's newString, and stays null when the broker cannot make one.
    *status = initialized.toCMPIStatus(broker);
    return nullptr;
  } catch (...) {
    // A throwing constructor or initialize(): nothing is registered.
    provider.reset();
    status->rc = CMPI_RC_ERR_FAILED;
    status->msg = nullptr;
    return nullptr;
  }
}

}  // namespace zeda::pelka

#endif
