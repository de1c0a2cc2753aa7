#include "providers/associations/SystemDeviceAssociation.h"

#include "Exception.h"
#include "inventory/Library.h"
#include "providers/associations/PlaceholderInstances.h"
#include "providers/common/CimValues.h"
#include "providers/common/PlaceholderReference.h"
#include "providers/common/InventoryWalk.h"

namespace zeda::pelka {

namespace {

constexpr char kSystemClass[] = "ZEDA_ComputerSystem";
// Name of the computer system that References answers for a device source.
constexpr char kPlaceholderSystemName[] = "ZEDAName";

}  // namespace

CmpiStatus EnumSystemDevices(const SystemDeviceKind& kind, CmpiResult& rslt,
                             const CmpiObjectPath& cop) {
  WalkInventory(rslt, cop, [&kind, &rslt](const DiskVisit& visit) {
    const CmpiObjectPath system = ComputerSystemPath(visit.nameSpace, visit.systemName);
    const CmpiObjectPath device =
        DevicePath(visit.nameSpace, kind.deviceClass, kSystemClass, visit.systemName,
                   kind.deviceClass, kind.deviceId(visit.systemName, visit.disk.id));
    rslt.returnData(AssociationInstance(visit.nameSpace, kind.associationClass, "GroupComponent",
                                        system, "PartComponent", device));
  });
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus SystemDeviceAssociators(const SystemDeviceKind& kind, CmpiResult& rslt,
                                   const CmpiObjectPath& source, const std::string& assocClass,
                                   const std::string& resultClass, const char** properties) {
  if (assocClass != kind.associationClass) {
    throw Exception("Wrong class name");
  }
  const std::string nameSpace = NameSpaceOf(source);
  const std::string sourceClass = cmpi::GetClassName(source);
  if (sourceClass == kind.deviceClass) {
    if (resultClass != kind.systemResultClass) {
      return CmpiStatus(CMPI_RC_OK);
    }
    CmpiInstance system;
    MakePlaceholderComputerSystemInstance(system, nameSpace.c_str(), properties);
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
    CmpiInstance device;
    kind.makeDevicePlaceholder(device, nameSpace.c_str());
    rslt.returnData(device);
    rslt.returnDone();
    return CmpiStatus(CMPI_RC_OK);
  }
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
