// CMPIString. The text is held as a string Value, so that a property set
// from one of these strings shares it instead of copying it.
#include "objects.hpp"

namespace zeda::host::detail {

StringObj::StringObj(Broker& b, std::optional<std::string> t)
    : Enc(b, &b.tables().string),
      text(t ? Value::string(std::move(*t)) : Value::null(type::string)) {}

StringObj::StringObj(Broker& b, Value t) : Enc(b, &b.tables().string), text(std::move(t)) {}

StringObj* makeString(Broker& b, std::optional<std::string> text) {
  return b.store().adopt(std::make_unique<StringObj>(b, std::move(text)));
}

namespace {

CMPIStatus release(CMPIString* s) { return releaseFace<StringObj>(s); }

CMPIString* clone(const CMPIString* s, CMPIStatus* rc) {
  return cloneFace<StringObj>(
      s, rc, [](const StringObj& o) { return std::make_unique<StringObj>(o.broker(), o.text); });
}

char* getCharPtr(const CMPIString* s, CMPIStatus* rc) {
  StringObj* o = unwrap<StringObj>(s);
  if (o == nullptr) {
    setStatus(rc, CMPI_RC_ERR_INVALID_HANDLE);
    return nullptr;
  }
  setStatus(rc, CMPI_RC_OK);
  // The CMPI signature hands out char*; callers must not write through it.
  return o->text.isNull() ? nullptr : const_cast<char*>(o->text.str().c_str());
}

}  // namespace

const Value* ownStringText(const CMPIString* s) {
  // Every broker's string table has this getCharPtr: the face is one of ours.
  if (s == nullptr || s->hdl == nullptr || s->ft == nullptr || s->ft->getCharPtr != getCharPtr)
    return nullptr;
  return &unwrap<StringObj>(s)->text;
}

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
