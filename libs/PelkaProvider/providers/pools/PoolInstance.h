// Instance builder of ZEDA_StoragePool_Primordial, the pool an extent lies in.
#ifndef ZEDA_PELKA_POOLINSTANCE_H
#define ZEDA_PELKA_POOLINSTANCE_H

#include <string>

#include <cmpi/CmpiInstance.h>

namespace zeda::pelka {

// An instance on a path holding only `nameSpace` and the pool class name.
// When `properties` is not null it becomes the instance's property filter,
// with the key list "InstanceID", "PoolID", "Primordial",
// "TotalManagedSpace", "RemainingManagedSpace". Then, in this order: Usage
// (uint16), InstanceID, Primordial (boolean true), ElementName, PoolID,
// TotalManagedSpace and RemainingManagedSpace (uint64, bytes),
// OperationalStatus (uint16[1] {2}).
CmpiInstance MakePoolInstance(const std::string& nameSpace, const char** properties,
                              const std::string& instanceId, const char* elementName,
                              const char* poolId, CMPIUint64 totalManagedSpace,
                              CMPIUint64 remainingManagedSpace, CMPIUint16 usage);

}  // namespace zeda::pelka

#endif
