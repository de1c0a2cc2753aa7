#include "providers/elements/ZEDA_DiskDrive.h"

#include <memory>
#include <string>

#include "inventory/Library.h"
#include "providers/common/CimValues.h"
#include "providers/common/ClassNames.h"
#include "providers/common/DiskProperties.h"
#include "providers/common/Health.h"
#include "providers/common/InventoryWalk.h"
#include "providers/common/Keys.h"
#include "providers/elements/DiskDriveBuilder.h"

namespace zeda::pelka {

namespace {

// CIM InterconnectType of a NAS interface name, tested in this order and
// case-sensitively: exactly "SATA" is 4 (a longer text such as "SATA-3" is
// not), any text holding "SAS" (also "NL-SAS") is 5, everything else 1.
CMPIUint16 InterconnectTypeOf(const std::string& interfaceType) {
  if (interfaceType == "SATA") {
    return 4;
  }
  if (interfaceType.find("SAS") != std::string::npos) {
    return 5;
  }
  return 1;
}

}  // namespace

ZEDA_DiskDrive::ZEDA_DiskDrive(const CmpiBroker& broker, const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName(kClassName);
  install(this, instanceDelegates().EnumInstances, std::make_unique<EnumInstances>());
  install(this, instanceDelegates().GetInstance, std::make_unique<GetInstance>());
}

CmpiStatus ZEDA_DiskDrive::EnumInstances::operator()(const CmpiContext& ctx, CmpiResult& rslt,
                                                     const CmpiObjectPath& cop,
                                                     const char** properties) {
  WalkInventory(rslt, cop, [&rslt](const DiskVisit& visit) {
    const zeda::orvi::OrviDisk& disk = visit.disk;
    const std::string id = disk.id;
    const std::string deviceId = DiskDeviceId(visit.systemName, id);
    const CMPIUint16 healthState =
        HealthStateOf(visit.orvi.GetDiskHealth(StripFirstColon(id)).healthStatus);
    const auto operationalStatus = static_cast<CMPIUint16>(util::GetOperationalStatus(disk.status));

    DiskDriveFields drive;
    drive.nameSpace = visit.nameSpace;
    drive.className = kClassName;
    drive.keys = NasDeviceKeys(visit.systemName, kClassName, deviceId);
    drive.name = id;
    drive.healthState = healthState;
    drive.operationalStatus = operationalStatus;
    drive.interconnectType = InterconnectTypeOf(disk.interfaceType);
    drive.diskType = DiskTypeOf(disk.isSsd);
    drive.rpm = disk.rpm;
    rslt.returnData(MakeDiskDriveInstance(drive));
  });
  return CmpiStatus(CMPI_RC_OK);
}

CmpiStatus ZEDA_DiskDrive::GetInstance::operator()(const CmpiContext& ctx, CmpiResult& rslt,
                                                   const CmpiObjectPath& cop,
                                                   const char** properties) {
  // The requested keys are not read: every request gets the placeholder.
  rslt.returnData(
      MakeDiskDriveInstance(PlaceholderDiskDriveFields(NameSpaceOf(cop), kClassName, "ZEDA_Name")));
  rslt.returnDone();
  return CmpiStatus(CMPI_RC_OK);
}

}  // namespace zeda::pelka
