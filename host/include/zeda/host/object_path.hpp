// A CIM object path as a plain value: namespace, class name and keys in the
// order they were added.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "zeda/host/value.hpp"

namespace zeda::host {

class NotFound : public std::out_of_range {
 public:
  using std::out_of_range::out_of_range;
};

class ObjectPath {
 public:
  ObjectPath() = default;
  ObjectPath(std::string nameSpace, std::string className, std::vector<NamedValue> keys = {});

  const std::string& nameSpace() const { return nameSpace_; }
  const std::string& className() const { return className_; }
  const std::vector<NamedValue>& keys() const { return keys_; }

  // Key look-up by name, ignoring case. key() throws NotFound naming the key
  // and the path.
  bool hasKey(std::string_view name) const;
  const Value& key(std::string_view name) const;
  std::vector<std::string> keyNames() const;

  // Adds a key, or replaces an existing one of the same name in place.
  ObjectPath& addKey(std::string name, Value value);
  // Shorthand for a string key.
  ObjectPath& addKey(std::string name, std::string value);
  ObjectPath& addKey(std::string name, const char* value);

  ObjectPath& setNameSpace(std::string ns);
  ObjectPath& setClassName(std::string cls);

  // Exact equality (names as written, keys in order).
  bool operator==(const ObjectPath& o) const;
  bool operator!=(const ObjectPath& o) const { return !(*this == o); }

  // The untyped WBEM URI form, see wbem_uri.hpp.
  std::string toString() const;

 private:
  std::string nameSpace_;
  std::string className_;
  std::vector<NamedValue> keys_;
};

}  // namespace zeda::host
