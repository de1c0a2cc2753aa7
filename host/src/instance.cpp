// Instances with properties in set order.
#include "zeda/host/instance.hpp"

#include <utility>

namespace zeda::host {

Instance::Instance(ObjectPath path, std::vector<NamedValue> properties) : path_(std::move(path)) {
  for (auto& p : properties) set(std::move(p.name), std::move(p.value));
}

bool Instance::has(std::string_view name) const {
  for (const auto& p : properties_) {
    if (namesEqual(p.name, name)) return true;
  }
  return false;
}

const Value& Instance::property(std::string_view name) const {
  for (const auto& p : properties_) {
    if (namesEqual(p.name, name)) return p.value;
  }
  throw NotFound("instance of " + className() + " has no property " + std::string(name));
}

std::vector<std::string> Instance::names() const {
  std::vector<std::string> out;
  out.reserve(properties_.size());
  for (const auto& p : properties_) out.push_back(p.name);
  return out;
}

Instance& Instance::set(std::string name, Value value) {
  for (auto& p : properties_) {
    if (namesEqual(p.name, name)) {
      p.value = std::move(value);
      return *this;
    }
  }
  if (properties_.size() == properties_.capacity()) {
    // Instances hold a few to a dozen or so properties and many of them stay
    // alive for a whole request: grow so that little capacity goes unused
    // (2, 4, 8, 12, 16, then by half).
    const std::size_t n = properties_.size();
    properties_.reserve(n == 0 ? 2 : n < 8 ? 2 * n : n < 16 ? n + 4 : n + n / 2);
  }
  properties_.push_back(NamedValue{std::move(name), std::move(value)});
  return *this;
}

Instance& Instance::setPath(ObjectPath path) {
  path_ = std::move(path);
  return *this;
}

bool Instance::operator==(const Instance& o) const {
  return path_ == o.path_ && properties_ == o.properties_;
}

}  // namespace zeda::host
