// CmpiEnumeration: reading the results of a broker up-call.
#include "CmpiEnumeration.h"

#include "CmpiCall.h"

using cmpi_detail::callRc;
using cmpi_detail::table;

bool CmpiEnumeration::hasNext() const {
  return callRc(table(enc_, "CMPIEnumeration")->hasNext, "CMPIEnumerationFT.hasNext", enc_) != 0;
}

CmpiData CmpiEnumeration::getNext() {
  return CmpiData(
      callRc(table(enc_, "CMPIEnumeration")->getNext, "CMPIEnumerationFT.getNext", enc_));
}

CmpiArray CmpiEnumeration::toArray() const {
  return CmpiArray(
      callRc(table(enc_, "CMPIEnumeration")->toArray, "CMPIEnumerationFT.toArray", enc_));
}
