// Conversions between CMPI data and the value model. Reading goes through
// each object's own function table, so objects of any CMPI implementation
// convert.
#include "convert.hpp"

#include <stdexcept>

#include "objects.hpp"

namespace zeda::host {

using detail::RcError;

namespace {

void check(const CMPIStatus& st, const char* what) {
  if (st.rc != CMPI_RC_OK) {
    throw std::runtime_error(std::string(what) + " failed with CMPI status " +
                             std::to_string(st.rc));
  }
}

Value readScalar(const CMPIData& data, CMPIType type) {
  const CMPIValue& v = data.value;
  switch (type) {
    case CMPI_boolean:
      return Value::boolean(v.boolean != 0);
    case CMPI_char16:
      return Value::char16(v.char16);
    case CMPI_uint8:
      return Value::uint8(v.uint8);
    case CMPI_uint16:
      return Value::uint16(v.uint16);
    case CMPI_uint32:
      return Value::uint32(v.uint32);
    case CMPI_uint64:
      return Value::uint64(v.uint64);
    case CMPI_sint8:
      return Value::sint8(v.sint8);
    case CMPI_sint16:
      return Value::sint16(v.sint16);
    case CMPI_sint32:
      return Value::sint32(v.sint32);
    case CMPI_sint64:
      return Value::sint64(v.sint64);
    case CMPI_real32:
      return Value::real32(v.real32);
    case CMPI_real64:
      return Value::real64(v.real64);
    case CMPI_chars:
      return v.chars == nullptr ? Value::null(CMPI_string) : Value::string(v.chars);
    case CMPI_string: {
      if (v.string == nullptr || v.string->hdl == nullptr)
        throw RcError(CMPI_RC_ERR_INVALID_HANDLE);
      if (const Value* own = detail::ownStringText(v.string)) return *own;  // shared, not copied
      auto text = detail::readString(v.string);
      return text ? Value::string(std::move(*text)) : Value::null(CMPI_string);
    }
    case CMPI_dateTime: {
      const CMPIDateTime* dt = v.dateTime;
      if (dt == nullptr || dt->hdl == nullptr) throw RcError(CMPI_RC_ERR_INVALID_HANDLE);
      CMPIStatus st{CMPI_RC_OK, nullptr};
      CMPIString* s = dt->ft->getStringFormat(dt, &st);
      check(st, "CMPIDateTime getStringFormat");
      auto text = detail::readString(s);
      return text ? Value::dateTime(std::move(*text)) : Value::null(CMPI_dateTime);
    }
    case CMPI_ref:
      if (v.ref == nullptr || v.ref->hdl == nullptr) throw RcError(CMPI_RC_ERR_INVALID_HANDLE);
      return Value::reference(readObjectPath(v.ref));
    case CMPI_instance:
      if (v.inst == nullptr || v.inst->hdl == nullptr) throw RcError(CMPI_RC_ERR_INVALID_HANDLE);
      return Value::instance(readInstance(v.inst));
    default:
      throw RcError(CMPI_RC_ERR_INVALID_DATA_TYPE);
  }
}

}  // namespace

Value readData(const CMPIData& data) {
  const CMPIType type = detail::storedType(data.type);
  if ((data.state & CMPI_nullValue) != 0) return Value::null(type);
  if (data.type == CMPI_null) return Value();
  if ((data.type & CMPI_ARRAY) == 0) return readScalar(data, data.type);

  const CMPIArray* array = data.value.array;
  if (array == nullptr || array->hdl == nullptr) throw RcError(CMPI_RC_ERR_INVALID_HANDLE);
  CMPIStatus st{CMPI_RC_OK, nullptr};
  const CMPICount size = array->ft->getSize(array, &st);
  check(st, "CMPIArray getSize");
  std::vector<Value> elements;
  elements.reserve(size);
  const CMPIType elementType = static_cast<CMPIType>(type & ~CMPI_ARRAY);
  for (CMPICount i = 0; i < size; ++i) {
    const CMPIData e = array->ft->getElementAt(array, i, &st);
    check(st, "CMPIArray getElementAt");
    if ((e.state & CMPI_nullValue) != 0) {
      elements.push_back(Value::null(elementType));
    } else {
      elements.push_back(readScalar(e, e.type));
    }
  }
  return Value::array(elementType, std::move(elements));
}

ObjectPath readObjectPath(const CMPIObjectPath* path) {
  if (path == nullptr || path->hdl == nullptr)
    throw std::runtime_error("null or released CMPIObjectPath");
  if (const ObjectPath* own = detail::ownObjectPath(path)) return *own;
  CMPIStatus st{CMPI_RC_OK, nullptr};
  auto ns = detail::readString(path->ft->getNameSpace(path, &st));
  check(st, "CMPIObjectPath getNameSpace");
  auto cls = detail::readString(path->ft->getClassName(path, &st));
  check(st, "CMPIObjectPath getClassName");
  ObjectPath out(ns.value_or(""), cls.value_or(""));
  const CMPICount n = path->ft->getKeyCount(path, &st);
  check(st, "CMPIObjectPath getKeyCount");
  for (CMPICount i = 0; i < n; ++i) {
    CMPIString* name = nullptr;
    const CMPIData d = path->ft->getKeyAt(path, i, &name, &st);
    check(st, "CMPIObjectPath getKeyAt");
    out.addKey(detail::readString(name).value_or(""), readData(d));
  }
  return out;
}

Instance readInstance(const CMPIInstance* instance) {
  if (instance == nullptr || instance->hdl == nullptr)
    throw std::runtime_error("null or released CMPIInstance");
  if (const Instance* own = detail::ownInstance(instance)) return *own;
  CMPIStatus st{CMPI_RC_OK, nullptr};
  const CMPIObjectPath* op = instance->ft->getObjectPath(instance, &st);
  check(st, "CMPIInstance getObjectPath");
  Instance out(readObjectPath(op));
  const CMPICount n = instance->ft->getPropertyCount(instance, &st);
  check(st, "CMPIInstance getPropertyCount");
  for (CMPICount i = 0; i < n; ++i) {
    CMPIString* name = nullptr;
    const CMPIData d = instance->ft->getPropertyAt(instance, i, &name, &st);
    check(st, "CMPIInstance getPropertyAt");
    out.set(detail::readString(name).value_or(""), readData(d));
  }
  return out;
}

namespace detail {

std::optional<std::string> readString(const CMPIString* s) {
  if (s == nullptr || s->hdl == nullptr) return std::nullopt;
  CMPIStatus st{CMPI_RC_OK, nullptr};
  const char* p = s->ft->getCharPtr(s, &st);
  if (st.rc != CMPI_RC_OK || p == nullptr) return std::nullopt;
  return std::string(p);
}

Value toValue(const CMPIValue* value, CMPIType type) {
  if (value == nullptr) return Value::null(storedType(type));
  // Passed as an argument, a CMPI_chars value is the char* itself (as every
  // object manager reads it), not a CMPIValue holding one.
  if (type == CMPI_chars) return Value::string(reinterpret_cast<const char*>(value));
  CMPIData d{};
  d.type = type;
  d.state = CMPI_goodValue;
  d.value = *value;
  return readData(d);
}

namespace {

CMPIValue scalarValue(Broker& b, const Value& v) {
  CMPIValue out{};
  switch (v.type()) {
    case CMPI_boolean:
      out.boolean = v.b() ? 1 : 0;
      break;
    case CMPI_char16:
      out.char16 = static_cast<CMPIChar16>(v.u());
      break;
    case CMPI_uint8:
      out.uint8 = static_cast<CMPIUint8>(v.u());
      break;
    case CMPI_uint16:
      out.uint16 = static_cast<CMPIUint16>(v.u());
      break;
    case CMPI_uint32:
      out.uint32 = static_cast<CMPIUint32>(v.u());
      break;
    case CMPI_uint64:
      out.uint64 = v.u();
      break;
    case CMPI_sint8:
      out.sint8 = static_cast<CMPISint8>(v.s());
      break;
    case CMPI_sint16:
      out.sint16 = static_cast<CMPISint16>(v.s());
      break;
    case CMPI_sint32:
      out.sint32 = static_cast<CMPISint32>(v.s());
      break;
    case CMPI_sint64:
      out.sint64 = v.s();
      break;
    case CMPI_real32:
      out.real32 = static_cast<CMPIReal32>(v.r());
      break;
    case CMPI_real64:
      out.real64 = v.r();
      break;
    case CMPI_string:
    case CMPI_chars:
      out.string = makeString(b, v.str())->face();
      break;
    case CMPI_dateTime: {
      std::uint64_t micros = 0;
      bool interval = false;
      if (!parseDateTime(v.dateTimeText(), micros, interval))
        throw RcError(CMPI_RC_ERR_INVALID_PARAMETER);
      out.dateTime = makeDateTime(b, micros, interval, v.dateTimeText())->face();
      break;
    }
    case CMPI_ref:
      out.ref = makeObjectPath(b, v.ref())->face();
      break;
    case CMPI_instance:
      out.inst = makeInstance(b, v.inst())->face();
      break;
    default:
      throw RcError(CMPI_RC_ERR_INVALID_DATA_TYPE);
  }
  return out;
}

}  // namespace

CMPIData toData(Broker& b, const Value& v) {
  CMPIData d{};
  d.type = storedType(v.type());
  if (v.isNull()) {
    d.state = CMPI_nullValue;
    return d;
  }
  d.state = CMPI_goodValue;
  if (v.isArray()) {
    d.value.array = makeArray(b, static_cast<CMPIType>(v.elementType()), v.elements())->face();
  } else {
    d.value = scalarValue(b, v);
  }
  return d;
}

NameList::NameList(const std::optional<std::vector<std::string>>& names) {
  if (!names) return;
  present_ = true;
  names_ = *names;
  for (const auto& n : names_) pointers_.push_back(n.c_str());
  pointers_.push_back(nullptr);
}

}  // namespace detail
}  // namespace zeda::host

namespace zeda::host::detail {

std::optional<std::vector<std::string>> readNameList(const char** list) {
  if (list == nullptr) return std::nullopt;
  std::vector<std::string> names;
  for (const char** p = list; *p != nullptr; ++p) names.emplace_back(*p);
  return names;
}

}  // namespace zeda::host::detail
