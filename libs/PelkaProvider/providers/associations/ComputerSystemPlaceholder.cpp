#include "providers/associations/ComputerSystemPlaceholder.h"

#include <array>

#include <cmpi/CmpiArray.h>
#include <cmpi/CmpiObjectPath.h>

#include "providers/common/CimValues.h"
#include "providers/common/ClassNames.h"

namespace zeda::pelka {

namespace {

// The roles of the system, as the CIM schema numbers Dedicated values.
constexpr std::array<CMPIUint16, 6> kDedicated = {3, 15, 16, 21, 24, 25};

}  // namespace

CmpiInstance MakePlaceholderComputerSystemInstance(const std::string& nameSpace,
                                                   const char** properties) {
  CmpiInstance inst(CmpiObjectPath(nameSpace.c_str(), className::kComputerSystem));
  if (properties != nullptr) {
    // Names a filtered placeholder system always keeps; null-terminated as
    // the CMPI standard wants a key list.
    std::array<const char*, 10> keys = {
        "CreationClassName", "Name",      "NameFormat",           "ElementName",
        "OperationalStatus", "Dedicated", "OtherIdentifyingInfo", "IdentifyingDescriptions",
        "HealthState",       nullptr};
    inst.setPropertyFilter(properties, keys.data());
  }
  inst.setProperty("CreationClassName", CmpiData(className::kComputerSystem));
  inst.setProperty("Name", CmpiData("ZEDAName"));
  inst.setProperty("NameFormat", CmpiData("Other"));
  inst.setProperty("ElementName", CmpiData("ZEDAElementName"));
  inst.setProperty("Caption", CmpiData(className::kComputerSystem));
  inst.setProperty("Description", CmpiData(className::kComputerSystem));
  inst.setProperty("OperationalStatus", CmpiData(Uint16Array(2)));
  CmpiArray dedicated(static_cast<CMPICount>(kDedicated.size()), CMPI_uint16);
  for (CMPICount i = 0; i < kDedicated.size(); ++i) {
    dedicated.setElementAt(i, CmpiData(kDedicated[i]));
  }
  inst.setProperty("Dedicated", CmpiData(dedicated));
  inst.setProperty("HealthState", CmpiData(static_cast<CMPIUint16>(5)));
  return inst;
}

}  // namespace zeda::pelka
