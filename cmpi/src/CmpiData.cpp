// CmpiData: construction of typed values and type-checked conversions.
#include "CmpiData.h"

#include <cstring>

#include "CmpiArray.h"
#include "CmpiCall.h"
#include "CmpiDateTime.h"
#include "CmpiInstance.h"
#include "CmpiObjectPath.h"
#include "CmpiString.h"

namespace cmpi_detail {

std::string typeName(CMPIType type) {
  const bool array = (type & CMPI_ARRAY) != 0;
  const CMPIType simple = static_cast<CMPIType>(type & ~CMPI_ARRAY);
  const char* name = nullptr;
  switch (simple) {
    case CMPI_null:
      name = "null";
      break;
    case CMPI_boolean:
      name = "boolean";
      break;
    case CMPI_char16:
      name = "char16";
      break;
    case CMPI_real32:
      name = "real32";
      break;
    case CMPI_real64:
      name = "real64";
      break;
    case CMPI_uint8:
      name = "uint8";
      break;
    case CMPI_uint16:
      name = "uint16";
      break;
    case CMPI_uint32:
      name = "uint32";
      break;
    case CMPI_uint64:
      name = "uint64";
      break;
    case CMPI_sint8:
      name = "sint8";
      break;
    case CMPI_sint16:
      name = "sint16";
      break;
    case CMPI_sint32:
      name = "sint32";
      break;
    case CMPI_sint64:
      name = "sint64";
      break;
    case CMPI_instance:
      name = "instance";
      break;
    case CMPI_ref:
      name = "reference";
      break;
    case CMPI_args:
      name = "args";
      break;
    case CMPI_class:
      name = "class";
      break;
    case CMPI_filter:
      name = "filter";
      break;
    case CMPI_enumeration:
      name = "enumeration";
      break;
    case CMPI_string:
      name = "string";
      break;
    case CMPI_chars:
      name = "chars";
      break;
    case CMPI_dateTime:
      name = "datetime";
      break;
    case CMPI_ptr:
      name = "ptr";
      break;
    case CMPI_charsptr:
      name = "charsptr";
      break;
    default:
      break;
  }
  if (array && simple == CMPI_null) {
    return "array";
  }
  std::string text = name != nullptr ? name : "type " + std::to_string(simple);
  return array ? text + "[]" : text;
}

const CMPIValue* setterValue(const CmpiData& data) {
  if (data.isNullValue()) {
    return nullptr;
  }
  if (data.getType() == CMPI_chars) {
    return reinterpret_cast<const CMPIValue*>(data.valuePtr()->chars);
  }
  return data.valuePtr();
}

}  // namespace cmpi_detail

namespace {

CMPIData makeData(CMPIType type, CMPIValueState state) {
  CMPIData data;
  std::memset(&data, 0, sizeof data);
  data.type = type;
  data.state = state;
  return data;
}

// A value of `type` that is null when `isNull`, good otherwise.
CMPIData encapsulated(CMPIType type, bool isNull) {
  return makeData(type, isNull ? CMPI_nullValue : CMPI_goodValue);
}

CMPIData makeBoolean(bool value) {
  CMPIData data = makeData(CMPI_boolean, CMPI_goodValue);
  data.value.boolean = value ? 1 : 0;
  return data;
}

}  // namespace

CmpiData::CmpiData() : data_(makeData(CMPI_null, CMPI_nullValue)) {}

CmpiData::CmpiData(CMPIUint8 v) : data_(makeData(CMPI_uint8, CMPI_goodValue)) {
  data_.value.uint8 = v;
}
CmpiData::CmpiData(CMPISint8 v) : data_(makeData(CMPI_sint8, CMPI_goodValue)) {
  data_.value.sint8 = v;
}
CmpiData::CmpiData(CMPIUint16 v) : data_(makeData(CMPI_uint16, CMPI_goodValue)) {
  data_.value.uint16 = v;
}
CmpiData::CmpiData(CMPISint16 v) : data_(makeData(CMPI_sint16, CMPI_goodValue)) {
  data_.value.sint16 = v;
}
CmpiData::CmpiData(CMPIUint32 v) : data_(makeData(CMPI_uint32, CMPI_goodValue)) {
  data_.value.uint32 = v;
}
CmpiData::CmpiData(CMPISint32 v) : data_(makeData(CMPI_sint32, CMPI_goodValue)) {
  data_.value.sint32 = v;
}
CmpiData::CmpiData(CMPIUint64 v) : data_(makeData(CMPI_uint64, CMPI_goodValue)) {
  data_.value.uint64 = v;
}
CmpiData::CmpiData(CMPISint64 v) : data_(makeData(CMPI_sint64, CMPI_goodValue)) {
  data_.value.sint64 = v;
}
CmpiData::CmpiData(CMPIReal32 v) : data_(makeData(CMPI_real32, CMPI_goodValue)) {
  data_.value.real32 = v;
}
CmpiData::CmpiData(CMPIReal64 v) : data_(makeData(CMPI_real64, CMPI_goodValue)) {
  data_.value.real64 = v;
}

CmpiData::CmpiData(const char* text) : CmpiData(CmpiString(text)) {}

CmpiData::CmpiData(const std::string& text) : CmpiData(CmpiString(text.c_str())) {}

CmpiData::CmpiData(const CmpiString& s)
    : data_(encapsulated(CMPI_string, s.isNull())), owner_(s.owner_) {
  data_.value.string = s.getEnc();
}

CmpiData::CmpiData(const CmpiArray& a)
    // A null array has no element type to report; it travels as a null
    // value of the bare array flag.
    : data_(encapsulated(a.getEnc() == nullptr
                             ? static_cast<CMPIType>(CMPI_ARRAY)
                             : static_cast<CMPIType>(CMPI_ARRAY | a.getSimpleType()),
                         a.getEnc() == nullptr)),
      owner_(a.owner_) {
  data_.value.array = a.getEnc();
}

CmpiData::CmpiData(const CmpiObjectPath& p)
    : data_(encapsulated(CMPI_ref, p.isNull())), owner_(p.owner_) {
  data_.value.ref = p.getEnc();
}

CmpiData::CmpiData(const CmpiInstance& i)
    : data_(encapsulated(CMPI_instance, i.isNull())), owner_(i.owner_) {
  data_.value.inst = i.getEnc();
}

CmpiData::CmpiData(const CmpiDateTime& d)
    : data_(encapsulated(CMPI_dateTime, d.getEnc() == nullptr)), owner_(d.owner_) {
  data_.value.dateTime = d.getEnc();
}

void CmpiData::requireType(CMPIType type) const {
  if (isNotFound()) {
    throw CmpiStatus(
        CMPI_RC_ERR_NO_SUCH_PROPERTY,
        "no such value: expected " + cmpi_detail::typeName(type) + ", the value was not found");
  }
  if (data_.type == CMPI_null) {
    throw CmpiStatus(CMPI_RC_ERR_NO_SUCH_PROPERTY,
                     "no value: expected " + cmpi_detail::typeName(type) + ", got null");
  }
  if (data_.type != type) {
    throw CmpiStatus(CMPI_RC_ERR_TYPE_MISMATCH, "type mismatch: expected " +
                                                    cmpi_detail::typeName(type) + ", got " +
                                                    cmpi_detail::typeName(data_.type));
  }
  if (isNullValue()) {
    throw CmpiStatus(CMPI_RC_ERR_NO_SUCH_PROPERTY,
                     "null value of type " + cmpi_detail::typeName(type));
  }
}

CmpiData::operator CmpiString() const {
  if (data_.type == CMPI_chars) {
    requireType(CMPI_chars);
    return CmpiString(data_.value.chars);  // copied into a new string
  }
  requireType(CMPI_string);
  return CmpiString(data_.value.string, owner_);
}

CmpiData::operator const char*() const {
  if (data_.type == CMPI_chars) {
    requireType(CMPI_chars);
    return data_.value.chars;
  }
  requireType(CMPI_string);
  return CmpiString(data_.value.string).charPtr();
}

std::string CmpiData::getString() const {
  const char* text = *this;
  if (text == nullptr) {
    throw CmpiStatus(CMPI_RC_ERR_NO_SUCH_PROPERTY, "string value without characters");
  }
  return text;
}

bool CmpiData::getBoolean() const {
  requireType(CMPI_boolean);
  return data_.value.boolean != 0;
}

CmpiData::operator CmpiArray() const {
  // Any array type will do; a message names the array of the actual type.
  requireType(isArray() ? data_.type : static_cast<CMPIType>(CMPI_ARRAY | data_.type));
  return CmpiArray(data_.value.array, owner_);
}

CmpiData::operator CmpiObjectPath() const {
  requireType(CMPI_ref);
  return CmpiObjectPath(data_.value.ref, owner_);
}

CmpiData::operator CmpiInstance() const {
  requireType(CMPI_instance);
  return CmpiInstance(data_.value.inst, owner_);
}

CmpiData::operator CmpiDateTime() const {
  requireType(CMPI_dateTime);
  return CmpiDateTime(data_.value.dateTime, owner_);
}

CmpiData::operator CMPIUint8() const {
  if (data_.type == CMPI_boolean) {
    requireType(CMPI_boolean);
    return data_.value.boolean;
  }
  requireType(CMPI_uint8);
  return data_.value.uint8;
}

CmpiData::operator CMPISint8() const {
  requireType(CMPI_sint8);
  return data_.value.sint8;
}

CmpiData::operator CMPIUint16() const {
  requireType(CMPI_uint16);
  return data_.value.uint16;
}

CmpiData::operator CMPISint16() const {
  requireType(CMPI_sint16);
  return data_.value.sint16;
}

CmpiData::operator CMPIUint32() const {
  requireType(CMPI_uint32);
  return data_.value.uint32;
}

CmpiData::operator CMPISint32() const {
  requireType(CMPI_sint32);
  return data_.value.sint32;
}

CmpiData::operator CMPIUint64() const {
  requireType(CMPI_uint64);
  return data_.value.uint64;
}

CmpiData::operator CMPISint64() const {
  requireType(CMPI_sint64);
  return data_.value.sint64;
}

CmpiData::operator CMPIReal32() const {
  requireType(CMPI_real32);
  return data_.value.real32;
}

CmpiData::operator CMPIReal64() const {
  requireType(CMPI_real64);
  return data_.value.real64;
}

CmpiBooleanData::CmpiBooleanData(bool value) : CmpiData(makeBoolean(value)) {}
