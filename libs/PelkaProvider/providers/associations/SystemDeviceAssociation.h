// The behaviour shared by the two associations that tie a disk device of a
// NAS (its drive or its extent) to the NAS's ZEDA_ComputerSystem:
// GroupComponent is the system, PartComponent the device. EnumInstances walks
// the inventory; Associators and References answer fixed placeholders. What
// differs between the two classes is carried by a SystemDeviceKind.
#ifndef ZEDA_PELKA_SYSTEMDEVICEASSOCIATION_H
#define ZEDA_PELKA_SYSTEMDEVICEASSOCIATION_H

#include <string>

#include <cmpi/CmpiInstance.h>
#include <cmpi/CmpiObjectPath.h>
#include <cmpi/CmpiResult.h>
#include <cmpi/CmpiStatus.h>

namespace zeda::pelka {

struct SystemDeviceKind {
  // The association class: the name Associators insists on and the class of
  // every association instance.
  const char* associationClass;
  // The device class: class and CreationClassName of the device paths.
  const char* deviceClass;
  // DeviceID of a device from the system name and the disk identifier.
  std::string (*deviceId)(const std::string& systemName, const std::string& id);
  // The result class that Associators from a device answers, and whether
  // that answer hands the placeholder system to the result or only builds it.
  const char* systemResultClass;
  bool returnsSystem;
  // The result class that Associators from a system answers, and the
  // placeholder device it answers with.
  const char* deviceResultClass;
  CmpiInstance (*makePlaceholderDevice)(const std::string& nameSpace);
};

// One association instance per disk per NAS, then returnDone.
CmpiStatus EnumSystemDevices(const SystemDeviceKind& kind, CmpiResult& rslt,
                             const CmpiObjectPath& cop);

// Throws Exception (answered as 200) "Wrong class name" for a foreign
// association class and "Unknown class name: <class>" for a source that is
// neither the device class nor ZEDA_ComputerSystem. A result class other than
// the one expected for the source answers OK at once, without returnDone.
CmpiStatus SystemDeviceAssociators(const SystemDeviceKind& kind, CmpiResult& rslt,
                                   const CmpiObjectPath& source, const std::string& assocClass,
                                   const std::string& resultClass, const char** properties);

// One association instance: the source path on its own side, the placeholder
// path ("ZEDAName" system or "ZEDA_" device keys) on the other.
CmpiStatus SystemDeviceReferences(const SystemDeviceKind& kind, CmpiResult& rslt,
                                  const CmpiObjectPath& source);

}  // namespace zeda::pelka

#endif
