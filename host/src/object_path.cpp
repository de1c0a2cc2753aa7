// Object paths with ordered keys.
#include "zeda/host/object_path.hpp"

#include <utility>

#include "zeda/host/wbem_uri.hpp"

namespace zeda::host {

ObjectPath::ObjectPath(std::string nameSpace, std::string className, std::vector<NamedValue> keys)
    : nameSpace_(std::move(nameSpace)), className_(std::move(className)) {
  for (auto& k : keys) addKey(std::move(k.name), std::move(k.value));
}

bool ObjectPath::hasKey(std::string_view name) const {
  for (const auto& k : keys_) {
    if (namesEqual(k.name, name)) return true;
  }
  return false;
}

const Value& ObjectPath::key(std::string_view name) const {
  for (const auto& k : keys_) {
    if (namesEqual(k.name, name)) return k.value;
  }
  throw NotFound("object path " + toString() + " has no key " + std::string(name));
}

std::vector<std::string> ObjectPath::keyNames() const {
  std::vector<std::string> names;
  names.reserve(keys_.size());
  for (const auto& k : keys_) names.push_back(k.name);
  return names;
}

ObjectPath& ObjectPath::addKey(std::string name, Value value) {
  for (auto& k : keys_) {
    if (namesEqual(k.name, name)) {
      k.value = std::move(value);
      return *this;
    }
  }
  keys_.push_back(NamedValue{std::move(name), std::move(value)});
  return *this;
}

ObjectPath& ObjectPath::addKey(std::string name, std::string value) {
  return addKey(std::move(name), Value::string(std::move(value)));
}

ObjectPath& ObjectPath::addKey(std::string name, const char* value) {
  return addKey(std::move(name), Value::string(value));
}

ObjectPath& ObjectPath::setNameSpace(std::string ns) {
  nameSpace_ = std::move(ns);
  return *this;
}

ObjectPath& ObjectPath::setClassName(std::string cls) {
  className_ = std::move(cls);
  return *this;
}

bool ObjectPath::operator==(const ObjectPath& o) const {
  return nameSpace_ == o.nameSpace_ && className_ == o.className_ && keys_ == o.keys_;
}

std::string ObjectPath::toString() const { return formatObjectPath(*this); }

}  // namespace zeda::host
