// The operations the concurrency test issues, and what one answer holds in a
// form that compares across versions of the inventory.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "zeda/host/host.hpp"

namespace zeda::concurrency_test {

enum class Kind {
  EnumerateInstances,
  GetInstance,
  Associators,
  AssociatorNames,
  References,
  ReferenceNames
};

struct Operation {
  Kind kind = Kind::EnumerateInstances;
  std::string provider;
  host::ObjectPath path;
  host::OptString assocClass;  // association operations: the class, which picks the provider
  std::string label() const;
};

host::Outcome perform(host::Host& h, const Operation& op);

// An answer reduced to what must not change between versions (each result
// without the properties that carry the version) and the versions it shows.
struct Answer {
  int code = 0;
  std::vector<std::string> identities;  // one per result, in order
  std::set<long> versions;              // distinct versions carried by the results
  std::string problem;                  // a result the test cannot read
};

Answer summarize(const host::Outcome& out);

// Every operation on the module's classes from the answers of version 0:
// enumerations of every class with an instance MI, getInstance of every
// extent, and associators / references (names too) of every association
// class from up to two endpoints of each class that association instances
// refer to.
std::vector<Operation> everyOperation(host::Host& h);

// Calls once every operation the module does not support (enumerating
// names, creating, modifying, deleting, queries) on every instance class:
// the module installs its default answers for those lazily, without a lock.
void warmUpDefaults(host::Host& h);

}  // namespace zeda::concurrency_test
