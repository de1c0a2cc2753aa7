// MOF output of every CIM type; paths in WBEM URI form.
#include <gtest/gtest.h>

#include "sample_values.hpp"
#include "zeda/host/format.hpp"

namespace zeda::test {

using namespace zeda::host;

TEST(FormatMof, EveryType) {
  EXPECT_EQ(instanceToMof(sampleInstance()),
            "instance of ZEDA_Sample {\n"
            "    InstanceID = \"s<1>\";\n"
            "    Name = \"Disk \\\"one\\\" & <two>\";\n"
            "    Flag = TRUE;\n"
            "    U8 = 200;\n"
            "    U16 = 65535;\n"
            "    U32 = 4294967295;\n"
            "    U64 = 18446744073709551615;\n"
            "    S8 = -128;\n"
            "    S16 = -32768;\n"
            "    S32 = -2147483648;\n"
            "    S64 = -9223372036854775808;\n"
            "    R32 = 1.5;\n"
            "    R64 = -0.25;\n"
            "    Stamp = \"20240229123456.789012+000\";\n"
            "    Ref = \"root/cimv2:ZEDA_Other.ID=\\\"o\\\\\\\"1\\\"\";\n"
            "    U16A = {1, 2, 3};\n"
            "    StrA = {\"a\", \"b\\\"c\"};\n"
            "    U64A = {18446744073709551615, 0};\n"
            "    NullStr = NULL;\n"
            "};\n");
}

TEST(FormatMof, OutcomeWithPathsAndInstances) {
  Outcome out;
  out.results.emplace_back(ObjectPath(kNamespace, "ZEDA_A", {{"K", Value::string("1")}}));
  out.results.emplace_back(
      Instance(ObjectPath(kNamespace, "ZEDA_B"), {{"P", Value::boolean(false)}}));
  out.results.emplace_back(Instance(ObjectPath(kNamespace, "ZEDA_C")));
  EXPECT_EQ(toMof(out),
            "root/cimv2:ZEDA_A.K=\"1\"\n"
            "\ninstance of ZEDA_B {\n    P = FALSE;\n};\n"
            "\ninstance of ZEDA_C {\n};\n");
}

TEST(FormatMof, ControlCharactersAreEscaped) {
  EXPECT_EQ(valueToMof(Value::string("a\nb\tc\\")), "\"a\\nb\\tc\\\\\"");
}

}  // namespace zeda::test
