// The untyped WBEM URI form of an object path:
//   [NAMESPACE:]Class.Key="value",Key2="value"   or a bare   [NAMESPACE:]Class
// Inside a quoted value \" and \\ are escapes. Unquoted values are accepted
// for integers (uint64 / sint64) and TRUE / FALSE (boolean). A quoted value
// that itself reads as an object path with at least one key is taken as a
// reference, any other quoted value as a string. Without a namespace the
// default one is used.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

#include "zeda/host/object_path.hpp"

namespace zeda::host {

inline constexpr const char* kDefaultNameSpace = "root/cimv2";

// Malformed input. what() reads "malformed object path at column N: <why>";
// column() is 1-based.
class UriError : public std::invalid_argument {
 public:
  UriError(std::size_t column, const std::string& why);
  std::size_t column() const { return column_; }

 private:
  std::size_t column_;
};

ObjectPath parseObjectPath(std::string_view text,
                           std::string_view defaultNameSpace = kDefaultNameSpace);

// Prints NAMESPACE:Class.Key="v",... (no namespace part when it is empty).
// String, datetime and reference values are quoted with " and \ escaped;
// numbers are bare, booleans TRUE/FALSE.
std::string formatObjectPath(const ObjectPath& path);

}  // namespace zeda::host
