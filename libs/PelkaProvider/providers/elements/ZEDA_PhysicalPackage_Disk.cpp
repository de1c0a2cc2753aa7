#include "providers/elements/ZEDA_PhysicalPackage_Disk.h"

namespace zeda::pelka {

ZEDA_PhysicalPackage_Disk::ZEDA_PhysicalPackage_Disk(const CmpiBroker& broker, const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName("ZEDA_PhysicalPackage_Disk");
}

}  // namespace zeda::pelka
