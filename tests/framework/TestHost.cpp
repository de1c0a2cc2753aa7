#include "TestHost.h"

#include <memory>

namespace zeda::pelka::test {

zeda::host::Host& TestHost() {
  static const std::unique_ptr<zeda::host::Host> host =
      std::make_unique<zeda::host::Host>(ZEDA_MODULE_PATH);
  return *host;
}

CmpiBroker Broker() { return CmpiBroker(TestHost().broker()); }

CmpiContext Context() { return CmpiContext(TestHost().context()); }

CmpiObjectPath PathOf(const std::string& className) {
  return CmpiObjectPath(TestHost().makeObjectPath(zeda::host::ObjectPath("root/cimv2", className)));
}

std::string TextOf(const CMPIString* text) {
  if (text == nullptr) {
    return "<null>";
  }
  const char* chars = text->ft->getCharPtr(text, nullptr);
  return chars != nullptr ? chars : "<null chars>";
}

}  // namespace zeda::pelka::test
