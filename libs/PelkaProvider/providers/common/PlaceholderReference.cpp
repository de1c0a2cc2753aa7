#include "providers/common/PlaceholderReference.h"

#include "CmpiKeys.h"
#include "Exception.h"
#include "providers/common/CimValues.h"

namespace zeda::pelka {

void ReturnPlaceholderReference(CmpiResult& rslt, const CmpiObjectPath& source,
                                const std::string& associationClass, const AssociationEnd& first,
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
    // Exception: answered as 200 (CMPI_RC_ERROR).
    throw Exception("Unknown class name: " + sourceClass);
  }
  AssociationFields association;
  association.nameSpace = nameSpace;
  association.className = associationClass;
  association.first = {first.role, firstPath};
  association.second = {second.role, secondPath};
  rslt.returnData(MakeAssociationInstance(association));
  rslt.returnDone();
}

}  // namespace zeda::pelka
