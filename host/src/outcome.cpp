// Accessors of an operation outcome.
#include "zeda/host/outcome.hpp"

namespace zeda::host {

namespace {
const char* kindOf(const ResultItem& r) {
  if (r.isInstance()) return "an instance";
  if (r.isPath()) return "an object path";
  return "a value";
}
}  // namespace

const Instance& ResultItem::instance() const {
  if (!isInstance())
    throw TypeMismatch(std::string("result is ") + kindOf(*this) + ", not an instance");
  return std::get<Instance>(item_);
}

const ObjectPath& ResultItem::path() const {
  if (!isPath())
    throw TypeMismatch(std::string("result is ") + kindOf(*this) + ", not an object path");
  return std::get<ObjectPath>(item_);
}

const Value& ResultItem::value() const {
  if (!isValue()) throw TypeMismatch(std::string("result is ") + kindOf(*this) + ", not a value");
  return std::get<Value>(item_);
}

std::vector<Instance> Outcome::instances() const {
  std::vector<Instance> out;
  out.reserve(results.size());
  for (const auto& r : results) out.push_back(r.instance());
  return out;
}

std::vector<ObjectPath> Outcome::paths() const {
  std::vector<ObjectPath> out;
  out.reserve(results.size());
  for (const auto& r : results) out.push_back(r.path());
  return out;
}

std::vector<Value> Outcome::values() const {
  std::vector<Value> out;
  out.reserve(results.size());
  for (const auto& r : results) out.push_back(r.value());
  return out;
}

}  // namespace zeda::host
