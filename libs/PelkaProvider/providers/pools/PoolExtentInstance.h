// Instance builder of the ZEDA_StorageExtent_Disk instances that the pool
// associations answer for a pool.
#ifndef ZEDA_PELKA_POOLEXTENTINSTANCE_H
#define ZEDA_PELKA_POOLEXTENTINSTANCE_H

#include <string>

#include <cmpi/CmpiInstance.h>

namespace zeda::pelka {

// An instance on a path holding only `nameSpace` and
// "ZEDA_StorageExtent_Disk", with, in this order: SystemCreationClassName
// (the word "ZEDA_SystemCreationClassName", not the computer-system class
// name; clients of the pool associations see it so), SystemName,
// CreationClassName ("ZEDA_StorageExtent_Disk"), DeviceID, ExtentStatus
// (uint16[1]), NumberOfBlocks and ConsumableBlocks (both `blocks`, 512-byte
// blocks), BlockSize (uint64 512), HealthState, OperationalStatus
// (uint16[1]), ExtentDiscriminator (string[1] "SNIA:Pool Component").
CmpiInstance MakeExtentInstance(const std::string& nameSpace, const std::string& systemName,
                                const std::string& deviceId, CMPIUint16 extentStatus,
                                CMPIUint64 blocks, CMPIUint16 healthState,
                                CMPIUint16 operationalStatus);

}  // namespace zeda::pelka

#endif
