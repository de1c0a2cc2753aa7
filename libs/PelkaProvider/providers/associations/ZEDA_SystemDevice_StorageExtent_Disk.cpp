#include "providers/associations/ZEDA_SystemDevice_StorageExtent_Disk.h"

namespace zeda::pelka {

ZEDA_SystemDevice_StorageExtent_Disk::ZEDA_SystemDevice_StorageExtent_Disk(const CmpiBroker& broker, const CmpiContext& ctx)
    : CmpiBaseMI(broker, ctx), PelkaProvider(broker, ctx) {
  setClassName("ZEDA_SystemDevice_StorageExtent_Disk");
}

}  // namespace zeda::pelka
