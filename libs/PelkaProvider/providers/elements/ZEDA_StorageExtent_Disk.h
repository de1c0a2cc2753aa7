// Provider of the CIM class ZEDA_StorageExtent_Disk.
#ifndef ZEDA_PELKA_ZEDA_STORAGEEXTENT_DISK_H
#define ZEDA_PELKA_ZEDA_STORAGEEXTENT_DISK_H

#include "PelkaProvider.h"

namespace zeda::pelka {

class ZEDA_StorageExtent_Disk : public PelkaProvider {
 public:
  ZEDA_StorageExtent_Disk(const CmpiBroker& broker, const CmpiContext& ctx);
};

}  // namespace zeda::pelka

#endif
