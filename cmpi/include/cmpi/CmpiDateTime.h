// CmpiDateTime: a non-owning view of an object-manager date-time value.
#ifndef ZEDA_CMPI_CMPIDATETIME_H
#define ZEDA_CMPI_CMPIDATETIME_H

#include "CmpiString.h"

class CmpiDateTime {
 public:
  CmpiDateTime() = default;
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
  const CMPIDateTime* enc_ = nullptr;
};

#endif
