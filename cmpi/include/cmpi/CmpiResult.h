// CmpiResult: where a provider hands its answers to the object manager.
#ifndef ZEDA_CMPI_CMPIRESULT_H
#define ZEDA_CMPI_CMPIRESULT_H

#include "CmpiData.h"
#include "CmpiInstance.h"
#include "CmpiObjectPath.h"

class CmpiResult {
 public:
  CmpiResult() = default;
  explicit CmpiResult(const CMPIResult* enc) : enc_(enc) {}
  // The result of createInstance: sfcb keeps the path returned there by
  // pointer and reads it after the provider call.
  static CmpiResult ofCreateInstance(const CMPIResult* enc);

  void returnData(const CmpiData& data);
  void returnData(const CmpiInstance& instance);
  void returnData(const CmpiObjectPath& path);
  void returnDone();
  CMPIResult* getEnc() const { return const_cast<CMPIResult*>(enc_); }

 private:
  const CMPIResult* enc_ = nullptr;
  bool keepsPaths_ = false;
};

#endif
