// CmpiArray: element access of an object-manager array.
#include "CmpiArray.h"

#include "CmpiCall.h"

using cmpi_detail::callRc;
using cmpi_detail::callStatus;
using cmpi_detail::table;

CmpiArray::CmpiArray(CMPICount size, CMPIType elementType) {
  const CMPIBroker* broker = cmpi_detail::requireCurrentBroker("a CmpiArray");
  enc_ = callRc(cmpi_detail::factories(broker)->newArray, "CMPIBrokerEncFT.newArray", broker, size,
                elementType);
  owner_ = CmpiOwner::of(enc_);
}

CMPICount CmpiArray::size() const {
  return callRc(table(enc_, "CMPIArray")->getSize, "CMPIArrayFT.getSize", enc_);
}

CMPIType CmpiArray::getSimpleType() const {
  return callRc(table(enc_, "CMPIArray")->getSimpleType, "CMPIArrayFT.getSimpleType", enc_);
}

CmpiData CmpiArray::getElementAt(CMPICount index) const {
  return CmpiData(
      callRc(table(enc_, "CMPIArray")->getElementAt, "CMPIArrayFT.getElementAt", enc_, index));
}

void CmpiArray::setElementAt(CMPICount index, const CmpiData& value) {
  callStatus(table(enc_, "CMPIArray")->setElementAt, "CMPIArrayFT.setElementAt", getEnc(), index,
             cmpi_detail::setterValue(value), value.getType());
  // Both sfcb and OpenPegasus keep the pointer to an encapsulated element
  // and read it when the array is used: the element must outlive this
  // owner, so the object manager frees it with the call.
  value.owner_.handOver();
}
