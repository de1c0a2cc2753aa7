// The CMPI objects the framework tests borrow from the object manager that
// has the real module loaded (the module itself is not used here): its
// broker (newString, object paths) and its context.
#ifndef ZEDA_TESTS_PELKAPROVIDER_TESTHOST_H
#define ZEDA_TESTS_PELKAPROVIDER_TESTHOST_H

#include <string>

#include <cmpi/CmpiBroker.h>
#include <cmpi/CmpiContext.h>
#include <cmpi/CmpiObjectPath.h>

#include "CmpiText.h"
#include "ModuleHost.h"

namespace zeda::test {

CmpiBroker Broker();
CmpiContext Context();
// A path in kNamespace with the class name `className` and no keys, owned by
// the object manager.
CmpiObjectPath PathOf(const std::string& className);

// The program-data path this test process was started with.
const std::string& StartupProgramData();

}  // namespace zeda::test

#endif
