// CmpiDateTime: an object-manager date-time value: a view of one the object
// manager handed in, or the owner of one made through the broker (see
// CmpiOwner.h; every constructor and now() make one, the last copy releases it).
#ifndef ZEDA_CMPI_CMPIDATETIME_H
#define ZEDA_CMPI_CMPIDATETIME_H

#include <utility>

#include "CmpiOwner.h"
#include "CmpiString.h"

class CmpiDateTime {
 public:
  CmpiDateTime() = default;
  // A view: the value is never released by the binding.
  explicit CmpiDateTime(const CMPIDateTime* enc) : enc_(enc) {}
  // CIM text form "yyyymmddhhmmss.mmmmmmsutc" or an interval.
  explicit CmpiDateTime(const char* text);
  // Microseconds since the epoch, or the length of an interval.
  CmpiDateTime(CMPIUint64 binary, bool interval);
  static CmpiDateTime now();

  CMPIUint64 getDateTime() const;
  bool isInterval() const;
  CmpiString getStringFormat() const;
  CMPIDateTime* getEnc() const { return const_cast<CMPIDateTime*>(enc_); }

 private:
  friend class CmpiData;
  CmpiDateTime(const CMPIDateTime* enc, CmpiOwner owner) : enc_(enc), owner_(std::move(owner)) {}

  const CMPIDateTime* enc_ = nullptr;
  CmpiOwner owner_;
};

#endif
