// CmpiDateTime: creation and reading of object-manager date-time values.
#include "CmpiDateTime.h"

#include "CmpiCall.h"

using cmpi_detail::callRc;
using cmpi_detail::factories;
using cmpi_detail::table;

CmpiDateTime::CmpiDateTime(const char* text) {
  const CMPIBroker* broker = cmpi_detail::requireCurrentBroker("a CmpiDateTime");
  enc_ = callRc(factories(broker)->newDateTimeFromChars, "CMPIBrokerEncFT.newDateTimeFromChars",
                broker, text);
  owner_ = CmpiOwner::of(enc_);
}

CmpiDateTime::CmpiDateTime(CMPIUint64 binary, bool interval) {
  const CMPIBroker* broker = cmpi_detail::requireCurrentBroker("a CmpiDateTime");
  enc_ = callRc(factories(broker)->newDateTimeFromBinary, "CMPIBrokerEncFT.newDateTimeFromBinary",
                broker, binary, static_cast<CMPIBoolean>(interval ? 1 : 0));
  owner_ = CmpiOwner::of(enc_);
}

CmpiDateTime CmpiDateTime::now() {
  const CMPIBroker* broker = cmpi_detail::requireCurrentBroker("a CmpiDateTime");
  const CMPIDateTime* made =
      callRc(factories(broker)->newDateTime, "CMPIBrokerEncFT.newDateTime", broker);
  return CmpiDateTime(made, CmpiOwner::of(made));
}

CMPIUint64 CmpiDateTime::getDateTime() const {
  return callRc(table(enc_, "CMPIDateTime")->getBinaryFormat, "CMPIDateTimeFT.getBinaryFormat",
                enc_);
}

bool CmpiDateTime::isInterval() const {
  return callRc(table(enc_, "CMPIDateTime")->isInterval, "CMPIDateTimeFT.isInterval", enc_) != 0;
}

CmpiString CmpiDateTime::getStringFormat() const {
  return CmpiString(
      callRc(table(enc_, "CMPIDateTime")->getStringFormat, "CMPIDateTimeFT.getStringFormat", enc_));
}
