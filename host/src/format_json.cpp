// JSON output of outcomes, instances, paths and values, written as text.
#include "json_text.hpp"
#include "literal.hpp"
#include "zeda/host/format.hpp"

namespace zeda::host {

namespace {

std::string written(void (*append)(std::string&, const Value&), const Value& v) {
  std::string out;
  append(out, v);
  return out;
}

void appendResult(std::string& out, const ResultItem& r) {
  if (r.isInstance()) {
    detail::appendJsonInstance(out, r.instance());
  } else if (r.isPath()) {
    detail::appendJsonPath(out, r.path());
  } else {
    detail::appendJsonTypedValue(out, r.value());
  }
}

}  // namespace

std::string toJson(const std::string& operation, const Outcome& outcome) {
  std::string out = "{\n  \"operation\": ";
  detail::appendJsonString(out, operation);
  out += ",\n  \"status\": ";
  out += statusToJson(outcome.status);
  out += ",\n  \"done\": ";
  out += outcome.done ? "true" : "false";
  out += ",\n  \"results\": [";
  bool first = true;
  for (const auto& r : outcome.results) {
    out += first ? "\n    " : ",\n    ";
    first = false;
    appendResult(out, r);
  }
  out += first ? "]\n}\n" : "\n  ]\n}\n";
  return out;
}

std::string statusToJson(const Status& status) {
  std::string out = "{\"code\": " + std::to_string(status.code) + ", \"message\": ";
  if (status.message) {
    detail::appendJsonString(out, *status.message);
  } else {
    out += "null";
  }
  return out + "}";
}

std::string jsonQuote(std::string_view text) {
  std::string out;
  detail::appendJsonString(out, text);
  return out;
}

std::size_t utf8Length(std::string_view text, std::size_t i) {
  if (static_cast<unsigned char>(text[i]) < 0x80) return 1;
  std::size_t bad = 0;
  return detail::utf8SequenceLength(text, i, &bad);
}

std::string valueToJson(const Value& v) { return written(detail::appendJsonValue, v); }
std::string typedValueToJson(const Value& v) { return written(detail::appendJsonTypedValue, v); }

std::string objectPathToJson(const ObjectPath& p) {
  std::string out;
  detail::appendJsonPath(out, p);
  return out;
}

std::string instanceToJson(const Instance& i) {
  std::string out;
  // A property takes some 60 to 70 bytes: one allocation for most instances.
  out.reserve(128 + 72 * i.properties().size());
  detail::appendJsonInstance(out, i);
  return out;
}

}  // namespace zeda::host
