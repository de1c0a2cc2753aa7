// JSON output of outcomes, instances, paths and values.
#include <nlohmann/json.hpp>

#include "zeda/host/format.hpp"

namespace zeda::host {

namespace {

using Json = nlohmann::ordered_json;

Json pathJson(const ObjectPath& p);
Json instanceJson(const Instance& i);

Json valueJson(const Value& v) {
  if (v.isNull()) return nullptr;
  if (v.isArray()) {
    Json out = Json::array();
    for (const auto& e : v.elements()) out.push_back(valueJson(e));
    return out;
  }
  switch (v.type()) {
    case type::boolean: return v.b();
    case type::char16:
    case type::uint8:
    case type::uint16:
    case type::uint32:
    case type::uint64: return v.u();
    case type::sint8:
    case type::sint16:
    case type::sint32:
    case type::sint64: return v.s();
    case type::real32: return static_cast<float>(v.r());
    case type::real64: return v.r();
    case type::string:
    case type::chars: return v.str();
    case type::dateTime: return v.dateTimeText();
    case type::ref: return pathJson(v.ref());
    case type::instance: return instanceJson(v.inst());
    default: return v.debugString();
  }
}

Json namedJson(const NamedValue& nv) {
  Json out = Json::object();
  out["name"] = nv.name;
  out["type"] = nv.value.typeName();
  out["value"] = valueJson(nv.value);
  return out;
}

Json pathJson(const ObjectPath& p) {
  Json out = Json::object();
  out["namespace"] = p.nameSpace();
  out["classname"] = p.className();
  Json keys = Json::array();
  for (const auto& k : p.keys()) keys.push_back(namedJson(k));
  out["keys"] = std::move(keys);
  return out;
}

Json instanceJson(const Instance& i) {
  Json out = Json::object();
  out["path"] = pathJson(i.path());
  Json props = Json::array();
  for (const auto& p : i.properties()) props.push_back(namedJson(p));
  out["properties"] = std::move(props);
  return out;
}

Json resultJson(const ResultItem& r) {
  if (r.isInstance()) return instanceJson(r.instance());
  if (r.isPath()) return pathJson(r.path());
  Json out = Json::object();
  out["type"] = r.value().typeName();
  out["value"] = valueJson(r.value());
  return out;
}

// Text of a document. Strings are bytes as the provider or the user gave
// them; a byte that is not UTF-8 is written as U+FFFD instead of failing the
// whole document.
std::string documentText(const Json& j, int indent = -1) {
  return j.dump(indent, ' ', false, Json::error_handler_t::replace);
}

}  // namespace

std::string toJson(const std::string& operation, const Outcome& outcome) {
  Json doc = Json::object();
  doc["operation"] = operation;
  Json status = Json::object();
  status["code"] = outcome.status.code;
  if (outcome.status.message) {
    status["message"] = *outcome.status.message;
  } else {
    status["message"] = nullptr;
  }
  doc["status"] = std::move(status);
  doc["done"] = outcome.done;
  Json results = Json::array();
  for (const auto& r : outcome.results) results.push_back(resultJson(r));
  doc["results"] = std::move(results);
  return documentText(doc, 2) + "\n";
}

std::string valueToJson(const Value& v) { return documentText(valueJson(v)); }
std::string objectPathToJson(const ObjectPath& p) { return documentText(pathJson(p)); }
std::string instanceToJson(const Instance& i) { return documentText(instanceJson(i)); }

}  // namespace zeda::host
