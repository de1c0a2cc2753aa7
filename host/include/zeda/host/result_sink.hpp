// Receives the results of one operation one by one, as the provider hands
// them to the broker, instead of collecting them in the Outcome: memory stays
// flat however many results an operation has.
#pragma once

#include "zeda/host/instance.hpp"
#include "zeda/host/object_path.hpp"
#include "zeda/host/value.hpp"

namespace zeda::host {

// The references are valid only during the call: a sink that keeps a result
// copies it. The calls of one operation never overlap. An exception thrown by
// the sink fails that return call (CMPI_RC_ERR_FAILED to the provider).
class ResultSink {
 public:
  virtual ~ResultSink() = default;
  virtual void instance(const Instance& i) = 0;  // returnInstance
  virtual void path(const ObjectPath& p) = 0;    // returnObjectPath
  virtual void value(const Value& v) = 0;        // returnData
};

}  // namespace zeda::host
