#include "providers/associations/ZEDA_MediaPresent.h"

#include <cstdint>
#include <memory>
#include <string>

#include <boost/algorithm/string/predicate.hpp>

#include "Exception.h"
#include "inventory/Keys.h"
#include "inventory/Library.h"
#include "providers/common/CimValues.h"
#include "providers/common/PlaceholderReference.h"
#include "providers/common/DiskProperties.h"
#include "providers/common/Health.h"
#include "providers/common/InventoryWalk.h"
#include "providers/common/TextOps.h"
#include "providers/elements/DiskDriveBuilder.h"
#include "providers/elements/StorageExtentBuilder.h"

namespace zeda::pelka {

namespace {

constexpr char kDriveClass[] = "ZEDA_DiskDrive";
constexpr char kExtentClass[] = "ZEDA_StorageExtent_Disk";
constexpr char kSystemClass[] = "ZEDA_ComputerSystem";

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
void AnswerDrivesOfExtent(CmpiResult& rslt, const CmpiObjectPath& source,
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
    CmpiInstance drive;
    MakeDiskDriveInstance(drive, kDriveClass, nameSpace.c_str(), kSystemClass, systemName.c_str(),
                          kDriveClass, deviceId.c_str(), id.c_str(), HealthStateOf(healthStatus),
                          OperationalStatusOf(healthStatus),
                          ExactInterconnectType(disk.interfaceType), DiskTypeOf(disk.isSsd),
                          disk.rpm);
    rslt.returnData(drive);
  }
}

// The extent of a drive source: every disk of the NAS whose identifier
// matches the one after "DISK" in the source's DeviceID. This direction looks
// the NAS up through the utility namespace and asks for the health by the
// identifier as it stands.
void AnswerExtentsOfDrive(CmpiResult& rslt, const CmpiObjectPath& source,
                          const std::string& nameSpace) {
  const std::string id = text::TextAfterLast(cmpi::GetString(source, "DeviceID"), "DISK");
  const std::string systemName = cmpi::GetString(source, "SystemName");
  zeda::orvi::Orvi& orvi = GetOrvi(util::GetNas(NasNameFromSystemName(systemName)));
  const zeda::orvi::OrviDiskList diskList = orvi.GetDiskList();
  for (const zeda::orvi::OrviDisk& disk : diskList.disks) {
    if (!SameDisk(disk, id)) {
      continue;
    }
    const std::string deviceId = ExtentDeviceId(systemName, id);
    const std::uint32_t healthStatus = orvi.GetDiskHealth(id).healthStatus;
    CmpiInstance extent;
    MakeDiskExtentInstance(extent, nameSpace.c_str(), systemName.c_str(), deviceId.c_str(), disk,
                           healthStatus);
    rslt.returnData(extent);
  }
}

}  // namespace

ZEDA_MediaPresent::ZEDA_MediaPresent(const CmpiBroker& broker, const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName("ZEDA_MediaPresent");
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
    const CmpiObjectPath drive = DevicePath(visit.nameSpace, kDriveClass, kSystemClass,
                                            visit.systemName, kDriveClass, driveId);
    const CmpiObjectPath extent = DevicePath(visit.nameSpace, kExtentClass, kSystemClass,
                                             visit.systemName, kExtentClass, extentId);
    rslt.returnData(AssociationInstance(visit.nameSpace, "ZEDA_MediaPresent", "Antecedent", drive,
                                        "Dependent", extent));
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
    AnswerDrivesOfExtent(rslt, cop, nameSpace);
  } else if (sourceClass == kDriveClass) {
    AnswerExtentsOfDrive(rslt, cop, nameSpace);
  } else {
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
  ReturnPlaceholderReference(rslt, cop, "ZEDA_MediaPresent", drive, extent);
  return CmpiStatus(CMPI_RC_OK);
}

}  // namespace zeda::pelka
