// CmpiString: characters of an object-manager string.
#include "CmpiString.h"

#include <strings.h>

#include <cstring>

#include "CmpiCall.h"

using cmpi_detail::callRc;
using cmpi_detail::table;

CmpiString::CmpiString(const char* text) {
  // A null text stays a null string: there is nothing to make.
  if (text == nullptr) {
    return;
  }
  const CMPIBroker* broker = cmpi_detail::requireCurrentBroker("a CmpiString");
  enc_ =
      callRc(cmpi_detail::factories(broker)->newString, "CMPIBrokerEncFT.newString", broker, text);
  owner_ = CmpiOwner::of(enc_);
}

const char* CmpiString::charPtr() const {
  if (enc_ == nullptr) {
    return nullptr;
  }
  return callRc(table(enc_, "CMPIString")->getCharPtr, "CMPIStringFT.getCharPtr", enc_);
}

bool CmpiString::equals(const char* other) const {
  const char* mine = charPtr();
  if (mine == nullptr || other == nullptr) {
    return mine == other;
  }
  return std::strcmp(mine, other) == 0;
}

bool CmpiString::equalsIgnoreCase(const char* other) const {
  const char* mine = charPtr();
  if (mine == nullptr || other == nullptr) {
    return mine == other;
  }
  return strcasecmp(mine, other) == 0;
}
