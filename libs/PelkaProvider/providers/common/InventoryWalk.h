// The walk over the NAS inventory that every EnumInstances of the disk
// classes and of their associations makes: the request's namespace, the NAS
// list in its order, per NAS its Orvi and its disk list, every disk in list
// order, then returnDone.
#ifndef ZEDA_PELKA_INVENTORYWALK_H
#define ZEDA_PELKA_INVENTORYWALK_H

#include <functional>
#include <string>

#include <cmpi/CmpiObjectPath.h>
#include <cmpi/CmpiResult.h>

#include "inventory/Nas.h"
#include "inventory/Orvi.h"
#include "inventory/Records.h"

namespace zeda::pelka {

// What the walk hands to the per-disk callback. Everything is borrowed for
// the duration of the call: the disk list and the strings are released
// before the next NAS is visited.
struct DiskVisit {
  const std::string& nameSpace;              // namespace of the request path
  const Nas& nas;                            // owned by the library
  const std::string& systemName;             // "ZEDA:" + nas.name; empty with SystemNameUse::Skip
  zeda::orvi::Orvi& orvi;                    // the NAS's API object, owned by the library
  const zeda::orvi::OrviDiskList& diskList;  // the whole reply, groups included
  const zeda::orvi::OrviDisk& disk;          // the disk being visited
};

// Whether the walk forms the system name of each NAS (classes keyed by the
// NAS name alone do not).
enum class SystemNameUse { Build, Skip };

using DiskVisitor = std::function<void(const DiskVisit&)>;

// Calls `visit` for every disk of every NAS: GetNasList(); for each NAS
// GetOrvi, the system name, GetDiskList(), then each disk in order. Calls
// rslt.returnDone() at the end, also when the NAS list is empty. The callback
// returns its own instances with rslt.returnData. Exceptions of the library,
// the NAS API or the callback pass through; the caller answers status OK.
void WalkInventory(CmpiResult& rslt, const CmpiObjectPath& cop, const DiskVisitor& visit,
                   SystemNameUse systemNameUse = SystemNameUse::Build);

}  // namespace zeda::pelka

#endif
