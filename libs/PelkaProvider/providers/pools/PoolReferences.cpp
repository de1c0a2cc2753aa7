#include "providers/pools/PoolReferences.h"

#include <string>

#include "providers/common/CimValues.h"
#include "providers/common/ClassNames.h"
#include "providers/common/PlaceholderReference.h"
#include "providers/pools/PoolTable.h"

namespace zeda::pelka {

namespace {

constexpr const char* kExtentClass = className::kStorageExtentDisk;

}  // namespace

void ReturnPoolPlaceholderReference(CmpiResult& rslt, const CmpiObjectPath& source,
                                    const std::string& associationClass) {
  const AssociationEnd pool{"GroupComponent", kStoragePoolClass, [](const std::string& nameSpace) {
                              CmpiObjectPath path(nameSpace.c_str(), kStoragePoolClass);
                              path.setKey("InstanceID", CmpiData("InstanceID_SPP"));
                              return path;
                            }};
  const AssociationEnd extent{"PartComponent", kExtentClass, [](const std::string& nameSpace) {
                                return PlaceholderDevicePath(nameSpace, kExtentClass);
                              }};
  ReturnPlaceholderReference(rslt, source, associationClass, pool, extent);
}

}  // namespace zeda::pelka
