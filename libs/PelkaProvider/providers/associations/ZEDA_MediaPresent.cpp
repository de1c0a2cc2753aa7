#include "providers/associations/ZEDA_MediaPresent.h"

#include <cstdint>
#include <memory>
#include <string>

#include <boost/algorithm/string/predicate.hpp>

#include "CmpiKeys.h"
#include "Exception.h"
#include "inventory/Library.h"
#include "providers/common/CimValues.h"
#include "providers/common/ClassNames.h"
#include "providers/common/DiskProperties.h"
#include "providers/common/Health.h"
#include "providers/common/InventoryWalk.h"
#include "providers/common/Keys.h"
#include "providers/common/PlaceholderReference.h"
#include "providers/common/TextOps.h"
#include "providers/elements/DiskDriveBuilder.h"
#include "providers/elements/StorageExtentBuilder.h"

namespace zeda::pelka {

namespace {

constexpr const char* kDriveClass = className::kDiskDrive;
constexpr const char* kExtentClass = className::kStorageExtentDisk;

// InterconnectType of a drive reached through its extent: 4 for an interface
// name of exactly "SATA", 5 for exactly "SAS", 1 for anything else. Stricter
// than the drive class's own rule (SAS anywhere in the name) on purpose.
CMPIUint16 ExactInterconnectType(const std::string& interfaceType) {
  if (interfaceType == "SATA") {
    return 4;
  }
  if (interfaceType == "SAS") {
    return 5;
  }
  return 1;
}

// A record belongs to the parsed identifier when the two agree ignoring
// letter case (clients may send the identifier in either case).
bool SameDisk(const zeda::orvi::OrviDisk& disk, const std::string& id) {
  return boost::algorithm::iequals(disk.id, id);
}

// The drive of an extent source: every disk of the NAS whose identifier
// matches the one after "DiskExtent" in the source's DeviceID.
void ReturnDrivesOfExtent(CmpiResult& rslt, const CmpiObjectPath& source,
                          const std::string& nameSpace) {
  const std::string id = text::TextAfterLast(cmpi::GetString(source, "DeviceID"), "DiskExtent");
  const std::string systemName = cmpi::GetString(source, "SystemName");
  zeda::orvi::Orvi& orvi = GetOrvi(Nas::Get(NasNameFromSystemName(systemName)));
  const zeda::orvi::OrviDiskList diskList = orvi.GetDiskList();
  for (const zeda::orvi::OrviDisk& disk : diskList.disks) {
    if (!SameDisk(disk, id)) {
      continue;
    }
    const std::string deviceId = DiskDeviceId(systemName, id);
    const std::uint32_t healthStatus = orvi.GetDiskHealth(StripFirstColon(id)).healthStatus;
    DiskDriveFields drive;
    drive.nameSpace = nameSpace;
    drive.className = kDriveClass;
    drive.keys = NasDeviceKeys(systemName, kDriveClass, deviceId);
    drive.name = id;  // the identifier as parsed, not as the NAS spells it
    drive.healthState = HealthStateOf(healthStatus);
    drive.operationalStatus = OperationalStatusOf(healthStatus);
    drive.interconnectType = ExactInterconnectType(disk.interfaceType);
    drive.diskType = DiskTypeOf(disk.isSsd);
    drive.rpm = disk.rpm;
    rslt.returnData(MakeDiskDriveInstance(drive));
  }
}

// The extent of a drive source: every disk of the NAS whose identifier
// matches the one after "DISK" in the source's DeviceID. This direction looks
// the NAS up through the utility namespace and asks for the health by the
// identifier as it stands.
void ReturnExtentsOfDrive(CmpiResult& rslt, const CmpiObjectPath& source,
                          const std::string& nameSpace) {
  const std::string id = text::TextAfterLast(cmpi::GetString(source, "DeviceID"), "DISK");
  const std::string systemName = cmpi::GetString(source, "SystemName");
  zeda::orvi::Orvi& orvi = GetOrvi(util::GetNas(NasNameFromSystemName(systemName)));
  const zeda::orvi::OrviDiskList diskList = orvi.GetDiskList();
  for (const zeda::orvi::OrviDisk& disk : diskList.disks) {
    if (!SameDisk(disk, id)) {
      continue;
    }
    const DeviceKeys keys = NasDeviceKeys(systemName, kExtentClass, ExtentDeviceId(systemName, id));
    const std::uint32_t healthStatus = orvi.GetDiskHealth(id).healthStatus;
    rslt.returnData(
        MakeStorageExtentInstance(DiskExtentFields(nameSpace, keys, disk, healthStatus)));
  }
}

}  // namespace

ZEDA_MediaPresent::ZEDA_MediaPresent(const CmpiBroker& broker, const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName(kClassName);
  install(this, instanceDelegates().EnumInstances, std::make_unique<EnumInstances>());
  install(this, associationDelegates().Associators, std::make_unique<Associators>());
  install(this, associationDelegates().References, std::make_unique<References>());
}

CmpiStatus ZEDA_MediaPresent::EnumInstances::operator()(const CmpiContext& ctx, CmpiResult& rslt,
                                                        const CmpiObjectPath& cop,
                                                        const char** properties) {
  WalkInventory(rslt, cop, [&rslt](const DiskVisit& visit) {
    const std::string id = visit.disk.id;
    const std::string driveId = DiskDeviceId(visit.systemName, id);
    const std::string extentId = ExtentDeviceId(visit.systemName, id);
    AssociationFields association;
    association.nameSpace = visit.nameSpace;
    association.className = kClassName;
    association.first = {"Antecedent",
                         DevicePath(visit.nameSpace, kDriveClass,
                                    NasDeviceKeys(visit.systemName, kDriveClass, driveId))};
    association.second = {"Dependent",
                          DevicePath(visit.nameSpace, kExtentClass,
                                     NasDeviceKeys(visit.systemName, kExtentClass, extentId))};
    rslt.returnData(MakeAssociationInstance(association));
  });
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus ZEDA_MediaPresent::Associators::operator()(
    const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
    const std::string& assocClass, const std::string& resultClass, const std::string& role,
    const std::string& resultRole, const char** properties) {
  const std::string nameSpace = NameSpaceOf(cop);
  const std::string sourceClass = cmpi::GetClassName(cop);
  if (sourceClass == kExtentClass) {
    ReturnDrivesOfExtent(rslt, cop, nameSpace);
  } else if (sourceClass == kDriveClass) {
    ReturnExtentsOfDrive(rslt, cop, nameSpace);
  } else {
    // Exception: answered as 200 (CMPI_RC_ERROR).
    throw Exception("Unknown class name: " + sourceClass);
  }
  rslt.returnDone();
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus ZEDA_MediaPresent::References::operator()(const CmpiContext& ctx, CmpiResult& rslt,
                                                     const CmpiObjectPath& cop,
                                                     const std::string& resultClass,
                                                     const std::string& role,
                                                     const char** properties) {
  const AssociationEnd drive{"Antecedent", kDriveClass, [](const std::string& nameSpace) {
                               return PlaceholderDevicePath(nameSpace, kDriveClass);
                             }};
  const AssociationEnd extent{"Dependent", kExtentClass, [](const std::string& nameSpace) {
                                return PlaceholderDevicePath(nameSpace, kExtentClass);
                              }};
  ReturnPlaceholderReference(rslt, cop, kClassName, drive, extent);
  return CmpiStatus(CMPI_RC_OK);
}

}  // namespace zeda::pelka
