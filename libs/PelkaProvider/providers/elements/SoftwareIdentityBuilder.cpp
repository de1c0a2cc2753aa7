#include "providers/elements/SoftwareIdentityBuilder.h"

#include <cmpi/CmpiObjectPath.h>

namespace zeda::pelka {

CmpiInstance MakeSoftwareIdentityInstance(const SoftwareIdentityFields& fields) {
  CmpiInstance inst(CmpiObjectPath(fields.nameSpace.c_str(), fields.className.c_str()));
  inst.setProperty("InstanceID", CmpiData(fields.instanceId));
  inst.setProperty("VersionString", CmpiData(fields.versionString));
  return inst;
}

SoftwareIdentityFields PlaceholderSoftwareIdentityFields(const std::string& nameSpace,
                                                         const std::string& className) {
  SoftwareIdentityFields fields;
  fields.nameSpace = nameSpace;
  fields.className = className;
  fields.instanceId = "ZEDA_InstanceID";
  fields.versionString = "ZEDA_VersionString";
  return fields;
}

}  // namespace zeda::pelka
