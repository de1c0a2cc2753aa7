// Instance builder of ZEDA_StorageExtent_Disk, shared by the extent provider
// and the associations that answer extent instances.
#ifndef ZEDA_PELKA_STORAGEEXTENTBUILDER_H
#define ZEDA_PELKA_STORAGEEXTENTBUILDER_H

#include <cmpi/CmpiInstance.h>

namespace zeda::pelka {

// Creates a path holding only `nameSpace` and "ZEDA_StorageExtent_Disk", an
// instance on it (assigned to `inst`), and sets in this order:
// SystemCreationClassName ("ZEDA_ComputerSystem"), SystemName,
// CreationClassName ("ZEDA_StorageExtent_Disk"), DeviceID, ExtentStatus
// (uint16[1]), NumberOfBlocks, ConsumableBlocks, BlockSize (uint64 512),
// HealthState, OperationalStatus (uint16[1]), ExtentDiscriminator
// (string[1] "SNIA:Pool Component"). Block counts are in 512-byte blocks.
void MakeStorageExtentInstance(CmpiInstance& inst, const char* nameSpace, const char* systemName,
                               const char* deviceId, CMPIUint16 extentStatus,
                               CMPIUint64 numberOfBlocks, CMPIUint64 consumableBlocks,
                               CMPIUint16 healthState, CMPIUint16 operationalStatus);

}  // namespace zeda::pelka

#endif
