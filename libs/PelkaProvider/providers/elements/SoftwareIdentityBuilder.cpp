#include "providers/elements/SoftwareIdentityBuilder.h"

#include <cmpi/CmpiObjectPath.h>

namespace zeda::pelka {

void MakeSoftwareIdentityInstance(CmpiInstance& inst, const char* className,
                                  const char* nameSpace, const char* instanceId,
                                  const char* versionString) {
  inst = CmpiInstance(CmpiObjectPath(nameSpace, className));
  inst.setProperty("InstanceID", CmpiData(instanceId));
  inst.setProperty("VersionString", CmpiData(versionString));
}

}  // namespace zeda::pelka
