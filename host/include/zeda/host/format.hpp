// Printing operation outcomes the way zeda-cim shows them: JSON, MOF and
// CIM-XML (DSP0201).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "zeda/host/instance.hpp"
#include "zeda/host/object_path.hpp"
#include "zeda/host/outcome.hpp"
#include "zeda/host/value.hpp"

namespace zeda::host {

// One JSON document:
// {"operation": op, "status": {"code": n, "message": s|null}, "done": b, "results": [...]}
// Instances: {"path": {...}, "properties": [{"name","type","value"}...]};
// paths: {"namespace","classname","keys": [{"name","type","value"}...]};
// plain values: {"type", "value"}. Integers are exact JSON integers.
// Written as text (no document tree), one result a line; every string is
// valid UTF-8 (a byte that is not becomes U+FFFD).
std::string toJson(const std::string& operation, const Outcome& outcome);
std::string valueToJson(const Value& v);       // the "value" part only
std::string typedValueToJson(const Value& v);  // a plain result: {"type","value"}
std::string objectPathToJson(const ObjectPath& p);
std::string instanceToJson(const Instance& i);
std::string statusToJson(const Status& status);  // {"code": n, "message": s|null}
std::string jsonQuote(std::string_view text);    // a JSON string literal
// Length of the well-formed UTF-8 sequence at text[i] (1 for an ASCII
// byte); 0 when the bytes there are not UTF-8.
std::size_t utf8Length(std::string_view text, std::size_t i);

// MOF: "instance of Class {\n    Prop = value;\n};\n" per instance, paths in
// WBEM URI form one per line, plain values in MOF literal syntax.
std::string toMof(const Outcome& outcome);
std::string instanceToMof(const Instance& i);
std::string valueToMof(const Value& v);

// CIM-XML: VALUE.NAMEDINSTANCE per instance, VALUE.OBJECTPATH per path,
// VALUE / VALUE.ARRAY / VALUE.REFERENCE for plain values; text escaped.
std::string toXml(const Outcome& outcome);
std::string instanceToXml(const Instance& i);
std::string objectPathToXml(const ObjectPath& p);
std::string valueToXml(const Value& v);

}  // namespace zeda::host
