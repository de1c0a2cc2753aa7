// CmpiArgs: method arguments (name/value pairs).
#ifndef ZEDA_CMPI_CMPIARGS_H
#define ZEDA_CMPI_CMPIARGS_H

#include <utility>

#include "CmpiData.h"
#include "CmpiOwner.h"
#include "CmpiString.h"

class CmpiArgs {
 public:
  CmpiArgs() = default;
  // A view: the list is never released by the binding.
  explicit CmpiArgs(const CMPIArgs* enc) : enc_(enc) {}
  // Creates an empty argument list through the broker of the current call;
  // the last copy releases it (see CmpiOwner.h).
  static CmpiArgs create();

  void setArg(const char* name, const CmpiData& value);
  CmpiData getArg(const char* name) const;
  CmpiData getArg(unsigned int index, CmpiString* name = nullptr) const;
  unsigned int getArgCount() const;
  CMPIArgs* getEnc() const { return const_cast<CMPIArgs*>(enc_); }

 private:
  CmpiArgs(const CMPIArgs* enc, CmpiOwner owner) : enc_(enc), owner_(std::move(owner)) {}

  const CMPIArgs* enc_ = nullptr;
  CmpiOwner owner_;
};

#endif
