// CMPIArray: fixed size, one element type, elements start out null.
#include "convert.hpp"
#include "objects.hpp"

namespace zeda::host::detail {

ArrayObj::ArrayObj(Broker& b, CMPIType type, std::vector<Value> elems)
    : Enc(b, &b.tables().array),
      elementType(storedType(static_cast<CMPIType>(type & ~CMPI_ARRAY))),
      elements(std::move(elems)) {}

Value ArrayObj::element(std::size_t i) const {
  const CMPIData* object = keptAt(i);
  return object == nullptr ? elements[i] : toValue(&object->value, object->type);
}

void ArrayObj::keep(std::size_t i, std::optional<CMPIData> data) {
  if (!data && kept.empty()) return;
  kept.resize(elements.size());
  kept[i] = data;
}

std::vector<Value> ArrayObj::values() const {
  std::vector<Value> out;
  out.reserve(elements.size());
  for (std::size_t i = 0; i < elements.size(); ++i) out.push_back(element(i));
  return out;
}

ArrayObj* makeArray(Broker& b, CMPIType elementType, std::vector<Value> elements) {
  return b.store().adopt(std::make_unique<ArrayObj>(b, elementType, std::move(elements)));
}

namespace {

CMPIStatus release(CMPIArray* a) { return releaseFace<ArrayObj>(a); }

// Types whose values are objects of the provider's: kept by setElementAt.
bool isEncapsulated(CMPIType type) {
  return type == CMPI_string || type == CMPI_ref || type == CMPI_instance || type == CMPI_dateTime;
}

CMPIData keptData(const CMPIValue& value, CMPIType type) {
  CMPIData d{};
  d.type = type;
  d.state = CMPI_goodValue;
  d.value = value;
  return d;
}

CMPIArray* clone(const CMPIArray* a, CMPIStatus* rc) {
  return cloneFace<ArrayObj>(a, rc, [](const ArrayObj& o) {
    return std::make_unique<ArrayObj>(o.broker(), o.elementType, o.values());
  });
}

CMPICount getSize(const CMPIArray* a, CMPIStatus* rc) {
  ArrayObj* o = unwrap<ArrayObj>(a);
  if (o == nullptr) {
    setStatus(rc, CMPI_RC_ERR_INVALID_HANDLE);
    return 0;
  }
  setStatus(rc, CMPI_RC_OK);
  return static_cast<CMPICount>(o->elements.size());
}

CMPIType getSimpleType(const CMPIArray* a, CMPIStatus* rc) {
  ArrayObj* o = unwrap<ArrayObj>(a);
  if (o == nullptr) {
    setStatus(rc, CMPI_RC_ERR_INVALID_HANDLE);
    return CMPI_null;
  }
  setStatus(rc, CMPI_RC_OK);
  return o->elementType;
}

CMPIData getElementAt(const CMPIArray* a, CMPICount index, CMPIStatus* rc) {
  return guardedValue<CMPIData>(rc, nullData(), [&] {
    ArrayObj* o = unwrap<ArrayObj>(a);
    if (o == nullptr) throw RcError(CMPI_RC_ERR_INVALID_HANDLE);
    if (index >= o->elements.size()) throw RcError(CMPI_RC_ERR_NO_SUCH_PROPERTY);
    if (const CMPIData* object = o->keptAt(index)) {  // the object itself, as it was given
      setStatus(rc, CMPI_RC_OK);
      return *object;
    }
    CMPIData d = toData(o->broker(), o->elements[index]);
    if (d.type == CMPI_null) d.type = o->elementType;
    setStatus(rc, CMPI_RC_OK);
    return d;
  });
}

CMPIStatus setElementAt(CMPIArray* a, CMPICount index, const CMPIValue* value, CMPIType type) {
  return guarded([&] {
    ArrayObj* o = unwrap<ArrayObj>(a);
    if (o == nullptr) return status(CMPI_RC_ERR_INVALID_HANDLE);
    if (index >= o->elements.size()) return status(CMPI_RC_ERR_NO_SUCH_PROPERTY);
    o->keep(index, std::nullopt);
    if (type == CMPI_null) {
      o->elements[index] = Value::null(o->elementType);
      return status(CMPI_RC_OK);
    }
    if (storedType(type) != o->elementType) return status(CMPI_RC_ERR_TYPE_MISMATCH);
    Value given = toValue(value, type);  // checks the handle of an object
    if (value != nullptr && isEncapsulated(type)) {
      o->keep(index, keptData(*value, type));
      given = Value::null(o->elementType);
    }
    o->elements[index] = std::move(given);
    return status(CMPI_RC_OK);
  });
}

}  // namespace

void fillArrayFT(CMPIArrayFT& ft) {
  ft.ftVersion = CMPIVersion200;
  ft.release = release;
  ft.clone = clone;
  ft.getSize = getSize;
  ft.getSimpleType = getSimpleType;
  ft.getElementAt = getElementAt;
  ft.setElementAt = setElementAt;
}

}  // namespace zeda::host::detail
