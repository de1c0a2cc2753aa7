// The instance with every CIM zeda::host::type that the output-format tests print.
#pragma once

#include <cstdint>

#include "Names.h"
#include "zeda/host/instance.hpp"

namespace zeda::test {

inline zeda::host::ObjectPath samplePath() {
  using zeda::host::Value;
  return zeda::host::ObjectPath(kNamespace, "ZEDA_Sample", {{"InstanceID", Value::string("s<1>")}});
}

inline zeda::host::Instance sampleInstance() {
  using zeda::host::Value;
  zeda::host::Instance i(samplePath());
  i.set("InstanceID", Value::string("s<1>"))
      .set("Name", Value::string("Disk \"one\" & <two>"))
      .set("Flag", Value::boolean(true))
      .set("U8", Value::uint8(200))
      .set("U16", Value::uint16(65535))
      .set("U32", Value::uint32(4294967295u))
      .set("U64", Value::uint64(UINT64_MAX))
      .set("S8", Value::sint8(-128))
      .set("S16", Value::sint16(-32768))
      .set("S32", Value::sint32(INT32_MIN))
      .set("S64", Value::sint64(INT64_MIN))
      .set("R32", Value::real32(1.5f))
      .set("R64", Value::real64(-0.25))
      .set("Stamp", Value::dateTime("20240229123456.789012+000"))
      .set("Ref", Value::reference(zeda::host::ObjectPath(kNamespace, "ZEDA_Other",
                                                          {{"ID", Value::string("o\"1")}})))
      .set("U16A", Value::uint16s({1, 2, 3}))
      .set("StrA", Value::strings({"a", "b\"c"}))
      .set("U64A", Value::uint64s({UINT64_MAX, 0}))
      .set("NullStr", Value::null(zeda::host::type::string));
  return i;
}

}  // namespace zeda::test
