// The `classes` operation: the classes a module serves, with their factories.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "options.hpp"

namespace zeda::cim {

struct ServedClass {
  std::string className;  // the provider name without its "Provider" suffix
  std::string provider;
  std::vector<std::string> factories;
};

// Groups factory symbols ("<Provider>_Create_<Kind>MI") by class, sorted.
std::vector<ServedClass> servedClasses(const std::vector<std::string>& factories);

// mof: "Class: factory factory"; json: the usual document with results
// [{"classname", "provider", "factories": [...]}]; xml: CLASSNAME elements.
void printClasses(std::ostream& out, Format format, const std::vector<std::string>& factories);

}  // namespace zeda::cim
