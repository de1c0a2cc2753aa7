// Provider of the CIM class ZEDA_ElementSoftwareIdentity_Disk.
#ifndef ZEDA_PELKA_ZEDA_ELEMENTSOFTWAREIDENTITY_DISK_H
#define ZEDA_PELKA_ZEDA_ELEMENTSOFTWAREIDENTITY_DISK_H

#include "PelkaProvider.h"

namespace zeda::pelka {

class ZEDA_ElementSoftwareIdentity_Disk : public PelkaProvider {
 public:
  ZEDA_ElementSoftwareIdentity_Disk(const CmpiBroker& broker, const CmpiContext& ctx);
};

}  // namespace zeda::pelka

#endif
