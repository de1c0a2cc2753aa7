// Printing operation outcomes the way zeda-cim shows them: JSON, MOF and
// CIM-XML (DSP0201).
#pragma once

#include <string>

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
std::string toJson(const std::string& operation, const Outcome& outcome);
std::string valueToJson(const Value& v);          // the "value" part only
std::string objectPathToJson(const ObjectPath& p);
std::string instanceToJson(const Instance& i);

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
