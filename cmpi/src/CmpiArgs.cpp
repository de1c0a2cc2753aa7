// CmpiArgs: method arguments held by the object manager.
#include "CmpiArgs.h"

#include "CmpiCall.h"

using cmpi_detail::callRc;
using cmpi_detail::callStatus;
using cmpi_detail::table;

CmpiArgs CmpiArgs::create() {
  const CMPIBroker* broker = cmpi_detail::requireCurrentBroker("a CmpiArgs");
  const CMPIArgs* made =
      callRc(cmpi_detail::factories(broker)->newArgs, "CMPIBrokerEncFT.newArgs", broker);
  return CmpiArgs(made, CmpiOwner::of(made));
}

void CmpiArgs::setArg(const char* name, const CmpiData& value) {
  callStatus(table(enc_, "CMPIArgs")->addArg, "CMPIArgsFT.addArg", enc_, name,
             cmpi_detail::setterValue(value), value.getType());
  // sfcb keeps an instance given for a name already set by pointer.
  if (value.getType() == CMPI_instance) {
    value.owner_.handOver();
  }
}

CmpiData CmpiArgs::getArg(const char* name) const {
  return CmpiData(callRc(table(enc_, "CMPIArgs")->getArg, "CMPIArgsFT.getArg", enc_, name));
}

CmpiData CmpiArgs::getArg(unsigned int index, CmpiString* name) const {
  CMPIString* argName = nullptr;
  const CMPIData data = callRc(table(enc_, "CMPIArgs")->getArgAt, "CMPIArgsFT.getArgAt", enc_,
                               static_cast<CMPICount>(index), name != nullptr ? &argName : nullptr);
  if (name != nullptr) {
    *name = CmpiString(argName);
  }
  return CmpiData(data);
}

unsigned int CmpiArgs::getArgCount() const {
  return callRc(table(enc_, "CMPIArgs")->getArgCount, "CMPIArgsFT.getArgCount", enc_);
}
