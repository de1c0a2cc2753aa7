#include "providers/elements/PackageBuilder.h"

#include <cmpi/CmpiObjectPath.h>

namespace zeda::pelka {

std::string ManufacturerFromProduct(const std::string& product, const std::string& model) {
  // find() gives npos when the model does not occur and 0 for an empty model;
  // minus one wraps around to a huge count, which substr caps at the length.
  const std::string::size_type length = product.find(model) - 1;
  return product.substr(0, length);
}

CmpiInstance MakePhysicalPackageInstance(const PhysicalPackageFields& fields) {
  CmpiInstance inst(CmpiObjectPath(fields.nameSpace.c_str(), fields.className.c_str()));
  inst.setProperty("CreationClassName", CmpiData(fields.creationClassName));
  inst.setProperty("Tag", CmpiData(fields.tag));
  inst.setProperty("Manufacturer", CmpiData(fields.manufacturer));
  inst.setProperty("Model", CmpiData(fields.model));
  inst.setProperty("SerialNumber", CmpiData(fields.serialNumber));
  return inst;
}

PhysicalPackageFields PlaceholderPhysicalPackageFields(const std::string& nameSpace,
                                                       const std::string& className) {
  PhysicalPackageFields fields;
  fields.nameSpace = nameSpace;
  fields.className = className;
  fields.creationClassName = "ZEDA_CreationClassName";
  fields.tag = "ZEDA_Tag";
  fields.manufacturer = "ZEDA_Manufacturer";
  fields.model = "ZEDA_Model";
  fields.serialNumber = "ZEDA_SerialNumber";
  return fields;
}

}  // namespace zeda::pelka
