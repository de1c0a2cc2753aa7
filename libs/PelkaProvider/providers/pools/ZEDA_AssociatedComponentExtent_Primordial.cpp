#include "providers/pools/ZEDA_AssociatedComponentExtent_Primordial.h"

namespace zeda::pelka {

ZEDA_AssociatedComponentExtent_Primordial::ZEDA_AssociatedComponentExtent_Primordial(const CmpiBroker& broker, const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName("ZEDA_AssociatedComponentExtent_Primordial");
}

}  // namespace zeda::pelka
