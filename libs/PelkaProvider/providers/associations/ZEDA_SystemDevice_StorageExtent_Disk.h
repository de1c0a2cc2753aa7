// Provider of the CIM class ZEDA_SystemDevice_StorageExtent_Disk: each disk
// extent of a NAS as a part of the NAS's computer system.
#ifndef ZEDA_PELKA_ZEDA_SYSTEMDEVICE_STORAGEEXTENT_DISK_H
#define ZEDA_PELKA_ZEDA_SYSTEMDEVICE_STORAGEEXTENT_DISK_H

#include "PelkaProvider.h"
#include "providers/common/ClassNames.h"

namespace zeda::pelka {

class ZEDA_SystemDevice_StorageExtent_Disk : public PelkaProvider {
 public:
  // The CIM class this provider serves; every place it names itself uses this.
  static constexpr const char* kClassName = className::kSystemDeviceStorageExtentDisk;

  ZEDA_SystemDevice_StorageExtent_Disk(const CmpiBroker& broker, const CmpiContext& ctx);

  class EnumInstances : public InstanceMI::EnumInstancesDelegate {
   public:
    CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                          const char** properties) override;
  };

  // From an extent the placeholder system is answered (for the result class
  // CIM_StoragePool); from a system the placeholder extent.
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
