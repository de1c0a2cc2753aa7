#include "providers/associations/ZEDA_SystemDevice_DiskDrive.h"

namespace zeda::pelka {

ZEDA_SystemDevice_DiskDrive::ZEDA_SystemDevice_DiskDrive(const CmpiBroker& broker, const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName("ZEDA_SystemDevice_DiskDrive");
}

}  // namespace zeda::pelka
