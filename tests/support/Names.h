// Names every test shares: the namespace requests go to and the provider
// name behind a class's factories.
#ifndef ZEDA_TESTS_SUPPORT_NAMES_H
#define ZEDA_TESTS_SUPPORT_NAMES_H

#include <string>

namespace zeda::test {

// Namespace of the requests the tests make; the answers must carry it.
inline constexpr char kNamespace[] = "root/cimv2";

// A namespace other than kNamespace, for answers that must follow the request.
inline constexpr char kOtherNamespace[] = "root/other";

// The provider name behind a class's factories.
inline std::string Provider(const std::string& className) { return className + "Provider"; }

}  // namespace zeda::test

#endif
