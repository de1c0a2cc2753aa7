// Instance builders of ZEDA_StorageExtent_Disk, shared by the extent provider
// and the associations that answer extent instances.
#ifndef ZEDA_PELKA_STORAGEEXTENTBUILDER_H
#define ZEDA_PELKA_STORAGEEXTENTBUILDER_H

#include <cstdint>

#include <cmpi/CmpiInstance.h>

#include "inventory/Records.h"

namespace zeda::pelka {

// The one shape of every extent instance the module answers: creates a path
// holding only `nameSpace` and "ZEDA_StorageExtent_Disk", an instance on it
// (assigned to `inst`), and sets in this order: SystemCreationClassName,
// SystemName, CreationClassName, DeviceID, ExtentStatus (uint16[1]),
// NumberOfBlocks, ConsumableBlocks, BlockSize (uint64 512), HealthState,
// OperationalStatus (uint16[1]), ExtentDiscriminator (string[1]
// "SNIA:Pool Component"). Block counts are in 512-byte blocks.
void MakeExtentShapedInstance(CmpiInstance& inst, const char* nameSpace,
                              const char* systemCreationClassName, const char* systemName,
                              const char* creationClassName, const char* deviceId,
                              CMPIUint16 extentStatus, CMPIUint64 numberOfBlocks,
                              CMPIUint64 consumableBlocks, CMPIUint16 healthState,
                              CMPIUint16 operationalStatus);

// The extent of a disk element: SystemCreationClassName "ZEDA_ComputerSystem",
// CreationClassName "ZEDA_StorageExtent_Disk".
void MakeStorageExtentInstance(CmpiInstance& inst, const char* nameSpace, const char* systemName,
                               const char* deviceId, CMPIUint16 extentStatus,
                               CMPIUint64 numberOfBlocks, CMPIUint64 consumableBlocks,
                               CMPIUint16 healthState, CMPIUint16 operationalStatus);

// MakeStorageExtentInstance with the values a disk record and its health
// reply give: ExtentStatus from isFree, both block counts from capacity,
// HealthState and OperationalStatus from healthStatus.
void MakeDiskExtentInstance(CmpiInstance& inst, const char* nameSpace, const char* systemName,
                            const char* deviceId, const zeda::orvi::OrviDisk& disk,
                            std::uint32_t healthStatus);

}  // namespace zeda::pelka

#endif
