// Provider of the CIM class ZEDA_DiskDrive. One instance per disk of every NAS.
#ifndef ZEDA_PELKA_ZEDA_DISKDRIVE_H
#define ZEDA_PELKA_ZEDA_DISKDRIVE_H

#include "PelkaProvider.h"
#include "providers/common/ClassNames.h"

namespace zeda::pelka {

class ZEDA_DiskDrive : public PelkaProvider {
 public:
  // The CIM class this provider serves; every place it names itself uses this.
  static constexpr const char* kClassName = className::kDiskDrive;

  ZEDA_DiskDrive(const CmpiBroker& broker, const CmpiContext& ctx);

  // Every disk of every NAS, from the live inventory.
  class EnumInstances : public InstanceMI::EnumInstancesDelegate {
   public:
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const char** properties) override;
  };

  // The fixed placeholder drive, whatever the path names.
  class GetInstance : public InstanceMI::GetInstanceDelegate {
   public:
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const char** properties) override;
  };
};

}  // namespace zeda::pelka

#endif
