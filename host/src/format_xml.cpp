// CIM-XML output (DSP0201 elements): VALUE.NAMEDINSTANCE for instances,
// VALUE.OBJECTPATH for paths, VALUE / VALUE.ARRAY / VALUE.REFERENCE for values.
#include <sstream>

#include "literal.hpp"
#include "zeda/host/format.hpp"

namespace zeda::host {

namespace {

using detail::xmlEscape;

std::string attr(const std::string& name, const std::string& value) {
  return " " + name + "=\"" + xmlEscape(value) + "\"";
}

// The CIM type name of a scalar code as DSP0201 writes it in TYPE attributes.
std::string xmlType(TypeCode scalar) {
  if (scalar == type::chars) return "string";
  if (scalar == type::ref) return "reference";
  return typeName(scalar);
}

std::string localNamespacePath(const std::string& ns) {
  std::string out = "<LOCALNAMESPACEPATH>";
  std::size_t start = 0;
  while (start <= ns.size()) {
    const std::size_t slash = ns.find('/', start);
    const std::string part =
        ns.substr(start, slash == std::string::npos ? std::string::npos : slash - start);
    if (!part.empty()) out += "<NAMESPACE" + attr("NAME", part) + "/>";
    if (slash == std::string::npos) break;
    start = slash + 1;
  }
  return out + "</LOCALNAMESPACEPATH>";
}

std::string instancePathXml(const ObjectPath& p);
std::string instanceXml(const Instance& i);

std::string scalarText(const Value& v) {
  if (auto bare = detail::bareScalarText(v)) return *bare;
  switch (v.type()) {
    case type::string:
    case type::chars:
      return v.str();
    case type::dateTime:
      return v.dateTimeText();
    case type::instance:
      return instanceXml(v.inst());
    default:
      return v.debugString();
  }
}

std::string valueReference(const ObjectPath& p) {
  return "<VALUE.REFERENCE>" + instancePathXml(p) + "</VALUE.REFERENCE>";
}

// VALUE, VALUE.ARRAY or VALUE.REFERENCE (VALUE.NULL inside arrays); empty for
// a null scalar, which DSP0201 writes as a property without a value element.
std::string valueElement(const Value& v) {
  if (v.isArray()) {
    if (v.isNull()) return "";
    std::string out = v.elementType() == type::ref ? "<VALUE.REFARRAY>" : "<VALUE.ARRAY>";
    for (const auto& e : v.elements()) {
      if (e.isNull()) {
        out += "<VALUE.NULL/>";
      } else if (e.type() == type::ref) {
        out += valueReference(e.ref());
      } else {
        out += "<VALUE>" + xmlEscape(scalarText(e)) + "</VALUE>";
      }
    }
    return out + (v.elementType() == type::ref ? "</VALUE.REFARRAY>" : "</VALUE.ARRAY>");
  }
  if (v.isNull()) return "";
  if (v.type() == type::ref) return valueReference(v.ref());
  return "<VALUE>" + xmlEscape(scalarText(v)) + "</VALUE>";
}

std::string keyBinding(const NamedValue& k) {
  std::string out = "<KEYBINDING" + attr("NAME", k.name) + ">";
  const Value& v = k.value;
  if (!v.isNull() && v.type() == type::ref) {
    out += valueReference(v.ref());
  } else {
    std::string valueType = "string";
    if (v.type() == type::boolean) {
      valueType = "boolean";
    } else if (v.type() != type::string && v.type() != type::chars && v.type() != type::dateTime &&
               v.type() != type::char16 && !v.isArray() && v.type() != type::null) {
      valueType = "numeric";
    }
    out += "<KEYVALUE" + attr("VALUETYPE", valueType) + attr("TYPE", xmlType(v.type())) + ">" +
           (v.isNull() || v.isArray() ? std::string() : xmlEscape(scalarText(v))) + "</KEYVALUE>";
  }
  return out + "</KEYBINDING>";
}

std::string instanceNameXml(const ObjectPath& p) {
  std::string out = "<INSTANCENAME" + attr("CLASSNAME", p.className()) + ">";
  for (const auto& k : p.keys()) out += keyBinding(k);
  return out + "</INSTANCENAME>";
}

std::string instancePathXml(const ObjectPath& p) {
  return "<INSTANCEPATH><NAMESPACEPATH><HOST>localhost</HOST>" + localNamespacePath(p.nameSpace()) +
         "</NAMESPACEPATH>" + instanceNameXml(p) + "</INSTANCEPATH>";
}

std::string propertyXml(const NamedValue& p) {
  const Value& v = p.value;
  if (v.isArray()) {
    return "<PROPERTY.ARRAY" + attr("NAME", p.name) + attr("TYPE", xmlType(v.elementType())) + ">" +
           valueElement(v) + "</PROPERTY.ARRAY>";
  }
  if (v.type() == type::ref) {
    const std::string refClass =
        v.isNull() ? std::string() : attr("REFERENCECLASS", v.ref().className());
    return "<PROPERTY.REFERENCE" + attr("NAME", p.name) + refClass + ">" + valueElement(v) +
           "</PROPERTY.REFERENCE>";
  }
  if (v.type() == type::instance) {
    return "<PROPERTY" + attr("NAME", p.name) + attr("TYPE", "string") +
           attr("EmbeddedObject", "instance") + ">" + valueElement(v) + "</PROPERTY>";
  }
  return "<PROPERTY" + attr("NAME", p.name) + attr("TYPE", xmlType(v.type())) + ">" +
         valueElement(v) + "</PROPERTY>";
}

std::string instanceXml(const Instance& i) {
  std::string out = "<INSTANCE" + attr("CLASSNAME", i.className()) + ">";
  for (const auto& p : i.properties()) out += propertyXml(p);
  return out + "</INSTANCE>";
}

}  // namespace

std::string instanceToXml(const Instance& i) {
  return "<VALUE.NAMEDINSTANCE>" + instanceNameXml(i.path()) + instanceXml(i) +
         "</VALUE.NAMEDINSTANCE>";
}

std::string objectPathToXml(const ObjectPath& p) {
  return "<VALUE.OBJECTPATH>" + instancePathXml(p) + "</VALUE.OBJECTPATH>";
}

std::string valueToXml(const Value& v) {
  const std::string element = valueElement(v);
  return element.empty() ? "<VALUE.NULL/>" : element;
}

std::string toXml(const Outcome& outcome) {
  std::string out = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<IRETURNVALUE>\n";
  for (const auto& r : outcome.results) {
    if (r.isInstance()) {
      out += instanceToXml(r.instance());
    } else if (r.isPath()) {
      out += objectPathToXml(r.path());
    } else {
      out += valueToXml(r.value());
    }
    out += "\n";
  }
  return out + "</IRETURNVALUE>\n";
}

}  // namespace zeda::host
