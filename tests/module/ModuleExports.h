// What the module exports: its eleven provider classes and their factories.
#ifndef ZEDA_TESTS_MODULE_MODULEEXPORTS_H
#define ZEDA_TESTS_MODULE_MODULEEXPORTS_H

#include <ostream>
#include <string>
#include <vector>

#include "zeda/host/host.hpp"

namespace zeda::test {

struct ProviderClass {
  std::string className;
  bool instanceFactory;
  bool associationFactory;
  bool installsGetInstance;  // the only instance operations installed are
                             // EnumInstances and, for some, GetInstance

  std::string provider() const { return className + "Provider"; }
};

inline void PrintTo(const ProviderClass& c, std::ostream* os) { *os << c.className; }

inline const std::vector<ProviderClass>& ProviderClasses() {
  static const std::vector<ProviderClass> classes = {
      {"ZEDA_DiskDrive", true, false, true},
      {"ZEDA_StorageExtent_Disk", true, false, true},
      {"ZEDA_PhysicalPackage_Disk", true, false, true},
      {"ZEDA_SoftwareIdentity_Disk", true, false, true},
      {"ZEDA_SystemDevice_DiskDrive", true, true, false},
      {"ZEDA_SystemDevice_StorageExtent_Disk", true, true, false},
      {"ZEDA_MediaPresent", true, true, false},
      {"ZEDA_Realizes_Disk", true, true, false},
      {"ZEDA_ElementSoftwareIdentity_Disk", true, true, true},
      {"ZEDA_ConcreteComponent_Primordial", true, true, false},
      {"ZEDA_AssociatedComponentExtent_Primordial", false, true, false},
  };
  return classes;
}

struct Export {
  std::string className;
  zeda::host::MIKind kind;

  std::string provider() const { return className + "Provider"; }
  std::string symbol() const { return zeda::host::factorySymbol(provider(), kind); }
  std::string miName() const {
    return (kind == zeda::host::MIKind::Instance ? "instance" : "association") + provider();
  }
};

inline void PrintTo(const Export& e, std::ostream* os) { *os << e.symbol(); }

inline std::vector<Export> Exports() {
  std::vector<Export> exports;
  for (const ProviderClass& c : ProviderClasses()) {
    if (c.instanceFactory) exports.push_back({c.className, zeda::host::MIKind::Instance});
    if (c.associationFactory) exports.push_back({c.className, zeda::host::MIKind::Association});
  }
  return exports;
}

}  // namespace zeda::test

#endif
