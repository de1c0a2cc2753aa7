// CmpiResult: handing answers to the object manager.
#include "CmpiResult.h"

#include "CmpiCall.h"

using cmpi_detail::callStatus;
using cmpi_detail::table;

namespace {
constexpr const char* kType = "CMPIResult";
}

CmpiResult CmpiResult::ofCreateInstance(const CMPIResult* enc) {
  CmpiResult result(enc);
  result.keepsPaths_ = true;
  return result;
}

void CmpiResult::returnData(const CmpiData& data) {
  callStatus(table(enc_, kType)->returnData, "CMPIResultFT.returnData", enc_,
             cmpi_detail::setterValue(data), data.getType());
  // sfcb collects plain values in an array of its own, by pointer.
  data.owner_.handOver();
}

void CmpiResult::returnData(const CmpiInstance& instance) {
  const auto* ft = table(enc_, kType);
  if (instance.isNull()) {
    throw CmpiStatus(CMPI_RC_ERR_INVALID_HANDLE, "null CMPIInstance handle returned as a result");
  }
  callStatus(ft->returnInstance, "CMPIResultFT.returnInstance", enc_,
             static_cast<const CMPIInstance*>(instance.getEnc()));
}

void CmpiResult::returnData(const CmpiObjectPath& path) {
  const auto* ft = table(enc_, kType);
  if (path.isNull()) {
    throw CmpiStatus(CMPI_RC_ERR_INVALID_HANDLE, "null CMPIObjectPath handle returned as a result");
  }
  callStatus(ft->returnObjectPath, "CMPIResultFT.returnObjectPath", enc_,
             static_cast<const CMPIObjectPath*>(path.getEnc()));
  if (keepsPaths_) {
    path.owner_.handOver();
  }
}

void CmpiResult::returnDone() {
  callStatus(table(enc_, kType)->returnDone, "CMPIResultFT.returnDone", enc_);
}
