// Provider of the CIM class ZEDA_DiskDrive.
#ifndef ZEDA_PELKA_ZEDA_DISKDRIVE_H
#define ZEDA_PELKA_ZEDA_DISKDRIVE_H

#include "PelkaProvider.h"

namespace zeda::pelka {

class ZEDA_DiskDrive : public PelkaProvider {
 public:
  ZEDA_DiskDrive(const CmpiBroker& broker, const CmpiContext& ctx);
};

}  // namespace zeda::pelka

#endif
