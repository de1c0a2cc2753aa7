#include "providers/elements/ZEDA_SoftwareIdentity_Disk.h"

namespace zeda::pelka {

ZEDA_SoftwareIdentity_Disk::ZEDA_SoftwareIdentity_Disk(const CmpiBroker& broker, const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName("ZEDA_SoftwareIdentity_Disk");
}

}  // namespace zeda::pelka
