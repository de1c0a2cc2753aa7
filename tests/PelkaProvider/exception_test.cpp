#include <cstring>
#include <exception>
#include <type_traits>

#include <gtest/gtest.h>

#include "Exception.h"

namespace zeda::test {
namespace {

using namespace zeda::pelka;

static_assert(std::is_base_of_v<std::exception, Exception>);
static_assert(std::is_base_of_v<Exception, ProviderException>);
static_assert(std::has_virtual_destructor_v<Exception>);

TEST(Exception, WhatReturnsTheMessage) {
  const Exception e("Null handler");
  EXPECT_STREQ(e.what(), "Null handler");
}

TEST(Exception, CaughtAsStdException) {
  try {
    throw Exception("Wrong class name");
  } catch (const std::exception& e) {
    EXPECT_STREQ(e.what(), "Wrong class name");
    return;
  }
  FAIL() << "not caught as std::exception";
}

TEST(ProviderException, StatusIsInvalidParameterWithTheMessage) {
  const ProviderException e("Unknown class name: X");
  EXPECT_STREQ(e.what(), "Unknown class name: X");
  EXPECT_EQ(e.status().rc(), CMPI_RC_ERR_INVALID_PARAMETER);
  EXPECT_EQ(static_cast<int>(e.status().rc()), 4);
  ASSERT_TRUE(e.status().hasMessage());
  EXPECT_STREQ(e.status().msg(), "Unknown class name: X");
}

TEST(ProviderException, EmptyMessageStillCarriesAnEmptyStatusMessage) {
  const ProviderException e("");
  EXPECT_STREQ(e.what(), "");
  EXPECT_EQ(e.status().rc(), CMPI_RC_ERR_INVALID_PARAMETER);
  ASSERT_TRUE(e.status().hasMessage());
  EXPECT_STREQ(e.status().msg(), "");
}

TEST(ProviderException, CopyKeepsMessageAndStatus) {
  const ProviderException original("abc");
  const ProviderException copy(original);  // NOLINT(performance-unnecessary-copy-initialization)
  EXPECT_STREQ(copy.what(), "abc");
  EXPECT_NE(copy.what(), original.what());  // its own text, not a borrowed pointer
  EXPECT_EQ(copy.status().rc(), CMPI_RC_ERR_INVALID_PARAMETER);
  EXPECT_STREQ(copy.status().msg(), "abc");
}

TEST(ProviderException, ThrownByValueCaughtByReferenceAsException) {
  try {
    throw ProviderException("abc");
  } catch (const Exception& e) {
    const auto* provider = dynamic_cast<const ProviderException*>(&e);
    ASSERT_NE(provider, nullptr);
    EXPECT_STREQ(provider->status().msg(), "abc");
    return;
  }
  FAIL() << "not caught as Exception";
}

}  // namespace
}  // namespace zeda::test
