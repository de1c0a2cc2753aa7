// Shorthands for the object manager's paths and instances.
#ifndef ZEDA_TESTS_SUPPORT_INSTANCES_H
#define ZEDA_TESTS_SUPPORT_INSTANCES_H

#include <string>
#include <vector>

#include "zeda/host/all.hpp"

namespace zeda::test {

zeda::host::ObjectPath Path(const std::string& wbemUri);
std::vector<std::string> PropertyNames(const zeda::host::Instance& instance);
std::vector<std::string> PropertyTypes(const zeda::host::Instance& instance);
std::vector<std::string> KeyNames(const zeda::host::ObjectPath& path);

}  // namespace zeda::test

#endif
