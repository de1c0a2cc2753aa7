#include "providers/associations/ZEDA_MediaPresent.h"

namespace zeda::pelka {

ZEDA_MediaPresent::ZEDA_MediaPresent(const CmpiBroker& broker, const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName("ZEDA_MediaPresent");
}

}  // namespace zeda::pelka
