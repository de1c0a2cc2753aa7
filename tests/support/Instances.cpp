#include "Instances.h"

namespace zeda::test {

zeda::host::ObjectPath Path(const std::string& wbemUri) {
  return zeda::host::parseObjectPath(wbemUri);
}

std::vector<std::string> PropertyNames(const zeda::host::Instance& instance) {
  return instance.names();
}

std::vector<std::string> PropertyTypes(const zeda::host::Instance& instance) {
  std::vector<std::string> types;
  for (const auto& p : instance.properties()) {
    types.push_back(p.value.typeName());
  }
  return types;
}

std::vector<std::string> KeyNames(const zeda::host::ObjectPath& path) { return path.keyNames(); }

}  // namespace zeda::test
