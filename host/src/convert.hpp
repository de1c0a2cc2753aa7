// Conversions between CMPI data and the value model.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "broker.hpp"
#include "zeda/host/value.hpp"

namespace zeda::host::detail {

// The value behind (value, type) as a provider hands it to setProperty,
// addKey, addArg, returnData ...; a NULL value pointer is a null of that
// type. For CMPI_chars the value pointer is the char* itself (the convention
// of the CMPI standard's macros and of every object manager); it becomes a
// string. Throws RcError: CMPI_RC_ERR_INVALID_DATA_TYPE
// for types the host does not store, CMPI_RC_ERR_INVALID_HANDLE for released
// or null encapsulated objects where a value is required.
Value toValue(const CMPIValue* value, CMPIType type);

// A CMPIData for v; encapsulated parts are new objects of the current scope.
CMPIData toData(Broker& b, const Value& v);

// getCharPtr through the string's own table; nullopt for a NULL string or a
// NULL text.
std::optional<std::string> readString(const CMPIString* s);

// The CMPI_chars / CMPI_string folding used for stored values.
inline CMPIType storedType(CMPIType t) {
  const CMPIType scalar = static_cast<CMPIType>(t & ~CMPI_ARRAY);
  const CMPIType folded = scalar == CMPI_chars ? static_cast<CMPIType>(CMPI_string) : scalar;
  return static_cast<CMPIType>((t & CMPI_ARRAY) | folded);
}

// A NULL-terminated char* list over names (kept alive by the vector).
class NameList {
 public:
  explicit NameList(const std::optional<std::vector<std::string>>& names);
  const char** get() { return present_ ? pointers_.data() : nullptr; }

 private:
  bool present_ = false;
  std::vector<std::string> names_;
  std::vector<const char*> pointers_;
};

}  // namespace zeda::host::detail
