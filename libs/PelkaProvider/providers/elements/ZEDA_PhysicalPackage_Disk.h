// Provider of the CIM class ZEDA_PhysicalPackage_Disk.
#ifndef ZEDA_PELKA_ZEDA_PHYSICALPACKAGE_DISK_H
#define ZEDA_PELKA_ZEDA_PHYSICALPACKAGE_DISK_H

#include "PelkaProvider.h"

namespace zeda::pelka {

class ZEDA_PhysicalPackage_Disk : public PelkaProvider {
 public:
  ZEDA_PhysicalPackage_Disk(const CmpiBroker& broker, const CmpiContext& ctx);
};

}  // namespace zeda::pelka

#endif
