#include "providers/elements/StorageExtentBuilder.h"

#include <cmpi/CmpiObjectPath.h>

#include "providers/common/CimValues.h"

namespace zeda::pelka {

void MakeStorageExtentInstance(CmpiInstance& inst, const char* nameSpace, const char* systemName,
                               const char* deviceId, CMPIUint16 extentStatus,
                               CMPIUint64 numberOfBlocks, CMPIUint64 consumableBlocks,
                               CMPIUint16 healthState, CMPIUint16 operationalStatus) {
  constexpr CMPIUint64 kBlockSize = 512;  // bytes

  inst = CmpiInstance(CmpiObjectPath(nameSpace, "ZEDA_StorageExtent_Disk"));
  inst.setProperty("SystemCreationClassName", CmpiData("ZEDA_ComputerSystem"));
  inst.setProperty("SystemName", CmpiData(systemName));
  inst.setProperty("CreationClassName", CmpiData("ZEDA_StorageExtent_Disk"));
  inst.setProperty("DeviceID", CmpiData(deviceId));
  inst.setProperty("ExtentStatus", CmpiData(Uint16Array(extentStatus)));
  inst.setProperty("NumberOfBlocks", CmpiData(numberOfBlocks));
  inst.setProperty("ConsumableBlocks", CmpiData(consumableBlocks));
  inst.setProperty("BlockSize", CmpiData(kBlockSize));
  inst.setProperty("HealthState", CmpiData(healthState));
  inst.setProperty("OperationalStatus", CmpiData(Uint16Array(operationalStatus)));
  inst.setProperty("ExtentDiscriminator", CmpiData(StringArray("SNIA:Pool Component")));
}

}  // namespace zeda::pelka
