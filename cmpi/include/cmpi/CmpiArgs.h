// CmpiArgs: method arguments (name/value pairs).
#ifndef ZEDA_CMPI_CMPIARGS_H
#define ZEDA_CMPI_CMPIARGS_H

#include "CmpiData.h"
#include "CmpiString.h"

class CmpiArgs {
 public:
  CmpiArgs() = default;
  explicit CmpiArgs(const CMPIArgs* enc) : enc_(enc) {}
  // Creates an empty argument list through the broker of the current call.
  static CmpiArgs create();

  void setArg(const char* name, const CmpiData& value);
  CmpiData getArg(const char* name) const;
  CmpiData getArg(unsigned int index, CmpiString* name = nullptr) const;
  unsigned int getArgCount() const;
  CMPIArgs* getEnc() const { return const_cast<CMPIArgs*>(enc_); }

 private:
  const CMPIArgs* enc_ = nullptr;
};

#endif
