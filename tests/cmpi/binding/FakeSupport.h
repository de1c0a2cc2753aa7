// Internal helpers shared by the fake object manager's sources.
#ifndef ZEDA_TESTS_CMPI_BINDING_FAKESUPPORT_H
#define ZEDA_TESTS_CMPI_BINDING_FAKESUPPORT_H

#include <string>

#include "FakeBroker.h"

namespace zeda::test {

namespace fake {

CMPIStatus ok();
CMPIStatus failure(Broker* b, CMPIrc rc, const std::string& msg);
// Writes `status` to the caller's out-parameter unless it is null.
void report(CMPIStatus* rc, CMPIStatus status);
CMPIData makeData(CMPIType type, CMPIValueState state);
// A value as the object manager keeps it: characters become a string.
CMPIData stored(Broker* b, const CMPIValue* value, CMPIType type);
// Fills the function tables of the encapsulated objects (all but the broker's).
void fillObjectTables(Broker& b);
// toString of an object path, also used by the broker's toString service.
CMPIString* pathToString(const CMPIObjectPath* p, CMPIStatus* rc);

}  // namespace fake

}  // namespace zeda::test

#endif
