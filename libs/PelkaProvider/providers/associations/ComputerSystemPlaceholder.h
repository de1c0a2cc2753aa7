// The fixed ZEDA_ComputerSystem that the system-device associations answer
// instead of a looked-up system. Its string values are fixed words, not
// inventory data.
#ifndef ZEDA_PELKA_COMPUTERSYSTEMPLACEHOLDER_H
#define ZEDA_PELKA_COMPUTERSYSTEMPLACEHOLDER_H

#include <string>

#include <cmpi/CmpiInstance.h>

namespace zeda::pelka {

// An instance on a path holding only the namespace and the class name, with
// in this order: CreationClassName (the class name), Name "ZEDAName",
// NameFormat "Other", ElementName "ZEDAElementName", Caption and Description
// (the class name again), OperationalStatus {2}, Dedicated
// {3, 15, 16, 21, 24, 25}, HealthState 5.
// With a non-null `properties` list the instance first gets a property filter
// of that list and the system's nine key-like names, so properties outside
// both are dropped. A null list means no filter.
CmpiInstance MakePlaceholderComputerSystemInstance(const std::string& nameSpace,
                                                   const char** properties);

}  // namespace zeda::pelka

#endif
