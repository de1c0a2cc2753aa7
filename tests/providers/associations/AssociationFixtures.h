// Expected answers shared by the association class tests.
#ifndef ZEDA_TESTS_PROVIDERS_ASSOCIATIONS_ASSOCIATIONFIXTURES_H
#define ZEDA_TESTS_PROVIDERS_ASSOCIATIONS_ASSOCIATIONFIXTURES_H

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Fixtures.h"

namespace zeda::test {

using zeda::host::Instance;
using zeda::host::NamedValue;
using zeda::host::ObjectPath;
using zeda::host::Outcome;
using zeda::host::Value;

// Source lines of the failure wrapper's log lines per operation.
inline constexpr int kAssociatorsLine = 129;
inline constexpr int kReferencesLine = 151;

// An association instance: a path without keys, exactly two references.
inline Instance Association(const std::string& className, const std::string& firstRole,
                            const ObjectPath& first, const std::string& secondRole,
                            const ObjectPath& second, const std::string& ns = kNamespace) {
  return Instance(ObjectPath(ns, className),
                  {{firstRole, Value::reference(first)}, {secondRole, Value::reference(second)}});
}

// A drive instance with the twelve drive properties in their order.
struct DriveValues {
  std::string sccn, systemName, ccn, deviceId, name;
  std::uint16_t healthState, operationalStatus, interconnectType, diskType;
  std::uint32_t rpm;
};

inline Instance DriveInstance(const std::string& className, const DriveValues& v,
                              const std::string& ns = kNamespace) {
  return Instance(ObjectPath(ns, className),
                  {{"SystemCreationClassName", Value::string(v.sccn)},
                   {"SystemName", Value::string(v.systemName)},
                   {"CreationClassName", Value::string(v.ccn)},
                   {"DeviceID", Value::string(v.deviceId)},
                   {"Name", Value::string(v.name)},
                   {"EnabledState", Value::uint16(kEnabledStateEnabled)},
                   {"HealthState", Value::uint16(v.healthState)},
                   {"OperationalStatus", Value::uint16s({v.operationalStatus})},
                   {"InterconnectType", Value::uint16(v.interconnectType)},
                   {"DiskType", Value::uint16(v.diskType)},
                   {"RPM", Value::uint32(v.rpm)},
                   {"Description", Value::string("ZEDA_DiskDrive")}});
}

// The drive-shaped placeholder: "ZEDA_" keys, every number 0.
inline Instance PlaceholderDrive(const std::string& className, const std::string& name,
                                 const std::string& ns = kNamespace) {
  return DriveInstance(className,
                       {"ZEDA_SystemCreationClassName", "ZEDA_SystemName", "ZEDA_CreationClassName",
                        "ZEDA_DeviceID", name, 0, 0, 0, 0, 0},
                       ns);
}

// An extent instance with the eleven extent properties in their order.
struct ExtentValues {
  std::string sccn, systemName, ccn, deviceId;
  std::uint16_t extentStatus;
  std::uint64_t numberOfBlocks, consumableBlocks;
  std::uint16_t healthState, operationalStatus;
};

inline Instance ExtentInstance(const ExtentValues& v, const std::string& ns = kNamespace) {
  return Instance(ObjectPath(ns, "ZEDA_StorageExtent_Disk"),
                  {{"SystemCreationClassName", Value::string(v.sccn)},
                   {"SystemName", Value::string(v.systemName)},
                   {"CreationClassName", Value::string(v.ccn)},
                   {"DeviceID", Value::string(v.deviceId)},
                   {"ExtentStatus", Value::uint16s({v.extentStatus})},
                   {"NumberOfBlocks", Value::uint64(v.numberOfBlocks)},
                   {"ConsumableBlocks", Value::uint64(v.consumableBlocks)},
                   {"BlockSize", Value::uint64(512)},
                   {"HealthState", Value::uint16(v.healthState)},
                   {"OperationalStatus", Value::uint16s({v.operationalStatus})},
                   {"ExtentDiscriminator", Value::strings({"SNIA:Pool Component"})}});
}

// The placeholder computer system, unfiltered.
inline Instance PlaceholderSystem(const std::string& ns = kNamespace) {
  return Instance(ObjectPath(ns, "ZEDA_ComputerSystem"),
                  {{"CreationClassName", Value::string("ZEDA_ComputerSystem")},
                   {"Name", Value::string("ZEDAName")},
                   {"NameFormat", Value::string("Other")},
                   {"ElementName", Value::string("ZEDAElementName")},
                   {"Caption", Value::string("ZEDA_ComputerSystem")},
                   {"Description", Value::string("ZEDA_ComputerSystem")},
                   {"OperationalStatus", Value::uint16s({kOperationalStatusOk})},
                   {"Dedicated", Value::uint16s({3, 15, 16, 21, 24, 25})},
                   {"HealthState", Value::uint16(kHealthOk)}});
}

// The result of an operation that answered OK with exactly these instances.
inline void ExpectInstances(const Outcome& outcome, const std::vector<Instance>& expected,
                            bool done = true) {
  EXPECT_EQ(outcome.code(), CMPI_RC_OK) << outcome.status.message.value_or("");
  EXPECT_EQ(outcome.done, done);
  ASSERT_EQ(outcome.results.size(), expected.size());
  const std::vector<Instance> got = outcome.instances();
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(got[i], expected[i]) << "result " << i;
    EXPECT_EQ(PropertyNames(got[i]), PropertyNames(expected[i])) << "result " << i;
    EXPECT_EQ(PropertyTypes(got[i]), PropertyTypes(expected[i])) << "result " << i;
  }
}

// OK, nothing handed over, and returnDone called or not as stated.
inline void ExpectEmpty(const Outcome& outcome, bool done) {
  EXPECT_EQ(outcome.code(), CMPI_RC_OK) << outcome.status.message.value_or("");
  EXPECT_EQ(outcome.done, done);
  EXPECT_TRUE(outcome.results.empty());
}

// A failed operation: code, message, nothing handed over, no returnDone.
inline void ExpectFailure(const Outcome& outcome, int code, const std::string& message) {
  EXPECT_EQ(outcome.code(), code);
  EXPECT_EQ(outcome.status.message.value_or("<none>"), message);
  EXPECT_TRUE(outcome.results.empty());
  EXPECT_FALSE(outcome.done);
}

}  // namespace zeda::test

#endif
