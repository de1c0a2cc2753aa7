// Instance builder of ZEDA_StoragePool_Primordial, the pool an extent lies in.
#ifndef ZEDA_PELKA_POOLINSTANCE_H
#define ZEDA_PELKA_POOLINSTANCE_H

#include <string>

#include <cmpi/CmpiInstance.h>

namespace zeda::pelka {

// The values of a pool instance. Spaces are in bytes.
struct PoolFields {
  std::string nameSpace;
  const char** propertyFilter = nullptr;  // the request's property list; null: no filter
  std::string instanceId;
  std::string elementName;
  std::string poolId;
  CMPIUint64 totalManagedSpace = 0;
  CMPIUint64 remainingManagedSpace = 0;
  CMPIUint16 usage = 0;
};

// An instance on a path holding only the namespace and the pool class name.
// When `propertyFilter` is not null it becomes the instance's property
// filter, with the key list "InstanceID", "PoolID", "Primordial",
// "TotalManagedSpace", "RemainingManagedSpace". Then, in this order: Usage
// (uint16), InstanceID, Primordial (boolean true), ElementName, PoolID,
// TotalManagedSpace and RemainingManagedSpace (uint64), OperationalStatus
// (uint16[1] {2}).
CmpiInstance MakePoolInstance(const PoolFields& fields);

}  // namespace zeda::pelka

#endif
