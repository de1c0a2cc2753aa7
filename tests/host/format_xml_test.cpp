// CIM-XML (DSP0201) output of every CIM type, with escaping.
#include <gtest/gtest.h>

#include "sample_values.hpp"
#include "zeda/host/format.hpp"

namespace zeda::test {

using namespace zeda::host;

namespace {
const char* kOtherPath =
    "<INSTANCEPATH><NAMESPACEPATH><HOST>localhost</HOST><LOCALNAMESPACEPATH><NAMESPACE "
    "NAME=\"root\"/>"
    "<NAMESPACE NAME=\"cimv2\"/></LOCALNAMESPACEPATH></NAMESPACEPATH><INSTANCENAME "
    "CLASSNAME=\"ZEDA_Other\">"
    "<KEYBINDING NAME=\"ID\"><KEYVALUE VALUETYPE=\"string\" "
    "TYPE=\"string\">o&quot;1</KEYVALUE></KEYBINDING>"
    "</INSTANCENAME></INSTANCEPATH>";
}  // namespace

TEST(FormatXml, EveryType) {
  const std::string expected =
      std::string(
          "<VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME=\"ZEDA_Sample\">"
          "<KEYBINDING NAME=\"InstanceID\"><KEYVALUE VALUETYPE=\"string\" "
          "TYPE=\"string\">s&lt;1&gt;"
          "</KEYVALUE></KEYBINDING></INSTANCENAME><INSTANCE CLASSNAME=\"ZEDA_Sample\">"
          "<PROPERTY NAME=\"InstanceID\" TYPE=\"string\"><VALUE>s&lt;1&gt;</VALUE></PROPERTY>"
          "<PROPERTY NAME=\"Name\" TYPE=\"string\"><VALUE>Disk &quot;one&quot; &amp; "
          "&lt;two&gt;</VALUE></PROPERTY>"
          "<PROPERTY NAME=\"Flag\" TYPE=\"boolean\"><VALUE>TRUE</VALUE></PROPERTY>"
          "<PROPERTY NAME=\"U8\" TYPE=\"uint8\"><VALUE>200</VALUE></PROPERTY>"
          "<PROPERTY NAME=\"U16\" TYPE=\"uint16\"><VALUE>65535</VALUE></PROPERTY>"
          "<PROPERTY NAME=\"U32\" TYPE=\"uint32\"><VALUE>4294967295</VALUE></PROPERTY>"
          "<PROPERTY NAME=\"U64\" TYPE=\"uint64\"><VALUE>18446744073709551615</VALUE></PROPERTY>"
          "<PROPERTY NAME=\"S8\" TYPE=\"sint8\"><VALUE>-128</VALUE></PROPERTY>"
          "<PROPERTY NAME=\"S16\" TYPE=\"sint16\"><VALUE>-32768</VALUE></PROPERTY>"
          "<PROPERTY NAME=\"S32\" TYPE=\"sint32\"><VALUE>-2147483648</VALUE></PROPERTY>"
          "<PROPERTY NAME=\"S64\" TYPE=\"sint64\"><VALUE>-9223372036854775808</VALUE></PROPERTY>"
          "<PROPERTY NAME=\"R32\" TYPE=\"real32\"><VALUE>1.5</VALUE></PROPERTY>"
          "<PROPERTY NAME=\"R64\" TYPE=\"real64\"><VALUE>-0.25</VALUE></PROPERTY>"
          "<PROPERTY NAME=\"Stamp\" "
          "TYPE=\"datetime\"><VALUE>20240229123456.789012+000</VALUE></PROPERTY>"
          "<PROPERTY.REFERENCE NAME=\"Ref\" REFERENCECLASS=\"ZEDA_Other\"><VALUE.REFERENCE>") +
      kOtherPath +
      "</VALUE.REFERENCE></PROPERTY.REFERENCE>"
      "<PROPERTY.ARRAY NAME=\"U16A\" "
      "TYPE=\"uint16\"><VALUE.ARRAY><VALUE>1</VALUE><VALUE>2</VALUE><VALUE>3</VALUE>"
      "</VALUE.ARRAY></PROPERTY.ARRAY>"
      "<PROPERTY.ARRAY NAME=\"StrA\" "
      "TYPE=\"string\"><VALUE.ARRAY><VALUE>a</VALUE><VALUE>b&quot;c</VALUE>"
      "</VALUE.ARRAY></PROPERTY.ARRAY>"
      "<PROPERTY.ARRAY NAME=\"U64A\" "
      "TYPE=\"uint64\"><VALUE.ARRAY><VALUE>18446744073709551615</VALUE>"
      "<VALUE>0</VALUE></VALUE.ARRAY></PROPERTY.ARRAY>"
      "<PROPERTY NAME=\"NullStr\" TYPE=\"string\"></PROPERTY>"
      "</INSTANCE></VALUE.NAMEDINSTANCE>";
  EXPECT_EQ(instanceToXml(sampleInstance()), expected);
}

TEST(FormatXml, ObjectPathWithTypedKeys) {
  const ObjectPath p(
      kNamespace, "ZEDA_A",
      {{"N", Value::uint16(3)}, {"B", Value::boolean(false)}, {"S", Value::string("x")}});
  EXPECT_EQ(
      objectPathToXml(p),
      "<VALUE.OBJECTPATH><INSTANCEPATH><NAMESPACEPATH><HOST>localhost</HOST><LOCALNAMESPACEPATH>"
      "<NAMESPACE NAME=\"root\"/><NAMESPACE NAME=\"cimv2\"/></LOCALNAMESPACEPATH></NAMESPACEPATH>"
      "<INSTANCENAME CLASSNAME=\"ZEDA_A\">"
      "<KEYBINDING NAME=\"N\"><KEYVALUE VALUETYPE=\"numeric\" "
      "TYPE=\"uint16\">3</KEYVALUE></KEYBINDING>"
      "<KEYBINDING NAME=\"B\"><KEYVALUE VALUETYPE=\"boolean\" "
      "TYPE=\"boolean\">FALSE</KEYVALUE></KEYBINDING>"
      "<KEYBINDING NAME=\"S\"><KEYVALUE VALUETYPE=\"string\" "
      "TYPE=\"string\">x</KEYVALUE></KEYBINDING>"
      "</INSTANCENAME></INSTANCEPATH></VALUE.OBJECTPATH>");
}

TEST(FormatXml, OutcomeIsOneDocument) {
  Outcome out;
  out.results.emplace_back(ObjectPath(kNamespace, "ZEDA_A"));
  out.results.emplace_back(Value::uint32(7));
  const std::string text = toXml(out);
  EXPECT_EQ(text.rfind("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<IRETURNVALUE>\n", 0), 0u);
  EXPECT_NE(text.find("<VALUE.OBJECTPATH>"), std::string::npos);
  EXPECT_NE(text.find("<VALUE>7</VALUE>\n</IRETURNVALUE>\n"), std::string::npos);
}

TEST(FormatXml, ControlCharactersAndBytesThatAreNotUtf8StayWellFormed) {
  // Tab, line feed and carriage return as character references, so that
  // neither end-of-line nor attribute-value normalisation alters them; other
  // control characters (no XML 1.0 character) and bytes that are not UTF-8
  // become U+FFFD.
  const std::string r = "\xEF\xBF\xBD";
  EXPECT_EQ(valueToXml(Value::string("a\tb\nc\rd")), "<VALUE>a&#9;b&#10;c&#13;d</VALUE>");
  EXPECT_EQ(valueToXml(Value::string(std::string("x\x01y\0z", 5))),
            "<VALUE>x" + r + "y" + r + "z</VALUE>");
  EXPECT_EQ(valueToXml(Value::string("\xff\xc3(\xe2\x82")),
            "<VALUE>" + r + r + "(" + r + "</VALUE>");
  // Well-formed UTF-8 passes unchanged.
  EXPECT_EQ(valueToXml(Value::string("\xc3\xa9\xe2\x82\xac\xf0\x9f\x92\xbe")),
            "<VALUE>\xc3\xa9\xe2\x82\xac\xf0\x9f\x92\xbe</VALUE>");
  const std::string path =
      objectPathToXml(ObjectPath(kNamespace, "ZEDA_A", {{"K", Value::string("1\n2")}}));
  EXPECT_NE(path.find("<KEYVALUE VALUETYPE=\"string\" TYPE=\"string\">1&#10;2</KEYVALUE>"),
            std::string::npos)
      << path;
}

}  // namespace zeda::test
