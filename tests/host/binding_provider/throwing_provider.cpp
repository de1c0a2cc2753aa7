// A provider written with the C++ binding whose operations throw in every
// way a provider can; the host must see statuses, never the exceptions.
// Class ZEDA_HostThrow, exported as ZEDA_HostThrowProvider.
#include <cmpi/CmpiCpp.h>

#include <memory>
#include <new>
#include <stdexcept>

namespace zeda::test {
namespace {

class ZEDA_HostThrow : public CmpiInstanceMI, public CmpiAssociationMI {
 public:
  ZEDA_HostThrow(const CmpiBroker& broker, const CmpiContext& ctx)
      : CmpiBaseMI(broker, ctx), CmpiInstanceMI(broker, ctx), CmpiAssociationMI(broker, ctx) {}

  // The one operation that works: an instance built through the binding.
  CmpiStatus enumInstances(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                           const char** properties) override {
    CmpiObjectPath path(cop.getNameSpace(), "ZEDA_HostThrow");
    path.setKey("Name", CmpiData("built"));
    CmpiInstance inst(path);
    inst.setProperty("Name", CmpiData("built"));
    inst.setProperty("Count", CmpiData(CMPIUint16(3)));
    inst.setProperty("Ok", CmpiBooleanData(true));
    rslt.returnData(inst);
    rslt.returnDone();
    return CmpiStatus(CMPI_RC_OK);
  }

  CmpiStatus getInstance(const CmpiContext&, CmpiResult&, const CmpiObjectPath&,
                         const char**) override {
    throw std::runtime_error("getInstance failed");
  }

  CmpiStatus enumInstanceNames(const CmpiContext&, CmpiResult&, const CmpiObjectPath&) override {
    throw CmpiStatus(CMPI_RC_ERR_NOT_FOUND, "thrown status");
  }

  CmpiStatus execQuery(const CmpiContext&, CmpiResult&, const CmpiObjectPath&, const char*,
                       const char*) override {
    throw 42;
  }

  CmpiStatus associators(const CmpiContext&, CmpiResult&, const CmpiObjectPath&, const char*,
                         const char*, const char*, const char*, const char**) override {
    throw std::bad_alloc();
  }

  // An up-call the broker refuses: the binding throws its status.
  CmpiStatus references(const CmpiContext& ctx, CmpiResult&, const CmpiObjectPath& cop, const char*,
                        const char*, const char**) override {
    CmpiObjectPath nobody(cop.getNameSpace(), "ZEDA_Nobody");
    getBroker().enumInstances(ctx, nobody, nullptr);
    return CmpiStatus(CMPI_RC_OK);
  }
};

CmpiProviderBase g_base;
CMPIInstanceMIFT g_instanceFT;
CMPIAssociationMIFT g_associationFT;
CMPIInstanceMI g_instanceMI;
CMPIAssociationMI g_associationMI;

// Builds the provider object once; both factories share it.
void* provider(const CMPIBroker* broker, const CMPIContext* ctx) {
  if (CmpiBaseMI* existing = g_base.getBaseMI()) {
    g_base.incUseCount();
    return CmpiBaseMI::toHandle(existing);
  }
  const CmpiBrokerScope scope(broker);
  auto object = std::make_unique<ZEDA_HostThrow>(CmpiBroker(broker), CmpiContext(ctx));
  object->setProviderBase(&g_base);
  CmpiBaseMI* raw = object.get();
  g_base.setBaseMI(object.release());
  g_base.incUseCount();
  return CmpiBaseMI::toHandle(raw);
}

}  // namespace

extern "C" CMPI_EXPORT CMPIInstanceMI* ZEDA_HostThrowProvider_Create_InstanceMI(
    const CMPIBroker* broker, const CMPIContext* ctx, CMPIStatus* rc) {
  g_instanceFT = CMPIInstanceMIFT{CMPIVersion200,
                                  CMPIVersion200,
                                  "instanceZEDA_HostThrowProvider",
                                  CmpiBaseMI::driveBaseCleanup,
                                  CmpiInstanceMI::driveEnumInstanceNames,
                                  CmpiInstanceMI::driveEnumInstances,
                                  CmpiInstanceMI::driveGetInstance,
                                  CmpiInstanceMI::driveCreateInstance,
                                  CmpiInstanceMI::driveSetInstance,
                                  CmpiInstanceMI::driveDeleteInstance,
                                  CmpiInstanceMI::driveExecQuery};
  g_instanceMI.ft = &g_instanceFT;
  g_instanceMI.hdl = provider(broker, ctx);
  return &g_instanceMI;
}

extern "C" CMPI_EXPORT CMPIAssociationMI* ZEDA_HostThrowProvider_Create_AssociationMI(
    const CMPIBroker* broker, const CMPIContext* ctx, CMPIStatus* rc) {
  g_associationFT = CMPIAssociationMIFT{CMPIVersion200,
                                        CMPIVersion200,
                                        "associationZEDA_HostThrowProvider",
                                        CmpiBaseMI::driveBaseCleanup,
                                        CmpiAssociationMI::driveAssociators,
                                        CmpiAssociationMI::driveAssociatorNames,
                                        CmpiAssociationMI::driveReferences,
                                        CmpiAssociationMI::driveReferenceNames};
  g_associationMI.ft = &g_associationFT;
  g_associationMI.hdl = provider(broker, ctx);
  return &g_associationMI;
}

}  // namespace zeda::test
