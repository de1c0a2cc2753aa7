#include "providers/pools/PoolReferences.h"

#include <string>

#include <boost/format.hpp>

#include "Exception.h"
#include "inventory/Library.h"
#include "providers/common/CimValues.h"
#include "providers/pools/PoolTable.h"

namespace zeda::pelka {

namespace {

constexpr char kExtentClass[] = "ZEDA_StorageExtent_Disk";

}  // namespace

void ReturnPlaceholderReference(CmpiResult& rslt, const CmpiObjectPath& source,
                                const char* associationClass) {
  const std::string nameSpace = NameSpaceOf(source);
  const std::string className = cmpi::GetClassName(source);
  if (className == kExtentClass) {
    CmpiObjectPath pool(nameSpace.c_str(), kStoragePoolClass);
    pool.setKey("InstanceID", CmpiData("InstanceID_SPP"));
    rslt.returnData(AssociationInstance(nameSpace, associationClass, "GroupComponent", pool,
                                        "PartComponent", source));
  } else if (className == kStoragePoolClass) {
    rslt.returnData(AssociationInstance(nameSpace, associationClass, "GroupComponent", source,
                                        "PartComponent",
                                        PlaceholderDevicePath(nameSpace, kExtentClass)));
  } else {
    throw Exception((boost::format("Unknown class name: %1%") % className).str());
  }
  rslt.returnDone();
}

}  // namespace zeda::pelka
