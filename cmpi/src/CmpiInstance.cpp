// CmpiInstance: properties and object path of an object-manager instance.
#include "CmpiInstance.h"

#include "CmpiCall.h"

using cmpi_detail::callRc;
using cmpi_detail::callStatus;
using cmpi_detail::table;

namespace {
constexpr const char* kType = "CMPIInstance";
}

CmpiInstance::CmpiInstance(const CmpiObjectPath& path) {
  const CMPIBroker* broker = cmpi_detail::requireCurrentBroker("a CmpiInstance");
  if (path.isNull()) {
    throw CmpiStatus(CMPI_RC_ERR_INVALID_HANDLE, "null CMPIObjectPath handle for a new instance");
  }
  enc_ = callRc(cmpi_detail::factories(broker)->newInstance, "CMPIBrokerEncFT.newInstance", broker,
                static_cast<const CMPIObjectPath*>(path.getEnc()));
  owner_ = CmpiOwner::of(enc_);
}

CmpiData CmpiInstance::getProperty(const char* name) const {
  return CmpiData(
      callRc(table(enc_, kType)->getProperty, "CMPIInstanceFT.getProperty", enc_, name));
}

CmpiData CmpiInstance::getProperty(unsigned int index, CmpiString* name) const {
  CMPIString* propertyName = nullptr;
  const CMPIData data =
      callRc(table(enc_, kType)->getPropertyAt, "CMPIInstanceFT.getPropertyAt", enc_,
             static_cast<CMPICount>(index), name != nullptr ? &propertyName : nullptr);
  if (name != nullptr) {
    *name = CmpiString(propertyName);
  }
  return CmpiData(data);
}

unsigned int CmpiInstance::getPropertyCount() const {
  return callRc(table(enc_, kType)->getPropertyCount, "CMPIInstanceFT.getPropertyCount", enc_);
}

void CmpiInstance::setProperty(const char* name, const CmpiData& value) {
  callStatus(table(enc_, kType)->setProperty, "CMPIInstanceFT.setProperty", enc_, name,
             cmpi_detail::setterValue(value), value.getType());
}

CmpiObjectPath CmpiInstance::getObjectPath() const {
  return CmpiObjectPath(
      callRc(table(enc_, kType)->getObjectPath, "CMPIInstanceFT.getObjectPath", enc_));
}

void CmpiInstance::setObjectPath(const CmpiObjectPath& path) {
  callStatus(table(enc_, kType)->setObjectPath, "CMPIInstanceFT.setObjectPath", getEnc(),
             static_cast<const CMPIObjectPath*>(path.getEnc()));
}

void CmpiInstance::setPropertyFilter(const char** properties, const char** keys) {
  callStatus(table(enc_, kType)->setPropertyFilter, "CMPIInstanceFT.setPropertyFilter", getEnc(),
             properties, keys);
}
