#include "providers/elements/StorageExtentBuilder.h"

#include <cmpi/CmpiObjectPath.h>

#include "providers/common/CimValues.h"
#include "providers/common/DiskProperties.h"
#include "providers/common/Health.h"

namespace zeda::pelka {

void MakeExtentShapedInstance(CmpiInstance& inst, const char* nameSpace,
                              const char* systemCreationClassName, const char* systemName,
                              const char* creationClassName, const char* deviceId,
                              CMPIUint16 extentStatus, CMPIUint64 numberOfBlocks,
                              CMPIUint64 consumableBlocks, CMPIUint16 healthState,
                              CMPIUint16 operationalStatus) {
  constexpr CMPIUint64 kBlockSize = 512;  // bytes
  inst = CmpiInstance(CmpiObjectPath(nameSpace, "ZEDA_StorageExtent_Disk"));
  inst.setProperty("SystemCreationClassName", CmpiData(systemCreationClassName));
  inst.setProperty("SystemName", CmpiData(systemName));
  inst.setProperty("CreationClassName", CmpiData(creationClassName));
  inst.setProperty("DeviceID", CmpiData(deviceId));
  inst.setProperty("ExtentStatus", CmpiData(Uint16Array(extentStatus)));
  inst.setProperty("NumberOfBlocks", CmpiData(numberOfBlocks));
  inst.setProperty("ConsumableBlocks", CmpiData(consumableBlocks));
  inst.setProperty("BlockSize", CmpiData(kBlockSize));
  inst.setProperty("HealthState", CmpiData(healthState));
  inst.setProperty("OperationalStatus", CmpiData(Uint16Array(operationalStatus)));
  inst.setProperty("ExtentDiscriminator", CmpiData(StringArray("SNIA:Pool Component")));
}

void MakeStorageExtentInstance(CmpiInstance& inst, const char* nameSpace, const char* systemName,
                               const char* deviceId, CMPIUint16 extentStatus,
                               CMPIUint64 numberOfBlocks, CMPIUint64 consumableBlocks,
                               CMPIUint16 healthState, CMPIUint16 operationalStatus) {
  MakeExtentShapedInstance(inst, nameSpace, "ZEDA_ComputerSystem", systemName,
                           "ZEDA_StorageExtent_Disk", deviceId, extentStatus, numberOfBlocks,
                           consumableBlocks, healthState, operationalStatus);
}

void MakeDiskExtentInstance(CmpiInstance& inst, const char* nameSpace, const char* systemName,
                            const char* deviceId, const zeda::orvi::OrviDisk& disk,
                            std::uint32_t healthStatus) {
  const CMPIUint64 blocks = BlocksOf(disk.capacity);
  MakeStorageExtentInstance(inst, nameSpace, systemName, deviceId, ExtentStatusOf(disk.isFree),
                            blocks, blocks, HealthStateOf(healthStatus),
                            OperationalStatusOf(healthStatus));
}

}  // namespace zeda::pelka
