// Provider of the CIM class ZEDA_SystemDevice_DiskDrive: each disk drive of a
// NAS as a part of the NAS's computer system.
#ifndef ZEDA_PELKA_ZEDA_SYSTEMDEVICE_DISKDRIVE_H
#define ZEDA_PELKA_ZEDA_SYSTEMDEVICE_DISKDRIVE_H

#include "PelkaProvider.h"
#include "providers/common/ClassNames.h"

namespace zeda::pelka {

class ZEDA_SystemDevice_DiskDrive : public PelkaProvider {
 public:
  // The CIM class this provider serves; every place it names itself uses this.
  static constexpr const char* kClassName = className::kSystemDeviceDiskDrive;

  ZEDA_SystemDevice_DiskDrive(const CmpiBroker& broker, const CmpiContext& ctx);

  class EnumInstances : public InstanceMI::EnumInstancesDelegate {
   public:
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const char** properties) override;
  };

  // From a drive the placeholder system is built but not handed over; from a
  // system the placeholder drive is answered.
  class Associators : public AssociationMI::AssociatorsDelegate {
   public:
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const std::string& assocClass, const std::string& resultClass,
                          const std::string& role, const std::string& resultRole,
                          const char** properties) override;
  };

  class References : public AssociationMI::ReferencesDelegate {
   public:
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const std::string& resultClass, const std::string& role,
                          const char** properties) override;
  };
};

}  // namespace zeda::pelka

#endif
