// Instance builder of ZEDA_SoftwareIdentity_Disk.
#ifndef ZEDA_PELKA_SOFTWAREIDENTITYBUILDER_H
#define ZEDA_PELKA_SOFTWAREIDENTITYBUILDER_H

#include <cmpi/CmpiInstance.h>

namespace zeda::pelka {

// Creates a path holding only `nameSpace` and `className`, an instance on it
// (assigned to `inst`), and sets InstanceID then VersionString.
void MakeSoftwareIdentityInstance(CmpiInstance& inst, const char* className,
                                  const char* nameSpace, const char* instanceId,
                                  const char* versionString);

}  // namespace zeda::pelka

#endif
