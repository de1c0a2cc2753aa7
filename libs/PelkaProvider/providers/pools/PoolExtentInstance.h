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

}  // namespace zeda::pelka

#endif
