// Builders for the object paths, arrays and association instances that many
// provider classes form alike. Every object is made through the broker of
// the call in progress.
#ifndef ZEDA_PELKA_CIMVALUES_H
#define ZEDA_PELKA_CIMVALUES_H

#include <string>

#include <cmpi/CmpiArray.h>
#include <cmpi/CmpiInstance.h>
#include <cmpi/CmpiObjectPath.h>

namespace zeda::pelka {

// The namespace of a request path as text.
std::string NameSpaceOf(const CmpiObjectPath& path);

// One-element arrays.
CmpiArray Uint16Array(CMPIUint16 value);
CmpiArray StringArray(const char* value);

// ZEDA_ComputerSystem path: CreationClassName "ZEDA_ComputerSystem", then Name.
CmpiObjectPath ComputerSystemPath(const std::string& nameSpace, const std::string& name);

// A device path (ZEDA_DiskDrive, ZEDA_StorageExtent_Disk) with its four keys
// in the order SystemCreationClassName, SystemName, CreationClassName, DeviceID.
CmpiObjectPath DevicePath(const std::string& nameSpace, const char* className,
                          const std::string& systemCreationClassName,
                          const std::string& systemName,
                          const std::string& creationClassName, const std::string& deviceId);

// The same device path with the four fixed placeholder words
// "ZEDA_SystemCreationClassName", "ZEDA_SystemName", "ZEDA_CreationClassName",
// "ZEDA_DeviceID".
CmpiObjectPath PlaceholderDevicePath(const std::string& nameSpace, const char* className);

// An association instance on a path holding only namespace and class name,
// with exactly its two references, set in the order given.
CmpiInstance AssociationInstance(const std::string& nameSpace, const char* className,
                                 const char* firstRole, const CmpiObjectPath& first,
                                 const char* secondRole, const CmpiObjectPath& second);

}  // namespace zeda::pelka

#endif
