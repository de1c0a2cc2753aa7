// CmpiStatus: a CMPI return code with an optional message, as the C++ binding
// hands it around. It is thrown by value and caught by reference: the binding's
// wrappers throw it when the object manager refuses a call, and providers may
// throw it to answer with a code of their own.
#ifndef ZEDA_CMPI_CMPISTATUS_H
#define ZEDA_CMPI_CMPISTATUS_H

#include <optional>
#include <string>

#include "cmpidt.h"

class CmpiStatus {
 public:
  CmpiStatus() = default;
  explicit CmpiStatus(CMPIrc rc) : rc_(rc) {}
  // A null message means "no message", which is not the same as an empty one.
  CmpiStatus(CMPIrc rc, const char* msg);
  CmpiStatus(CMPIrc rc, const std::string& msg) : rc_(rc), msg_(msg) {}
  // Reads code and message text of a C status; the C string is not kept.
  explicit CmpiStatus(const CMPIStatus& status);

  CMPIrc rc() const { return rc_; }
  // The message characters, or nullptr when the status carries no message.
  const char* msg() const { return msg_ ? msg_->c_str() : nullptr; }
  bool hasMessage() const { return msg_.has_value(); }

  // The C form for the object manager; the message text, if any, becomes a
  // CMPIString made by the broker's newString (null when the broker cannot).
  CMPIStatus toCMPIStatus(const CMPIBroker* broker) const;

 private:
  CMPIrc rc_ = CMPI_RC_OK;
  std::optional<std::string> msg_;
};

#endif
