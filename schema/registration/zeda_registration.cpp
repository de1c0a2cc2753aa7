// Writes what an object manager needs to know about the module, derived from
// its one list of served classes (module/ServedClasses.h):
//   zeda-registration sfcb       the sfcb provider registration (.reg)
//   zeda-registration pegasus    the OpenPegasus registration MOF
//                                (PG_ProviderModule, PG_Provider,
//                                PG_ProviderCapabilities)
//   zeda-registration factories  the factory names the module exports, one a line
// The committed files in schema/ are this program's output; a test keeps them
// equal to it and the factory list equal to the module's dynamic symbols.
#include <cstring>
#include <iostream>
#include <string>

#include "module/ServedClasses.h"

#ifndef ZEDA_VERSION
#error "ZEDA_VERSION must name the module version"
#endif

namespace {

constexpr const char* kModule = "ZEDA_DiskDriveLite";
constexpr const char* kNamespace = "root/cimv2";

struct ServedClass {
  const char* name;
  bool instance;
  bool association;
};

#define ZEDA_REG_INSTANCE true, false
#define ZEDA_REG_ASSOCIATION false, true
#define ZEDA_REG_INSTANCE_AND_ASSOCIATION true, true
#define ZEDA_REG_ENTRY(Class, Interfaces) ServedClass{#Class, ZEDA_REG_##Interfaces},
constexpr ServedClass kServed[] = {PELKA_SERVED_CLASSES(ZEDA_REG_ENTRY)};
#undef ZEDA_REG_ENTRY

std::string ProviderName(const ServedClass& served) {
  return std::string(served.name) + "Provider";
}

void WriteSfcb(std::ostream& out) {
  out << "# sfcb provider registration of lib" << kModule << ".so, generated from the\n"
      << "# module's list of served classes. Stage it with the class MOF:\n"
      << "#   sfcbstage -n " << kNamespace << " -r " << kModule << ".reg " << kModule << ".mof\n";
  for (const ServedClass& served : kServed) {
    const char* type = served.instance && served.association ? "instance association"
                       : served.instance                     ? "instance"
                                                             : "association";
    out << "\n[" << served.name << "]\n"
        << "   provider: " << ProviderName(served) << "\n"
        << "   location: " << kModule << "\n"
        << "   type: " << type << "\n"
        << "   namespace: " << kNamespace << "\n";
  }
}

void WritePegasus(std::ostream& out) {
  // ProviderType values of PG_ProviderCapabilities: 2 instance, 3 association.
  out << "// OpenPegasus registration of lib" << kModule << ".so, generated from the\n"
      << "// module's list of served classes. Compile it into the interop namespace\n"
      << "// after the class MOF is in " << kNamespace << ":\n"
      << "//   cimmof -n root/PG_InterOp " << kModule << "-pegasus.mof\n\n"
      << "instance of PG_ProviderModule\n{\n"
      << "   Name = \"" << kModule << "\";\n"
      << "   Location = \"" << kModule << "\";\n"
      << "   Vendor = \"ZEDA\";\n"
      << "   Version = \"" << ZEDA_VERSION << "\";\n"
      << "   InterfaceType = \"CMPI\";\n"
      << "   InterfaceVersion = \"2.0.0\";\n"
      << "};\n";
  for (const ServedClass& served : kServed) {
    const std::string provider = ProviderName(served);
    const char* types = served.instance && served.association ? "2, 3"
                        : served.instance                     ? "2"
                                                              : "3";
    out << "\ninstance of PG_Provider\n{\n"
        << "   Name = \"" << provider << "\";\n"
        << "   ProviderModuleName = \"" << kModule << "\";\n"
        << "};\n"
        << "\ninstance of PG_ProviderCapabilities\n{\n"
        << "   ProviderModuleName = \"" << kModule << "\";\n"
        << "   ProviderName = \"" << provider << "\";\n"
        << "   CapabilityID = \"" << served.name << "\";\n"
        << "   ClassName = \"" << served.name << "\";\n"
        << "   Namespaces = {\"" << kNamespace << "\"};\n"
        << "   ProviderType = {" << types << "};\n"
        << "   SupportedProperties = NULL;\n"
        << "   SupportedMethods = NULL;\n"
        << "};\n";
  }
}

void WriteFactories(std::ostream& out) {
  for (const ServedClass& served : kServed) {
    if (served.instance) out << ProviderName(served) << "_Create_InstanceMI\n";
    if (served.association) out << ProviderName(served) << "_Create_AssociationMI\n";
  }
}

}  // namespace

int main(int argc, char** argv) {
  const char* what = argc == 2 ? argv[1] : "";
  if (std::strcmp(what, "sfcb") == 0) {
    WriteSfcb(std::cout);
  } else if (std::strcmp(what, "pegasus") == 0) {
    WritePegasus(std::cout);
  } else if (std::strcmp(what, "factories") == 0) {
    WriteFactories(std::cout);
  } else {
    std::cerr << "usage: zeda-registration sfcb|pegasus|factories\n";
    return 2;
  }
  return std::cout.good() ? 0 : 1;
}
