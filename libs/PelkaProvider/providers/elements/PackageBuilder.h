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

// Creates a path holding only `nameSpace` and `className`, an instance on it
// (assigned to `inst`), and sets CreationClassName, Tag, Manufacturer, Model,
// SerialNumber in this order.
void MakePhysicalPackageInstance(CmpiInstance& inst, const char* className, const char* nameSpace,
                                 const char* creationClassName, const char* tag,
                                 const char* manufacturer, const char* model,
                                 const char* serialNumber);

}  // namespace zeda::pelka

#endif
