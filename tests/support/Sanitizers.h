// Whether this test binary runs under AddressSanitizer: some checks expect a
// report from it (a use of freed memory) where other builds answer a status.
#ifndef ZEDA_TESTS_SUPPORT_SANITIZERS_H
#define ZEDA_TESTS_SUPPORT_SANITIZERS_H

// g++ announces AddressSanitizer with __SANITIZE_ADDRESS__, clang (before
// version 16) only through __has_feature.
#if defined(__SANITIZE_ADDRESS__)
#define ZEDA_TEST_UNDER_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZEDA_TEST_UNDER_ASAN 1
#endif
#endif

namespace zeda::test {

#ifdef ZEDA_TEST_UNDER_ASAN
inline constexpr bool kUnderAddressSanitizer = true;
#else
inline constexpr bool kUnderAddressSanitizer = false;
#endif

}  // namespace zeda::test

#endif
