#include "providers/elements/PackageBuilder.h"

#include <cmpi/CmpiObjectPath.h>

namespace zeda::pelka {

std::string ManufacturerFromProduct(const std::string& product, const std::string& model) {
  // find() gives npos when the model does not occur and 0 for an empty model;
  // minus one wraps around to a huge count, which substr caps at the length.
  const std::string::size_type length = product.find(model) - 1;
  return product.substr(0, length);
}

void MakePhysicalPackageInstance(CmpiInstance& inst, const char* className, const char* nameSpace,
                                 const char* creationClassName, const char* tag,
                                 const char* manufacturer, const char* model,
                                 const char* serialNumber) {
  inst = CmpiInstance(CmpiObjectPath(nameSpace, className));
  inst.setProperty("CreationClassName", CmpiData(creationClassName));
  inst.setProperty("Tag", CmpiData(tag));
  inst.setProperty("Manufacturer", CmpiData(manufacturer));
  inst.setProperty("Model", CmpiData(model));
  inst.setProperty("SerialNumber", CmpiData(serialNumber));
}

}  // namespace zeda::pelka
