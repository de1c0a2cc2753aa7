#include "providers/common/InventoryWalk.h"

#include "inventory/Library.h"
#include "providers/common/CimValues.h"
#include "providers/common/Keys.h"

namespace zeda::pelka {

void WalkInventory(CmpiResult& rslt, const CmpiObjectPath& cop, const DiskVisitor& visit,
                   SystemNameUse systemNameUse) {
  const std::string nameSpace = NameSpaceOf(cop);
  for (const Nas& nas : GetNasList()) {
    zeda::orvi::Orvi& orvi = GetOrvi(nas);
    const std::string systemName =
        systemNameUse == SystemNameUse::Build ? SystemName(nas.name) : std::string();
    const zeda::orvi::OrviDiskList diskList = orvi.GetDiskList();
    for (const zeda::orvi::OrviDisk& disk : diskList.disks) {
      visit(DiskVisit{nameSpace, nas, systemName, orvi, diskList, disk});
    }
  }
  rslt.returnDone();
}

}  // namespace zeda::pelka
