// Printing operation outcomes the way zeda-cim shows them: JSON, MOF,
// CIM-XML (DSP0201) and text tables.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

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

// Tables for people: one bordered table per class, titled
// "Instances of NAMESPACE:Class" with one row per instance and one column per
// property (the union over the class's instances, in first-seen order, names
// compared without regard to case; an empty cell where an instance lacks the
// property), or "Instance names of NAMESPACE:Class" with one row per path and
// one column per key; plain values in one table "Values" (Type, Value).
// Tables come in the order of their first result, rows in the order of the
// results, tables apart by one blank line; no results: empty text.
std::string toTable(const std::vector<ResultItem>& results);
// The text of one cell: NULL, MOF literals for strings (quoted and escaped,
// so a cell is one line), numbers, booleans and datetimes, {a, b} for
// arrays, a reference as its path in WBEM URI form (unquoted), an embedded
// instance as its MOF on one line.
std::string tableCell(const Value& v);
// The bordered grid: a rule, the header row, a rule, the rows and a rule
// (no closing rule when there are no rows). Columns are as wide as their
// widest cell in terminal columns (East Asian wide characters count two);
// cells are never cut or wrapped. Bytes that are not UTF-8 become U+FFFD,
// control characters \xNN.
std::string textTable(const std::vector<std::string>& headers,
                      const std::vector<std::vector<std::string>>& rows);

}  // namespace zeda::host
