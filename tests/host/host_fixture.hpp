// Shared helpers of the host tests: the test provider modules built with them.
#pragma once

#include <string>
#include <vector>

#include "CmpiText.h"
#include "Names.h"
#include "zeda/host/host.hpp"

namespace zeda::test {

inline const char* testProvider() { return ZEDA_TEST_PROVIDER; }
inline const char* throwingProvider() { return ZEDA_TEST_THROWING_PROVIDER; }

inline const char* kTestClass = "ZEDA_HostTest";
inline const char* kTestProvider = "ZEDA_HostTestProvider";

inline zeda::host::ObjectPath testPath(const std::string& id) {
  return zeda::host::ObjectPath(kNamespace, kTestClass,
                                {{"InstanceID", zeda::host::Value::string(id)}});
}

// zeda-cim's arguments `args` with the test provider as its module.
inline std::vector<std::string> withModule(std::vector<std::string> args) {
  args.insert(args.begin(), {"--module", testProvider()});
  return args;
}

}  // namespace zeda::test
