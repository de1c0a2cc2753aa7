// One operation for a provider, as the host API and the broker's up-calls
// describe it.
#pragma once

#include <string>
#include <vector>

#include "zeda/host/host.hpp"

namespace zeda::host::detail {

enum class Op {
  EnumerateInstanceNames,
  EnumerateInstances,
  GetInstance,
  CreateInstance,
  ModifyInstance,
  DeleteInstance,
  ExecQuery,
  Associators,
  AssociatorNames,
  References,
  ReferenceNames,
  InvokeMethod,
  AuthorizeFilter,
  MustPoll,
  ActivateFilter,
  DeActivateFilter,
  EnableIndications,
  DisableIndications,
};

MIKind kindOf(Op op);

struct Request {
  Op op = Op::EnumerateInstances;
  ObjectPath path;
  PropertyList properties;
  OptString assocClass;
  OptString resultClass;
  OptString role;
  OptString resultRole;
  Instance instance;           // create / modify
  std::string query;           // execQuery, indication filters
  std::string language;        // execQuery
  std::string method;          // invokeMethod
  std::vector<NamedValue> in;  // invokeMethod
  std::string className;       // indication operations
  std::string owner;           // authorizeFilter
  bool activation = false;     // first / last activation
};

}  // namespace zeda::host::detail
