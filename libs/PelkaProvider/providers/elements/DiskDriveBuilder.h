// Instance builder of ZEDA_DiskDrive, shared by the disk drive provider and
// the associations that answer drive instances.
#ifndef ZEDA_PELKA_DISKDRIVEBUILDER_H
#define ZEDA_PELKA_DISKDRIVEBUILDER_H

#include <string>

#include <cmpi/CmpiInstance.h>

#include "providers/common/CimValues.h"

namespace zeda::pelka {

// The values of a drive-shaped instance.
struct DiskDriveFields {
  std::string nameSpace;
  std::string className;  // class of the instance path (a placeholder may carry another)
  DeviceKeys keys;
  std::string name;
  CMPIUint16 healthState = 0;
  CMPIUint16 operationalStatus = 0;  // the one element of OperationalStatus
  CMPIUint16 interconnectType = 0;
  CMPIUint16 diskType = 0;
  CMPIUint32 rpm = 0;
};

// An instance on a path holding only the namespace and the class name, with
// the twelve drive properties in this order: SystemCreationClassName,
// SystemName, CreationClassName, DeviceID, Name, EnabledState (uint16 2),
// HealthState, OperationalStatus (uint16[1]), InterconnectType, DiskType,
// RPM (uint32), Description (the drive class name, whatever the path's
// class).
CmpiInstance MakeDiskDriveInstance(const DiskDriveFields& fields);

// The drive-shaped placeholder: the four keys hold their placeholder words,
// every number is 0; only the namespace, the path's class and Name vary.
DiskDriveFields PlaceholderDiskDriveFields(const std::string& nameSpace,
                                           const std::string& className, const std::string& name);

}  // namespace zeda::pelka

#endif
