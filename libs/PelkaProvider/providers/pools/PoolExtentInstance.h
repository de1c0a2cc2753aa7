// The ZEDA_StorageExtent_Disk instances that the pool associations answer for
// a pool: built with MakeStorageExtentInstance, keyed as below.
#ifndef ZEDA_PELKA_POOLEXTENTINSTANCE_H
#define ZEDA_PELKA_POOLEXTENTINSTANCE_H

#include <string>

#include <cmpi/CmpiInstance.h>

#include "providers/common/CimValues.h"

namespace zeda::pelka {

// Keys of an extent answered for a pool: SystemCreationClassName is the word
// "ZEDA_SystemCreationClassName", not the computer-system class name (clients
// of the pool associations see it so), CreationClassName the extent class.
DeviceKeys PoolExtentKeys(const std::string& systemName, const std::string& deviceId);

// MakeStorageExtentInstance with PoolExtentKeys and `blocks` as both
// NumberOfBlocks and ConsumableBlocks, in positional form for the
// pool-to-extent walk (PoolToExtents.cpp) until it fills StorageExtentFields.
CmpiInstance MakeExtentInstance(const std::string& nameSpace, const std::string& systemName,
                                const std::string& deviceId, CMPIUint16 extentStatus,
                                CMPIUint64 blocks, CMPIUint16 healthState,
                                CMPIUint16 operationalStatus);

}  // namespace zeda::pelka

#endif
