// Instance builder of ZEDA_SoftwareIdentity_Disk.
#ifndef ZEDA_PELKA_SOFTWAREIDENTITYBUILDER_H
#define ZEDA_PELKA_SOFTWAREIDENTITYBUILDER_H

#include <string>

#include <cmpi/CmpiInstance.h>

namespace zeda::pelka {

// The values of a firmware identity instance.
struct SoftwareIdentityFields {
  std::string nameSpace;
  std::string className;  // class of the instance path
  std::string instanceId;
  std::string versionString;
};

// An instance on a path holding only the namespace and the class name, with
// InstanceID then VersionString.
CmpiInstance MakeSoftwareIdentityInstance(const SoftwareIdentityFields& fields);

// The placeholder identity: InstanceID "ZEDA_InstanceID", VersionString
// "ZEDA_VersionString".
SoftwareIdentityFields PlaceholderSoftwareIdentityFields(const std::string& nameSpace,
                                                         const std::string& className);

}  // namespace zeda::pelka

#endif
