#include "providers/associations/PlaceholderInstances.h"

#include <array>

#include <cmpi/CmpiArray.h>
#include <cmpi/CmpiObjectPath.h>

#include "providers/common/CimValues.h"
#include "providers/elements/SoftwareIdentityBuilder.h"

namespace zeda::pelka {

namespace {

// The roles of the system, as the CIM schema numbers Dedicated values.
constexpr std::array<CMPIUint16, 6> kDedicated = {3, 15, 16, 21, 24, 25};

}  // namespace

void MakePlaceholderComputerSystemInstance(CmpiInstance& inst, const char* nameSpace,
                                           const char** properties) {
  inst = CmpiInstance(CmpiObjectPath(nameSpace, "ZEDA_ComputerSystem"));
  if (properties != nullptr) {
    // Names a filtered placeholder system always keeps; null-terminated as
    // the CMPI standard wants a key list.
    std::array<const char*, 10> keys = {
        "CreationClassName", "Name",      "NameFormat",           "ElementName",
        "OperationalStatus", "Dedicated", "OtherIdentifyingInfo", "IdentifyingDescriptions",
        "HealthState",       nullptr};
    inst.setPropertyFilter(properties, keys.data());
  }
  inst.setProperty("CreationClassName", CmpiData("ZEDA_ComputerSystem"));
  inst.setProperty("Name", CmpiData("ZEDAName"));
  inst.setProperty("NameFormat", CmpiData("Other"));
  inst.setProperty("ElementName", CmpiData("ZEDAElementName"));
  inst.setProperty("Caption", CmpiData("ZEDA_ComputerSystem"));
  inst.setProperty("Description", CmpiData("ZEDA_ComputerSystem"));
  inst.setProperty("OperationalStatus", CmpiData(Uint16Array(2)));
  CmpiArray dedicated(static_cast<CMPICount>(kDedicated.size()), CMPI_uint16);
  for (CMPICount i = 0; i < kDedicated.size(); ++i) {
    dedicated.setElementAt(i, CmpiData(kDedicated[i]));
  }
  inst.setProperty("Dedicated", CmpiData(dedicated));
  inst.setProperty("HealthState", CmpiData(static_cast<CMPIUint16>(5)));
}

void MakePlaceholderStorageExtentInstance(CmpiInstance& inst, const char* nameSpace) {
  inst = CmpiInstance(CmpiObjectPath(nameSpace, "ZEDA_StorageExtent_Disk"));
  inst.setProperty("SystemCreationClassName", CmpiData("ZEDA_SystemCreationClassName"));
  inst.setProperty("SystemName", CmpiData("ZEDA_SystemName"));
  inst.setProperty("CreationClassName", CmpiData("ZEDA_CreationClassName"));
  inst.setProperty("DeviceID", CmpiData("ZEDA_DeviceID"));
  inst.setProperty("ExtentStatus", CmpiData(Uint16Array(2)));
  inst.setProperty("NumberOfBlocks", CmpiData(CMPIUint64{1000}));
  inst.setProperty("ConsumableBlocks", CmpiData(CMPIUint64{100}));
  inst.setProperty("BlockSize", CmpiData(CMPIUint64{512}));
  inst.setProperty("HealthState", CmpiData(static_cast<CMPIUint16>(5)));
  inst.setProperty("OperationalStatus", CmpiData(Uint16Array(2)));
  inst.setProperty("ExtentDiscriminator", CmpiData(StringArray("SNIA:Pool Component")));
}

void MakePlaceholderSoftwareIdentityInstance(CmpiInstance& inst, const char* nameSpace) {
  MakeSoftwareIdentityInstance(inst, "ZEDA_SoftwareIdentity_Disk", nameSpace, "ZEDA_InstanceID",
                               "ZEDA_VersionString");
}

}  // namespace zeda::pelka
