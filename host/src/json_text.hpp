// JSON text written straight into a string: no document tree in between.
// Objects are written compactly (no spaces), members in a fixed order.
#pragma once

#include <string>
#include <string_view>

#include "zeda/host/instance.hpp"
#include "zeda/host/object_path.hpp"
#include "zeda/host/value.hpp"

namespace zeda::host::detail {

// "text" with " \ and control characters escaped; each byte that is not part
// of a well-formed UTF-8 sequence becomes U+FFFD, so the text is always valid.
void appendJsonString(std::string& out, std::string_view s);
// The JSON form of a value: null, true/false, exact integers, shortest reals,
// strings, paths and instances as objects, arrays.
void appendJsonValue(std::string& out, const Value& v);
// {"namespace":...,"classname":...,"keys":[{"name","type","value"}...]}
void appendJsonPath(std::string& out, const ObjectPath& p);
// {"path":{...},"properties":[{"name","type","value"}...]}
void appendJsonInstance(std::string& out, const Instance& i);
// {"type":...,"value":...}: a plain value handed to returnData.
void appendJsonTypedValue(std::string& out, const Value& v);

}  // namespace zeda::host::detail
