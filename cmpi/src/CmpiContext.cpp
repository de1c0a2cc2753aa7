// CmpiContext: entries of the invocation context.
#include "CmpiContext.h"

#include "CmpiCall.h"

using cmpi_detail::callRc;
using cmpi_detail::callStatus;
using cmpi_detail::table;

namespace {
constexpr const char* kType = "CMPIContext";
}

CmpiData CmpiContext::getEntry(const char* name) const {
  return CmpiData(callRc(table(enc_, kType)->getEntry, "CMPIContextFT.getEntry", enc_, name));
}

CmpiData CmpiContext::getEntry(unsigned int index, CmpiString* name) const {
  CMPIString* entryName = nullptr;
  const CMPIData data =
      callRc(table(enc_, kType)->getEntryAt, "CMPIContextFT.getEntryAt", enc_,
             static_cast<CMPICount>(index), name != nullptr ? &entryName : nullptr);
  if (name != nullptr) {
    *name = CmpiString(entryName);
  }
  return CmpiData(data);
}

unsigned int CmpiContext::getEntryCount() const {
  return callRc(table(enc_, kType)->getEntryCount, "CMPIContextFT.getEntryCount", enc_);
}

void CmpiContext::setEntry(const char* name, const CmpiData& value) {
  callStatus(table(enc_, kType)->addEntry, "CMPIContextFT.addEntry", enc_, name,
             cmpi_detail::setterValue(value), value.getType());
}
