// Provider of the CIM class ZEDA_Realizes_Disk.
#ifndef ZEDA_PELKA_ZEDA_REALIZES_DISK_H
#define ZEDA_PELKA_ZEDA_REALIZES_DISK_H

#include "PelkaProvider.h"

namespace zeda::pelka {

class ZEDA_Realizes_Disk : public PelkaProvider {
 public:
  ZEDA_Realizes_Disk(const CmpiBroker& broker, const CmpiContext& ctx);
};

}  // namespace zeda::pelka

#endif
