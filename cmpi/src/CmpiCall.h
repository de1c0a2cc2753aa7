// Internal helpers of the C++ binding: every call into an object-manager
// function table goes through these, so that a null handle, a missing table
// entry and a failure status are all turned into a thrown CmpiStatus the same
// way. Not installed; only the binding's sources include it.
#ifndef ZEDA_CMPI_SRC_CMPICALL_H
#define ZEDA_CMPI_SRC_CMPICALL_H

#include <string>

#include "CmpiData.h"
#include "CmpiStatus.h"
#include "cmpift.h"

namespace cmpi_detail {

// The characters of an object-manager string, or null when the string, its
// table or its getCharPtr entry is missing or the call fails. Never throws:
// used while converting statuses, where a second failure must not escape.
const char* charsOrNull(const CMPIString* s) noexcept;

// The C status for the object manager, message made through the broker's
// newString when there is text and the broker can make strings. Never throws.
CMPIStatus makeCStatus(const CMPIBroker* broker, CMPIrc rc, const char* msg) noexcept;

// Throws the object manager's status when its code is not CMPI_RC_OK.
void check(const CMPIStatus& status);

// Readable name of a type code ("uint16", "string[]", ...) for messages.
std::string typeName(CMPIType type);

// The value pointer to hand to a CMPI setter for `data`: null for a null
// value (the CMPI convention for "set to null"), the characters themselves
// for CMPI_chars, the value union otherwise.
const CMPIValue* setterValue(const CmpiData& data);

// The broker installed for the call in progress; throws CMPI_RC_ERR_FAILED
// naming `what` when there is none.
const CMPIBroker* requireCurrentBroker(const char* what);

// The broker's factory table (eft) and up-call table (bft), after checking
// the handle; throw CMPI_RC_ERR_INVALID_HANDLE when either is missing.
const CMPIBrokerEncFT* factories(const CMPIBroker* broker);
const CMPIBrokerFT* upcalls(const CMPIBroker* broker);

// The function table of an encapsulated object, after checking the handle.
template <class Enc>
auto table(const Enc* enc, const char* typeName) -> decltype(enc->ft) {
  if (enc == nullptr) {
    throw CmpiStatus(CMPI_RC_ERR_INVALID_HANDLE, std::string("null ") + typeName + " handle");
  }
  if (enc->ft == nullptr) {
    throw CmpiStatus(CMPI_RC_ERR_INVALID_HANDLE,
                     std::string(typeName) + " handle without function table");
  }
  return enc->ft;
}

// A function-table entry, or CMPI_RC_ERR_NOT_SUPPORTED when the object
// manager left it empty.
template <class Fn>
Fn entry(Fn fn, const char* name) {
  if (fn == nullptr) {
    throw CmpiStatus(CMPI_RC_ERR_NOT_SUPPORTED, std::string(name) + " is not supported");
  }
  return fn;
}

// Calls an entry whose last parameter is the CMPIStatus* out-parameter and
// throws the status it reports.
template <class Fn, class... Args>
auto callRc(Fn fn, const char* name, Args... args) {
  CMPIStatus rc{CMPI_RC_OK, nullptr};
  auto result = entry(fn, name)(args..., &rc);
  check(rc);
  return result;
}

// Calls an entry that returns its CMPIStatus and throws it when it fails.
template <class Fn, class... Args>
void callStatus(Fn fn, const char* name, Args... args) {
  check(entry(fn, name)(args...));
}

}  // namespace cmpi_detail

#endif
