#include "providers/associations/SystemDeviceAssociation.h"

#include "CmpiKeys.h"
#include "Exception.h"
#include "providers/associations/ComputerSystemPlaceholder.h"
#include "providers/common/CimValues.h"
#include "providers/common/ClassNames.h"
#include "providers/common/InventoryWalk.h"
#include "providers/common/PlaceholderReference.h"

namespace zeda::pelka {

namespace {

constexpr const char* kSystemClass = className::kComputerSystem;
// Name of the computer system that References answers for a device source.
constexpr char kPlaceholderSystemName[] = "ZEDAName";

}  // namespace

CmpiStatus EnumSystemDevices(const SystemDeviceKind& kind, CmpiResult& rslt,
                             const CmpiObjectPath& cop) {
  WalkInventory(rslt, cop, [&kind, &rslt](const DiskVisit& visit) {
    const DeviceKeys deviceKeys = NasDeviceKeys(visit.systemName, kind.deviceClass,
                                                kind.deviceId(visit.systemName, visit.disk.id));
    AssociationFields association;
    association.nameSpace = visit.nameSpace;
    association.className = kind.associationClass;
    association.first = {"GroupComponent", ComputerSystemPath(visit.nameSpace, visit.systemName)};
    association.second = {"PartComponent",
                          DevicePath(visit.nameSpace, kind.deviceClass, deviceKeys)};
    rslt.returnData(MakeAssociationInstance(association));
  });
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus SystemDeviceAssociators(const SystemDeviceKind& kind, CmpiResult& rslt,
                                   const CmpiObjectPath& source, const std::string& assocClass,
                                   const std::string& resultClass, const char** properties) {
  if (assocClass != kind.associationClass) {
    // Exception: answered as 200 (CMPI_RC_ERROR).
    throw Exception("Wrong class name");
  }
  const std::string nameSpace = NameSpaceOf(source);
  const std::string sourceClass = cmpi::GetClassName(source);
  if (sourceClass == kind.deviceClass) {
    if (resultClass != kind.systemResultClass) {
      return CmpiStatus(CMPI_RC_OK);
    }
    const CmpiInstance system = MakePlaceholderComputerSystemInstance(nameSpace, properties);
    if (kind.returnsSystem) {
      rslt.returnData(system);
    }
    rslt.returnDone();
    return CmpiStatus(CMPI_RC_OK);
  }
  if (sourceClass == kSystemClass) {
    if (resultClass != kind.deviceResultClass) {
      return CmpiStatus(CMPI_RC_OK);
    }
    rslt.returnData(kind.makePlaceholderDevice(nameSpace));
    rslt.returnDone();
    return CmpiStatus(CMPI_RC_OK);
  }
  // Exception: answered as 200 (CMPI_RC_ERROR).
  throw Exception("Unknown class name: " + sourceClass);
}

CmpiStatus SystemDeviceReferences(const SystemDeviceKind& kind, CmpiResult& rslt,
                                  const CmpiObjectPath& source) {
  const AssociationEnd system{"GroupComponent", kSystemClass, [](const std::string& nameSpace) {
                                return ComputerSystemPath(nameSpace, kPlaceholderSystemName);
                              }};
  const AssociationEnd device{"PartComponent", kind.deviceClass,
                              [&kind](const std::string& nameSpace) {
                                return PlaceholderDevicePath(nameSpace, kind.deviceClass);
                              }};
  ReturnPlaceholderReference(rslt, source, kind.associationClass, system, device);
  return CmpiStatus(CMPI_RC_OK);
}

}  // namespace zeda::pelka
