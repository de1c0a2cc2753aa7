// Shared helpers of the host tests: the test modules and small readers.
#pragma once

#include <string>

#include "zeda/host/host.hpp"

namespace zeda::host::test_support {

inline const char* testProvider() { return ZEDA_TEST_PROVIDER; }
inline const char* throwingProvider() { return ZEDA_TEST_THROWING_PROVIDER; }

inline const char* kTestClass = "ZEDA_HostTest";
inline const char* kTestProvider = "ZEDA_HostTestProvider";

inline ObjectPath testPath(const std::string& id) {
  return ObjectPath("root/cimv2", kTestClass, {{"InstanceID", Value::string(id)}});
}

inline std::string text(const CMPIString* s) {
  if (s == nullptr) return "<null>";
  const char* p = s->ft->getCharPtr(s, nullptr);
  return p ? p : "<null>";
}

}  // namespace zeda::host::test_support
