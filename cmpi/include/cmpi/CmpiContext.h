// CmpiContext: the invocation context of one object-manager call.
#ifndef ZEDA_CMPI_CMPICONTEXT_H
#define ZEDA_CMPI_CMPICONTEXT_H

#include "CmpiData.h"
#include "CmpiString.h"

class CmpiContext {
 public:
  CmpiContext() = default;
  explicit CmpiContext(const CMPIContext* enc) : enc_(enc) {}

  CmpiData getEntry(const char* name) const;
  CmpiData getEntry(unsigned int index, CmpiString* name = nullptr) const;
  unsigned int getEntryCount() const;
  void setEntry(const char* name, const CmpiData& value);
  CMPIContext* getEnc() const { return const_cast<CMPIContext*>(enc_); }

 private:
  const CMPIContext* enc_ = nullptr;
};

#endif
