// What one provider operation produced: the returned status, whether the
// provider called returnDone, and everything it handed to the result, in order.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "zeda/host/instance.hpp"
#include "zeda/host/object_path.hpp"
#include "zeda/host/value.hpp"

namespace zeda::host {

// A CMPIStatus read back into C++: code (CMPIrc) and the message when the
// provider set one.
struct Status {
  int code = 0;
  std::optional<std::string> message;
  bool ok() const { return code == 0; }
};

// One CMPIError handed to CMPIResult's returnError.
struct ReportedError {
  std::optional<std::string> owningEntity;
  std::optional<std::string> messageId;
  std::optional<std::string> message;
  int cimStatusCode = 0;
};

// One item handed to the result: returnInstance gives an Instance,
// returnObjectPath an ObjectPath, returnData a Value.
class ResultItem {
 public:
  explicit ResultItem(Instance i) : item_(std::move(i)) {}
  explicit ResultItem(ObjectPath p) : item_(std::move(p)) {}
  explicit ResultItem(Value v) : item_(std::move(v)) {}

  bool isInstance() const { return std::holds_alternative<Instance>(item_); }
  bool isPath() const { return std::holds_alternative<ObjectPath>(item_); }
  bool isValue() const { return std::holds_alternative<Value>(item_); }
  // Throw TypeMismatch when the item is of another kind.
  const Instance& instance() const;
  const ObjectPath& path() const;
  const Value& value() const;

 private:
  std::variant<Instance, ObjectPath, Value> item_;
};

struct Outcome {
  Status status;
  bool done = false;  // returnDone was called on the result
  std::vector<ResultItem> results;
  std::vector<ReportedError> errors;  // returnError calls, in order
  std::vector<NamedValue> outArgs;    // invokeMethod only: the output arguments

  int code() const { return status.code; }
  bool ok() const { return status.ok(); }
  // All results as instances / paths / values; throw TypeMismatch if any
  // result is of another kind.
  std::vector<Instance> instances() const;
  std::vector<ObjectPath> paths() const;
  std::vector<Value> values() const;
};

}  // namespace zeda::host
