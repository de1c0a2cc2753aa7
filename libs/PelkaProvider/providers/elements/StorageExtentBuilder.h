// The one instance builder of ZEDA_StorageExtent_Disk, shared by the extent
// provider, the associations that answer extent instances and the pool
// walks, with the presets of its values.
#ifndef ZEDA_PELKA_STORAGEEXTENTBUILDER_H
#define ZEDA_PELKA_STORAGEEXTENTBUILDER_H

#include <cstdint>
#include <string>

#include <cmpi/CmpiInstance.h>

#include "inventory/Records.h"
#include "providers/common/CimValues.h"

namespace zeda::pelka {

// The values of an extent instance. Block counts are in 512-byte blocks.
struct StorageExtentFields {
  std::string nameSpace;
  DeviceKeys keys;
  CMPIUint16 extentStatus = 0;  // the one element of ExtentStatus
  CMPIUint64 numberOfBlocks = 0;
  CMPIUint64 consumableBlocks = 0;
  CMPIUint16 healthState = 0;
  CMPIUint16 operationalStatus = 0;  // the one element of OperationalStatus
};

// An instance on a path holding only the namespace and the class
// ZEDA_StorageExtent_Disk, with in this order: SystemCreationClassName,
// SystemName, CreationClassName, DeviceID, ExtentStatus (uint16[1]),
// NumberOfBlocks, ConsumableBlocks, BlockSize (uint64 512), HealthState,
// OperationalStatus (uint16[1]), ExtentDiscriminator (string[1]
// "SNIA:Pool Component").
CmpiInstance MakeStorageExtentInstance(const StorageExtentFields& fields);

// The extent of a disk record with its health reply: ExtentStatus from
// isFree, both block counts from capacity, HealthState and
// OperationalStatus from `healthStatus`.
StorageExtentFields DiskExtentFields(const std::string& nameSpace, const DeviceKeys& keys,
                                     const zeda::orvi::OrviDisk& disk, std::uint32_t healthStatus);

// The placeholder extent: the four placeholder keys, ExtentStatus {2},
// NumberOfBlocks 1000, ConsumableBlocks 100, HealthState 5,
// OperationalStatus {2}.
StorageExtentFields PlaceholderStorageExtentFields(const std::string& nameSpace);

}  // namespace zeda::pelka

#endif
