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
CmpiArray StringArray(const std::string& value);

// ZEDA_ComputerSystem path: CreationClassName (the class name), then Name.
CmpiObjectPath ComputerSystemPath(const std::string& nameSpace, const std::string& name);

// The four keys of a device (ZEDA_DiskDrive, ZEDA_StorageExtent_Disk), in the
// order they are set on paths and instances.
struct DeviceKeys {
  std::string systemCreationClassName;
  std::string systemName;
  std::string creationClassName;
  std::string deviceId;
};

// Keys of a disk device of a NAS: SystemCreationClassName is the computer
// system class, the other three are given in key order.
DeviceKeys NasDeviceKeys(const std::string& systemName, const std::string& creationClassName,
                         const std::string& deviceId);

// The four fixed placeholder words "ZEDA_SystemCreationClassName",
// "ZEDA_SystemName", "ZEDA_CreationClassName", "ZEDA_DeviceID".
DeviceKeys PlaceholderDeviceKeys();

// A device path of `className` with its four keys in DeviceKeys order.
CmpiObjectPath DevicePath(const std::string& nameSpace, const std::string& className,
                          const DeviceKeys& keys);

// The same device path with the placeholder keys.
CmpiObjectPath PlaceholderDevicePath(const std::string& nameSpace, const std::string& className);

// One end of an association instance: the reference property and its path.
struct AssociationRef {
  std::string role;  // "GroupComponent", "PartComponent", "Antecedent", "Dependent"
  CmpiObjectPath path;
};

// An association instance: its class and its two references, set in the
// order first, second (GroupComponent before PartComponent, Antecedent
// before Dependent).
struct AssociationFields {
  std::string nameSpace;
  std::string className;
  AssociationRef first;
  AssociationRef second;
};

// An instance on a path holding only namespace and class name, with exactly
// its two references.
CmpiInstance MakeAssociationInstance(const AssociationFields& fields);

}  // namespace zeda::pelka

#endif
