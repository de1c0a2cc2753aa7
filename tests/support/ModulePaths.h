// Object paths of the module's classes as a client sends them.
#ifndef ZEDA_TESTS_SUPPORT_MODULEPATHS_H
#define ZEDA_TESTS_SUPPORT_MODULEPATHS_H

#include <string>

#include "Names.h"
#include "zeda/host/object_path.hpp"

namespace zeda::test {

// A path holding only namespace and class name: an enumeration request, and
// the path of every element instance of this module.
inline zeda::host::ObjectPath ClassPath(const std::string& className,
                                        const std::string& ns = kNamespace) {
  return zeda::host::ObjectPath(ns, className);
}

inline zeda::host::ObjectPath SystemPath(const std::string& name,
                                         const std::string& ns = kNamespace) {
  return zeda::host::ObjectPath(ns, "ZEDA_ComputerSystem")
      .addKey("CreationClassName", "ZEDA_ComputerSystem")
      .addKey("Name", name);
}

inline zeda::host::ObjectPath DevicePath(const std::string& className, const std::string& sccn,
                                         const std::string& systemName, const std::string& ccn,
                                         const std::string& deviceId,
                                         const std::string& ns = kNamespace) {
  return zeda::host::ObjectPath(ns, className)
      .addKey("SystemCreationClassName", sccn)
      .addKey("SystemName", systemName)
      .addKey("CreationClassName", ccn)
      .addKey("DeviceID", deviceId);
}

// A real drive / extent path of a NAS disk.
inline zeda::host::ObjectPath DrivePath(const std::string& systemName, const std::string& deviceId,
                                        const std::string& ns = kNamespace) {
  return DevicePath("ZEDA_DiskDrive", "ZEDA_ComputerSystem", systemName, "ZEDA_DiskDrive", deviceId,
                    ns);
}

inline zeda::host::ObjectPath ExtentPath(const std::string& systemName, const std::string& deviceId,
                                         const std::string& ns = kNamespace) {
  return DevicePath("ZEDA_StorageExtent_Disk", "ZEDA_ComputerSystem", systemName,
                    "ZEDA_StorageExtent_Disk", deviceId, ns);
}

// The device path whose keys hold the fixed "ZEDA_" words.
inline zeda::host::ObjectPath PlaceholderDevicePath(const std::string& className,
                                                    const std::string& ns = kNamespace) {
  return DevicePath(className, "ZEDA_SystemCreationClassName", "ZEDA_SystemName",
                    "ZEDA_CreationClassName", "ZEDA_DeviceID", ns);
}

inline zeda::host::ObjectPath PackagePath(const std::string& ccn, const std::string& tag,
                                          const std::string& ns = kNamespace) {
  return zeda::host::ObjectPath(ns, "ZEDA_PhysicalPackage_Disk")
      .addKey("CreationClassName", ccn)
      .addKey("Tag", tag);
}

inline zeda::host::ObjectPath SoftwarePath(const std::string& instanceId,
                                           const std::string& ns = kNamespace) {
  return zeda::host::ObjectPath(ns, "ZEDA_SoftwareIdentity_Disk").addKey("InstanceID", instanceId);
}

inline zeda::host::ObjectPath PoolPath(const std::string& instanceId,
                                       const std::string& ns = kNamespace) {
  return zeda::host::ObjectPath(ns, "ZEDA_StoragePool_Primordial").addKey("InstanceID", instanceId);
}

}  // namespace zeda::test

#endif
