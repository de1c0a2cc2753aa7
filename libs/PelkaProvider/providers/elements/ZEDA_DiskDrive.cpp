#include "providers/elements/ZEDA_DiskDrive.h"

namespace zeda::pelka {

ZEDA_DiskDrive::ZEDA_DiskDrive(const CmpiBroker& broker, const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName("ZEDA_DiskDrive");
}

}  // namespace zeda::pelka
