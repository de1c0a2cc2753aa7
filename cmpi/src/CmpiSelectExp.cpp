// CmpiSelectExp: an indication filter's select expression.
#include "CmpiSelectExp.h"

#include "CmpiCall.h"

using cmpi_detail::callRc;
using cmpi_detail::table;

CmpiString CmpiSelectExp::getString() const {
  return CmpiString(
      callRc(table(enc_, "CMPISelectExp")->getString, "CMPISelectExpFT.getString", enc_));
}

bool CmpiSelectExp::evaluate(const CmpiInstance& instance) const {
  return callRc(table(enc_, "CMPISelectExp")->evaluate, "CMPISelectExpFT.evaluate", enc_,
                static_cast<const CMPIInstance*>(instance.getEnc())) != 0;
}
