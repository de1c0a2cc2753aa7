// A CIM instance as a plain value: its object path and its properties in the
// order the provider first set them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "zeda/host/object_path.hpp"
#include "zeda/host/value.hpp"

namespace zeda::host {

class Instance {
 public:
  Instance() = default;
  explicit Instance(ObjectPath path, std::vector<NamedValue> properties = {});

  const ObjectPath& path() const { return path_; }
  const std::string& className() const { return path_.className(); }
  const std::vector<NamedValue>& properties() const { return properties_; }

  // Property look-up by name, ignoring case. property() throws NotFound
  // naming the property and the class.
  bool has(std::string_view name) const;
  const Value& property(std::string_view name) const;
  std::vector<std::string> names() const;  // in set order

  // Sets a property: replaces it in place when present, else appends.
  Instance& set(std::string name, Value value);
  Instance& setPath(ObjectPath path);

  bool operator==(const Instance& o) const;
  bool operator!=(const Instance& o) const { return !(*this == o); }

 private:
  ObjectPath path_;
  std::vector<NamedValue> properties_;
};

}  // namespace zeda::host
