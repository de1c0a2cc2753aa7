// CmpiObjectPath: namespace, host, class name and keys of an object path.
#include "CmpiObjectPath.h"

#include "CmpiCall.h"

using cmpi_detail::callRc;
using cmpi_detail::callStatus;
using cmpi_detail::table;

namespace {
constexpr const char* kType = "CMPIObjectPath";
}

CmpiObjectPath::CmpiObjectPath(const CmpiString& nameSpace, const char* className)
    : CmpiObjectPath(nameSpace.charPtr(), className) {}

CmpiObjectPath::CmpiObjectPath(const char* nameSpace, const char* className) {
  const CMPIBroker* broker = cmpi_detail::requireCurrentBroker("a CmpiObjectPath");
  enc_ = callRc(cmpi_detail::factories(broker)->newObjectPath, "CMPIBrokerEncFT.newObjectPath",
                broker, nameSpace, className);
  owner_ = CmpiOwner::of(enc_);
}

CmpiString CmpiObjectPath::getNameSpace() const {
  return CmpiString(
      callRc(table(enc_, kType)->getNameSpace, "CMPIObjectPathFT.getNameSpace", enc_));
}

void CmpiObjectPath::setNameSpace(const char* nameSpace) {
  callStatus(table(enc_, kType)->setNameSpace, "CMPIObjectPathFT.setNameSpace", getEnc(),
             nameSpace);
}

CmpiString CmpiObjectPath::getHostname() const {
  return CmpiString(callRc(table(enc_, kType)->getHostname, "CMPIObjectPathFT.getHostname", enc_));
}

void CmpiObjectPath::setHostname(const char* hostname) {
  callStatus(table(enc_, kType)->setHostname, "CMPIObjectPathFT.setHostname", getEnc(), hostname);
}

CmpiString CmpiObjectPath::getClassName() const {
  return CmpiString(
      callRc(table(enc_, kType)->getClassName, "CMPIObjectPathFT.getClassName", enc_));
}

void CmpiObjectPath::setClassName(const char* className) {
  callStatus(table(enc_, kType)->setClassName, "CMPIObjectPathFT.setClassName", getEnc(),
             className);
}

CmpiData CmpiObjectPath::getKey(const char* name) const {
  return CmpiData(callRc(table(enc_, kType)->getKey, "CMPIObjectPathFT.getKey", enc_, name));
}

CmpiData CmpiObjectPath::getKey(unsigned int index, CmpiString* name) const {
  CMPIString* keyName = nullptr;
  const CMPIData data = callRc(table(enc_, kType)->getKeyAt, "CMPIObjectPathFT.getKeyAt", enc_,
                               static_cast<CMPICount>(index), name != nullptr ? &keyName : nullptr);
  if (name != nullptr) {
    *name = CmpiString(keyName);
  }
  return CmpiData(data);
}

unsigned int CmpiObjectPath::getKeyCount() const {
  return callRc(table(enc_, kType)->getKeyCount, "CMPIObjectPathFT.getKeyCount", enc_);
}

void CmpiObjectPath::setKey(const char* name, const CmpiData& value) {
  callStatus(table(enc_, kType)->addKey, "CMPIObjectPathFT.addKey", getEnc(), name,
             cmpi_detail::setterValue(value), value.getType());
}

CmpiString CmpiObjectPath::toString() const {
  return CmpiString(callRc(table(enc_, kType)->toString, "CMPIObjectPathFT.toString", enc_));
}
