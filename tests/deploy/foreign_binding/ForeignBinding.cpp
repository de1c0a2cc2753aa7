// A foreign libcmpiCppImpl.so: the name of our C++ binding and the mangled
// names of binding functions the module calls, as an object manager's own
// binding library has them, but none of our code. Each function reports
// itself and aborts, so a module that binds any of them to this library
// instead of its own copy fails loudly.
#include <cmpi/CmpiIndicationMI.h>
#include <cmpi/CmpiInstance.h>
#include <cmpi/CmpiObjectPath.h>
#include <cmpi/CmpiResult.h>
#include <cmpi/CmpiString.h>

#include <cstdio>
#include <cstdlib>

namespace {

[[noreturn]] void Foreign(const char* function) {
  std::fprintf(stderr, "foreign libcmpiCppImpl.so: %s called\n", function);
  std::abort();
}

}  // namespace

CmpiObjectPath::CmpiObjectPath(const char*, const char*) { Foreign("CmpiObjectPath(ns, cn)"); }
CmpiString CmpiObjectPath::getClassName() const { Foreign("CmpiObjectPath::getClassName"); }
CmpiData CmpiObjectPath::getKey(const char*) const { Foreign("CmpiObjectPath::getKey"); }
void CmpiObjectPath::setKey(const char*, const CmpiData&) { Foreign("CmpiObjectPath::setKey"); }
const char* CmpiString::charPtr() const { Foreign("CmpiString::charPtr"); }
CmpiInstance::CmpiInstance(const CmpiObjectPath&) { Foreign("CmpiInstance(path)"); }
void CmpiInstance::setProperty(const char*, const CmpiData&) {
  Foreign("CmpiInstance::setProperty");
}
void CmpiResult::returnData(const CmpiInstance&) { Foreign("CmpiResult::returnData"); }
void CmpiResult::returnDone() { Foreign("CmpiResult::returnDone"); }
CmpiStatus CmpiIndicationMI::activateFilter(const CmpiContext&, const CmpiSelectExp&, const char*,
                                            const CmpiObjectPath&, bool) {
  Foreign("CmpiIndicationMI::activateFilter");
}
