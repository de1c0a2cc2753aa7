// Instance builder of ZEDA_PhysicalPackage_Disk and the manufacturer rule.
#ifndef ZEDA_PELKA_PACKAGEBUILDER_H
#define ZEDA_PELKA_PACKAGEBUILDER_H

#include <string>

#include <cmpi/CmpiInstance.h>

namespace zeda::pelka {

// The manufacturer part of a NAS API product text: everything before the
// first (case-sensitive) occurrence of `model`, less the one separator in
// front of it. The length (position - 1) is computed unsigned and capped at
// the length of `product`, so a model at position 0, an empty model or a
// model that does not occur all give the whole product.
std::string ManufacturerFromProduct(const std::string& product, const std::string& model);

// The values of a package instance.
struct PhysicalPackageFields {
  std::string nameSpace;
  std::string className;  // class of the instance path
  std::string creationClassName;
  std::string tag;
  std::string manufacturer;
  std::string model;
  std::string serialNumber;
};

// An instance on a path holding only the namespace and the class name, with
// CreationClassName, Tag, Manufacturer, Model, SerialNumber in this order.
CmpiInstance MakePhysicalPackageInstance(const PhysicalPackageFields& fields);

// The placeholder package: every string property holds its placeholder word
// ("ZEDA_CreationClassName", "ZEDA_Tag", ...).
PhysicalPackageFields PlaceholderPhysicalPackageFields(const std::string& nameSpace,
                                                       const std::string& className);

}  // namespace zeda::pelka

#endif
