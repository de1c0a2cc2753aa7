// Instance builders of ZEDA_DiskDrive, shared by the disk drive provider and
// the associations that answer drive instances.
#ifndef ZEDA_PELKA_DISKDRIVEBUILDER_H
#define ZEDA_PELKA_DISKDRIVEBUILDER_H

#include <cmpi/CmpiInstance.h>

namespace zeda::pelka {

// Creates a path holding only `nameSpace` and `className`, an instance on it
// (assigned to `inst`), and sets the twelve drive properties in this order:
// SystemCreationClassName, SystemName, CreationClassName, DeviceID, Name,
// EnabledState (uint16 2), HealthState, OperationalStatus (uint16[1]),
// InterconnectType, DiskType, RPM (uint32), Description ("ZEDA_DiskDrive").
void MakeDiskDriveInstance(CmpiInstance& inst, const char* className, const char* nameSpace,
                           const char* systemCreationClassName, const char* systemName,
                           const char* creationClassName, const char* deviceId,
                           const char* name, CMPIUint16 healthState,
                           CMPIUint16 operationalStatus, CMPIUint16 interconnectType,
                           CMPIUint16 diskType, CMPIUint32 rpm);

// The drive-shaped placeholder: the four keys hold "ZEDA_" + their property
// name, every number is 0; only the class, the namespace and Name are given.
void MakePlaceholderDiskDriveInstance(CmpiInstance& inst, const char* className,
                                      const char* nameSpace, const char* name);

// The placeholder drive of class "ZEDA_DiskDrive" whose Name is the word
// "Name" itself.
void MakeFixedDiskDriveInstance(CmpiInstance& inst, const char* nameSpace);

}  // namespace zeda::pelka

#endif
