// MOF output: instances as "instance of" blocks, paths as WBEM URIs.
#include "literal.hpp"
#include "zeda/host/format.hpp"
#include "zeda/host/wbem_uri.hpp"

namespace zeda::host {

namespace {

std::string instanceMof(const Instance& i, const std::string& indent);

std::string valueMof(const Value& v, const std::string& indent) {
  if (v.isNull()) return "NULL";
  if (v.isArray()) {
    std::string out = "{";
    const auto& e = v.elements();
    for (std::size_t n = 0; n < e.size(); ++n) out += (n ? ", " : "") + valueMof(e[n], indent);
    return out + "}";
  }
  if (auto bare = detail::bareScalarText(v)) return *bare;
  switch (v.type()) {
    case type::string:
    case type::chars:
      return detail::mofQuote(v.str());
    case type::dateTime:
      return detail::mofQuote(v.dateTimeText());
    case type::ref:
      return detail::mofQuote(formatObjectPath(v.ref()));
    case type::instance: {
      std::string nested = instanceMof(v.inst(), indent + "    ");
      // Drop the block's closing ";\n": the property line supplies it.
      return nested.substr(0, nested.size() - 2);
    }
    default:
      return detail::mofQuote(v.debugString());
  }
}

std::string instanceMof(const Instance& i, const std::string& indent) {
  std::string out = "instance of " + i.className() + " {\n";
  for (const auto& p : i.properties()) {
    out += indent + "    " + p.name + " = " + valueMof(p.value, indent + "    ") + ";\n";
  }
  return out + indent + "};\n";
}

}  // namespace

std::string valueToMof(const Value& v) { return valueMof(v, ""); }
std::string instanceToMof(const Instance& i) { return instanceMof(i, ""); }

std::string toMof(const Outcome& outcome) {
  std::string out;
  for (const auto& r : outcome.results) {
    if (r.isInstance()) {
      if (!out.empty()) out += "\n";
      out += instanceToMof(r.instance());
    } else if (r.isPath()) {
      out += formatObjectPath(r.path()) + "\n";
    } else {
      out += valueToMof(r.value()) + "\n";
    }
  }
  return out;
}

}  // namespace zeda::host
