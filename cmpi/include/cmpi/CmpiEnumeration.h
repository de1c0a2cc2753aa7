// CmpiEnumeration: results of a broker up-call, read one by one.
#ifndef ZEDA_CMPI_CMPIENUMERATION_H
#define ZEDA_CMPI_CMPIENUMERATION_H

#include "CmpiArray.h"

class CmpiEnumeration {
 public:
  CmpiEnumeration() = default;
  explicit CmpiEnumeration(const CMPIEnumeration* enc) : enc_(enc) {}

  bool hasNext() const;
  CmpiData getNext();
  CmpiArray toArray() const;
  CMPIEnumeration* getEnc() const { return const_cast<CMPIEnumeration*>(enc_); }

 private:
  const CMPIEnumeration* enc_ = nullptr;
};

#endif
