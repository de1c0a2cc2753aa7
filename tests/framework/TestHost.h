// The object manager the framework tests borrow their CMPI objects from: its
// broker (newString, object paths) and its context. It has the real module
// loaded, which these tests do not otherwise use.
#ifndef ZEDA_TESTS_FRAMEWORK_TESTHOST_H
#define ZEDA_TESTS_FRAMEWORK_TESTHOST_H

#include <string>

#include <cmpi/CmpiBroker.h>
#include <cmpi/CmpiContext.h>
#include <cmpi/CmpiObjectPath.h>

#include "zeda/host/host.hpp"

namespace zeda::pelka::test {

zeda::host::Host& TestHost();

CmpiBroker Broker();
CmpiContext Context();
// A path in root/cimv2 with the class name `className` and no keys, owned by
// the test host.
CmpiObjectPath PathOf(const std::string& className);
// The characters of a CMPI string, or "<null>" for a null pointer.
std::string TextOf(const CMPIString* text);

// The program-data path this test process was started with.
const std::string& StartupProgramData();

}  // namespace zeda::pelka::test

#endif
