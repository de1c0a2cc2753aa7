// CMPIString.
#include "objects.hpp"

namespace zeda::host::detail {

StringObj::StringObj(Broker& b, std::optional<std::string> t) : Enc(b, &b.tables().string), text(std::move(t)) {}

StringObj* makeString(Broker& b, std::optional<std::string> text) {
  return b.store().adopt(std::make_unique<StringObj>(b, std::move(text)));
}

namespace {

CMPIStatus release(CMPIString* s) { return releaseFace<StringObj>(s); }

CMPIString* clone(const CMPIString* s, CMPIStatus* rc) {
  return cloneFace<StringObj>(s, rc, [](const StringObj& o) { return std::make_unique<StringObj>(o.broker(), o.text); });
}

char* getCharPtr(const CMPIString* s, CMPIStatus* rc) {
  StringObj* o = unwrap<StringObj>(s);
  if (o == nullptr) {
    setStatus(rc, CMPI_RC_ERR_INVALID_HANDLE);
    return nullptr;
  }
  setStatus(rc, CMPI_RC_OK);
  // The CMPI signature hands out char*; callers must not write through it.
  return o->text ? const_cast<char*>(o->text->c_str()) : nullptr;
}

}  // namespace

void fillStringFT(CMPIStringFT& ft) {
  ft.ftVersion = CMPIVersion200;
  ft.release = release;
  ft.clone = clone;
  ft.getCharPtr = getCharPtr;
}

long findName(const std::vector<NamedValue>& list, const char* name) {
  if (name == nullptr) return -1;
  for (std::size_t i = 0; i < list.size(); ++i) {
    if (namesEqual(list[i].name, name)) return static_cast<long>(i);
  }
  return -1;
}

}  // namespace zeda::host::detail
