// The status a binding call throws, for the binding's unit tests.
#ifndef ZEDA_TESTS_CMPI_BINDING_THROWNSTATUS_H
#define ZEDA_TESTS_CMPI_BINDING_THROWNSTATUS_H

#include <string>

#include "CmpiStatus.h"

namespace zeda::test {

// Runs `call` and returns the status it throws (OK if it throws none).
template <class F>
CmpiStatus thrownBy(F call) {
  try {
    call();
  } catch (const CmpiStatus& s) {
    return s;
  }
  return CmpiStatus();
}

// The message of `s`, "" when it has none.
inline std::string messageOf(const CmpiStatus& s) { return s.hasMessage() ? s.msg() : ""; }

}  // namespace zeda::test

#endif  // ZEDA_TESTS_CMPI_BINDING_THROWNSTATUS_H
