// Provider of the CIM class ZEDA_SoftwareIdentity_Disk. The firmware of one disk.
#ifndef ZEDA_PELKA_ZEDA_SOFTWAREIDENTITY_DISK_H
#define ZEDA_PELKA_ZEDA_SOFTWAREIDENTITY_DISK_H

#include "PelkaProvider.h"
#include "providers/common/ClassNames.h"

namespace zeda::pelka {

class ZEDA_SoftwareIdentity_Disk : public PelkaProvider {
 public:
  // The CIM class this provider serves; every place it names itself uses this.
  static constexpr const char* kClassName = className::kSoftwareIdentityDisk;

  ZEDA_SoftwareIdentity_Disk(const CmpiBroker& broker, const CmpiContext& ctx);

  // One firmware identity per disk of every NAS (disks sharing a version still get one each).
  class EnumInstances : public InstanceMI::EnumInstancesDelegate {
   public:
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const char** properties) override;
  };

  // The fixed placeholder identity, whatever the path names.
  class GetInstance : public InstanceMI::GetInstanceDelegate {
   public:
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const char** properties) override;
  };
};

}  // namespace zeda::pelka

#endif
