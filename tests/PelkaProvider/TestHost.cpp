#include "TestHost.h"

#include "Names.h"

namespace zeda::test {

CmpiBroker Broker() { return CmpiBroker(ModuleHost().broker()); }

CmpiContext Context() { return CmpiContext(ModuleHost().context()); }

CmpiObjectPath PathOf(const std::string& className) {
  return CmpiObjectPath(ModuleHost().makeObjectPath(zeda::host::ObjectPath(kNamespace, className)));
}

}  // namespace zeda::test
