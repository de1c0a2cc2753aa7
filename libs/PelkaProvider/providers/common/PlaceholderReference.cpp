#include "providers/common/PlaceholderReference.h"

#include "Exception.h"
#include "inventory/Library.h"
#include "providers/common/CimValues.h"

namespace zeda::pelka {

void ReturnPlaceholderReference(CmpiResult& rslt, const CmpiObjectPath& source,
                                const char* associationClass, const AssociationEnd& first,
                                const AssociationEnd& second) {
  const std::string nameSpace = NameSpaceOf(source);
  const std::string sourceClass = cmpi::GetClassName(source);
  CmpiObjectPath firstPath;
  CmpiObjectPath secondPath;
  if (sourceClass == first.className) {
    firstPath = source;
    secondPath = second.placeholder(nameSpace);
  } else if (sourceClass == second.className) {
    firstPath = first.placeholder(nameSpace);
    secondPath = source;
  } else {
    throw Exception("Unknown class name: " + sourceClass);
  }
  rslt.returnData(AssociationInstance(nameSpace, associationClass, first.role, firstPath,
                                      second.role, secondPath));
  rslt.returnDone();
}

}  // namespace zeda::pelka
