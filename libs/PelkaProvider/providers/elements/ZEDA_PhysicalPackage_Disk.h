// Provider of the CIM class ZEDA_PhysicalPackage_Disk. The drive as a piece of hardware.
#ifndef ZEDA_PELKA_ZEDA_PHYSICALPACKAGE_DISK_H
#define ZEDA_PELKA_ZEDA_PHYSICALPACKAGE_DISK_H

#include "PelkaProvider.h"
#include "providers/common/ClassNames.h"

namespace zeda::pelka {

class ZEDA_PhysicalPackage_Disk : public PelkaProvider {
 public:
  // The CIM class this provider serves; every place it names itself uses this.
  static constexpr const char* kClassName = className::kPhysicalPackageDisk;

  ZEDA_PhysicalPackage_Disk(const CmpiBroker& broker, const CmpiContext& ctx);

  // Every disk's package of every NAS, from the live inventory and the NAS's identity query.
  class EnumInstances : public InstanceMI::EnumInstancesDelegate {
   public:
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const char** properties) override;
  };

  // The fixed placeholder package, whatever the path names.
  class GetInstance : public InstanceMI::GetInstanceDelegate {
   public:
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const char** properties) override;
  };
};

}  // namespace zeda::pelka

#endif
