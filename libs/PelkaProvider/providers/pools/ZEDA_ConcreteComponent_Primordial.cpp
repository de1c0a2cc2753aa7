#include "providers/pools/ZEDA_ConcreteComponent_Primordial.h"

namespace zeda::pelka {

ZEDA_ConcreteComponent_Primordial::ZEDA_ConcreteComponent_Primordial(const CmpiBroker& broker, const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName("ZEDA_ConcreteComponent_Primordial");
}

}  // namespace zeda::pelka
