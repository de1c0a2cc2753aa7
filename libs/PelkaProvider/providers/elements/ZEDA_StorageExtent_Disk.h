// Provider of the CIM class ZEDA_StorageExtent_Disk. The raw capacity of one disk as a run of
// 512-byte blocks.
#ifndef ZEDA_PELKA_ZEDA_STORAGEEXTENT_DISK_H
#define ZEDA_PELKA_ZEDA_STORAGEEXTENT_DISK_H

#include "PelkaProvider.h"
#include "providers/common/ClassNames.h"

namespace zeda::pelka {

class ZEDA_StorageExtent_Disk : public PelkaProvider {
 public:
  // The CIM class this provider serves; every place it names itself uses this.
  static constexpr const char* kClassName = className::kStorageExtentDisk;

  ZEDA_StorageExtent_Disk(const CmpiBroker& broker, const CmpiContext& ctx);

  // Every disk's extent of every NAS, from the live inventory.
  class EnumInstances : public InstanceMI::EnumInstancesDelegate {
   public:
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const char** properties) override;
  };

  // The extent of the disk named by SystemName and DeviceID, looked up in the inventory; nothing
  // when no disk of that NAS has the identifier.
  class GetInstance : public InstanceMI::GetInstanceDelegate {
   public:
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const char** properties) override;
  };
};

}  // namespace zeda::pelka

#endif
