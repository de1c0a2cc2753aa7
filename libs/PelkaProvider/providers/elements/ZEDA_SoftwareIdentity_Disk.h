// Provider of the CIM class ZEDA_SoftwareIdentity_Disk.
#ifndef ZEDA_PELKA_ZEDA_SOFTWAREIDENTITY_DISK_H
#define ZEDA_PELKA_ZEDA_SOFTWAREIDENTITY_DISK_H

#include "PelkaProvider.h"

namespace zeda::pelka {

class ZEDA_SoftwareIdentity_Disk : public PelkaProvider {
 public:
  ZEDA_SoftwareIdentity_Disk(const CmpiBroker& broker, const CmpiContext& ctx);
};

}  // namespace zeda::pelka

#endif
