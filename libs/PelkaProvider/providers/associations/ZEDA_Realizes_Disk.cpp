#include "providers/associations/ZEDA_Realizes_Disk.h"

namespace zeda::pelka {

ZEDA_Realizes_Disk::ZEDA_Realizes_Disk(const CmpiBroker& broker, const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName("ZEDA_Realizes_Disk");
}

}  // namespace zeda::pelka
