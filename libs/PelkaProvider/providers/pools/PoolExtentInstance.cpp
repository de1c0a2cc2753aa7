#include "providers/pools/PoolExtentInstance.h"

#include "providers/common/CimValues.h"

namespace zeda::pelka {

namespace {

constexpr char kExtentClass[] = "ZEDA_StorageExtent_Disk";
constexpr CMPIUint64 kBlockSize = 512;

}  // namespace

CmpiInstance MakeExtentInstance(const std::string& nameSpace, const std::string& systemName,
                                const std::string& deviceId, CMPIUint16 extentStatus,
                                CMPIUint64 blocks, CMPIUint16 healthState,
                                CMPIUint16 operationalStatus) {
  CmpiInstance instance(CmpiObjectPath(nameSpace.c_str(), kExtentClass));
  instance.setProperty("SystemCreationClassName", CmpiData("ZEDA_SystemCreationClassName"));
  instance.setProperty("SystemName", CmpiData(systemName));
  instance.setProperty("CreationClassName", CmpiData(kExtentClass));
  instance.setProperty("DeviceID", CmpiData(deviceId));
  instance.setProperty("ExtentStatus", CmpiData(Uint16Array(extentStatus)));
  instance.setProperty("NumberOfBlocks", CmpiData(blocks));
  instance.setProperty("ConsumableBlocks", CmpiData(blocks));
  instance.setProperty("BlockSize", CmpiData(kBlockSize));
  instance.setProperty("HealthState", CmpiData(healthState));
  instance.setProperty("OperationalStatus", CmpiData(Uint16Array(operationalStatus)));
  instance.setProperty("ExtentDiscriminator", CmpiData(StringArray("SNIA:Pool Component")));
  return instance;
}

}  // namespace zeda::pelka
