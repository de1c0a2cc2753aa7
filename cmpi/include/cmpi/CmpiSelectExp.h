// CmpiSelectExp: an indication filter's select expression.
#ifndef ZEDA_CMPI_CMPISELECTEXP_H
#define ZEDA_CMPI_CMPISELECTEXP_H

#include "CmpiInstance.h"

class CmpiSelectExp {
 public:
  CmpiSelectExp() = default;
  explicit CmpiSelectExp(const CMPISelectExp* enc) : enc_(enc) {}

  CmpiString getString() const;
  bool evaluate(const CmpiInstance& instance) const;
  bool isNull() const { return enc_ == nullptr; }
  CMPISelectExp* getEnc() const { return const_cast<CMPISelectExp*>(enc_); }

 private:
  const CMPISelectExp* enc_ = nullptr;
};

#endif
