// Class names and requests of the end-to-end tests of the two pool
// associations.
#ifndef ZEDA_TESTS_PROVIDERS_POOLS_POOLFIXTURES_H
#define ZEDA_TESTS_PROVIDERS_POOLS_POOLFIXTURES_H

#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Fixtures.h"

namespace zeda::test {

inline constexpr char kConcrete[] = "ZEDA_ConcreteComponent_Primordial";
inline constexpr char kAssociated[] = "ZEDA_AssociatedComponentExtent_Primordial";
inline constexpr char kPoolClass[] = "ZEDA_StoragePool_Primordial";
inline constexpr char kExtentClass[] = "ZEDA_StorageExtent_Disk";

// An associators request to `associationClass`, addressed to that class.
inline zeda::host::Outcome Associators(const std::string& associationClass,
                                       const zeda::host::ObjectPath& source,
                                       const zeda::host::PropertyList& properties = std::nullopt) {
  return ModuleHost().associators(Provider(associationClass), source, associationClass,
                                  std::nullopt, std::nullopt, std::nullopt, properties);
}

inline zeda::host::Outcome References(const std::string& associationClass,
                                      const zeda::host::ObjectPath& source) {
  return ModuleHost().references(Provider(associationClass), source, std::nullopt, std::nullopt);
}

// DeviceID of each instance, in answer order.
inline std::vector<std::string> DeviceIds(const zeda::host::Outcome& outcome) {
  std::vector<std::string> ids;
  for (const zeda::host::Instance& instance : outcome.instances()) {
    ids.push_back(instance.property("DeviceID").str());
  }
  return ids;
}

// A refused walk: the error status with `message`, no result, no returnDone.
inline void ExpectFailure(const zeda::host::Outcome& outcome, const std::string& message) {
  EXPECT_EQ(outcome.code(), CMPI_RC_ERROR);
  EXPECT_EQ(outcome.status.message, message);
  EXPECT_FALSE(outcome.done);
  EXPECT_TRUE(outcome.results.empty());
}

}  // namespace zeda::test

#endif
