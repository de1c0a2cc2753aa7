#include "providers/associations/ZEDA_ElementSoftwareIdentity_Disk.h"

namespace zeda::pelka {

ZEDA_ElementSoftwareIdentity_Disk::ZEDA_ElementSoftwareIdentity_Disk(const CmpiBroker& broker, const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName("ZEDA_ElementSoftwareIdentity_Disk");
}

}  // namespace zeda::pelka
