#include "providers/associations/PlaceholderInstances.h"

#include <array>

#include <cmpi/CmpiArray.h>
#include <cmpi/CmpiObjectPath.h>

#include "providers/common/CimValues.h"
#include "providers/elements/SoftwareIdentityBuilder.h"
#include "providers/elements/StorageExtentBuilder.h"

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
  MakeExtentShapedInstance(inst, nameSpace, "ZEDA_SystemCreationClassName", "ZEDA_SystemName",
                           "ZEDA_CreationClassName", "ZEDA_DeviceID", CMPIUint16{2},
                           CMPIUint64{1000}, CMPIUint64{100}, CMPIUint16{5}, CMPIUint16{2});
}

void MakePlaceholderSoftwareIdentityInstance(CmpiInstance& inst, const char* nameSpace) {
  MakeSoftwareIdentityInstance(inst, "ZEDA_SoftwareIdentity_Disk", nameSpace, "ZEDA_InstanceID",
                               "ZEDA_VersionString");
}

}  // namespace zeda::pelka
