// CmpiData and CmpiString: typed values, type-checked conversions.
#include <gtest/gtest.h>

#include <limits>

#include "CmpiCpp.h"
#include "FakeBroker.h"
#include "Names.h"
#include "ThrownStatus.h"

namespace zeda::test {
namespace {

class DataTest : public ::testing::Test {
 protected:
  fake::Broker mb;
  CmpiBrokerScope scope{mb.enc()};
};

}  // namespace

TEST_F(DataTest, DefaultIsANullValueOfTypeNull) {
  const CmpiData d;
  EXPECT_EQ(d.getType(), CMPI_null);
  EXPECT_TRUE(d.isNullValue());
  EXPECT_FALSE(d.isArray());
}

TEST_F(DataTest, NumbersKeepTheirTypeAndValue) {
  EXPECT_EQ(CmpiData(CMPIUint16{7}).getType(), CMPI_uint16);
  EXPECT_EQ(static_cast<CMPIUint16>(CmpiData(CMPIUint16{7})), 7);
  EXPECT_EQ(CmpiData(CMPIUint32{70000}).getType(), CMPI_uint32);
  EXPECT_EQ(static_cast<CMPIUint32>(CmpiData(CMPIUint32{70000})), 70000u);
  const CMPIUint64 big = std::numeric_limits<CMPIUint64>::max();
  EXPECT_EQ(CmpiData(big).getType(), CMPI_uint64);
  EXPECT_EQ(static_cast<CMPIUint64>(CmpiData(big)), big);
  EXPECT_EQ(static_cast<CMPISint8>(CmpiData(CMPISint8{-3})), -3);
  EXPECT_EQ(static_cast<CMPISint16>(CmpiData(CMPISint16{-300})), -300);
  EXPECT_EQ(static_cast<CMPISint32>(CmpiData(CMPISint32{-70000})), -70000);
  EXPECT_EQ(static_cast<CMPISint64>(CmpiData(CMPISint64{-5000000000LL})), -5000000000LL);
  EXPECT_EQ(static_cast<CMPIUint8>(CmpiData(CMPIUint8{200})), 200);
  EXPECT_FLOAT_EQ(static_cast<CMPIReal32>(CmpiData(CMPIReal32{1.5f})), 1.5f);
  EXPECT_DOUBLE_EQ(static_cast<CMPIReal64>(CmpiData(CMPIReal64{2.25})), 2.25);
  EXPECT_EQ(CmpiData(CMPIReal64{2.25}).getType(), CMPI_real64);
  EXPECT_EQ(CmpiData(CMPISint8{1}).getType(), CMPI_sint8);
}

TEST_F(DataTest, MismatchNamesExpectedAndActualType) {
  const CmpiData d(CMPIUint16{7});
  const CmpiStatus s = thrownBy([&] { static_cast<void>(static_cast<CMPIUint32>(d)); });
  EXPECT_EQ(s.rc(), CMPI_RC_ERR_TYPE_MISMATCH);
  EXPECT_NE(messageOf(s).find("expected uint32"), std::string::npos) << messageOf(s);
  EXPECT_NE(messageOf(s).find("got uint16"), std::string::npos) << messageOf(s);

  const CmpiStatus asText = thrownBy([&] { static_cast<void>(static_cast<const char*>(d)); });
  EXPECT_EQ(asText.rc(), CMPI_RC_ERR_TYPE_MISMATCH);
  EXPECT_NE(messageOf(asText).find("expected string"), std::string::npos) << messageOf(asText);
}

TEST_F(DataTest, EveryNumberConversionChecksTheType) {
  const CmpiData text("x");
  EXPECT_EQ(thrownBy([&] { static_cast<void>(static_cast<CMPIUint8>(text)); }).rc(),
            CMPI_RC_ERR_TYPE_MISMATCH);
  EXPECT_EQ(thrownBy([&] { static_cast<void>(static_cast<CMPISint8>(text)); }).rc(),
            CMPI_RC_ERR_TYPE_MISMATCH);
  EXPECT_EQ(thrownBy([&] { static_cast<void>(static_cast<CMPIUint16>(text)); }).rc(),
            CMPI_RC_ERR_TYPE_MISMATCH);
  EXPECT_EQ(thrownBy([&] { static_cast<void>(static_cast<CMPISint16>(text)); }).rc(),
            CMPI_RC_ERR_TYPE_MISMATCH);
  EXPECT_EQ(thrownBy([&] { static_cast<void>(static_cast<CMPIUint32>(text)); }).rc(),
            CMPI_RC_ERR_TYPE_MISMATCH);
  EXPECT_EQ(thrownBy([&] { static_cast<void>(static_cast<CMPISint32>(text)); }).rc(),
            CMPI_RC_ERR_TYPE_MISMATCH);
  EXPECT_EQ(thrownBy([&] { static_cast<void>(static_cast<CMPIUint64>(text)); }).rc(),
            CMPI_RC_ERR_TYPE_MISMATCH);
  EXPECT_EQ(thrownBy([&] { static_cast<void>(static_cast<CMPISint64>(text)); }).rc(),
            CMPI_RC_ERR_TYPE_MISMATCH);
  EXPECT_EQ(thrownBy([&] { static_cast<void>(static_cast<CMPIReal32>(text)); }).rc(),
            CMPI_RC_ERR_TYPE_MISMATCH);
  EXPECT_EQ(thrownBy([&] { static_cast<void>(static_cast<CMPIReal64>(text)); }).rc(),
            CMPI_RC_ERR_TYPE_MISMATCH);
  EXPECT_EQ(thrownBy([&] { static_cast<void>(static_cast<CmpiObjectPath>(text)); }).rc(),
            CMPI_RC_ERR_TYPE_MISMATCH);
  EXPECT_EQ(thrownBy([&] { static_cast<void>(static_cast<CmpiInstance>(text)); }).rc(),
            CMPI_RC_ERR_TYPE_MISMATCH);
  EXPECT_EQ(thrownBy([&] { static_cast<void>(static_cast<CmpiDateTime>(text)); }).rc(),
            CMPI_RC_ERR_TYPE_MISMATCH);
  EXPECT_EQ(thrownBy([&] { static_cast<void>(static_cast<CmpiArray>(text)); }).rc(),
            CMPI_RC_ERR_TYPE_MISMATCH);
  EXPECT_EQ(thrownBy([&] { static_cast<void>(text.getBoolean()); }).rc(),
            CMPI_RC_ERR_TYPE_MISMATCH);
}

TEST_F(DataTest, TextBecomesAStringMadeByTheBroker) {
  const CmpiData d("disk 1");
  EXPECT_EQ(d.getType(), CMPI_string);
  EXPECT_FALSE(d.isNullValue());
  EXPECT_EQ(mb.strings.size(), 1u);
  EXPECT_STREQ(static_cast<const char*>(d), "disk 1");
  EXPECT_EQ(d.getString(), "disk 1");
  EXPECT_TRUE(static_cast<CmpiString>(d).equals("disk 1"));
  EXPECT_EQ(CmpiData(std::string("abc")).getString(), "abc");
}

TEST_F(DataTest, NullTextIsANullString) {
  const CmpiData d(static_cast<const char*>(nullptr));
  EXPECT_EQ(d.getType(), CMPI_string);
  EXPECT_TRUE(d.isNullValue());
  const CmpiStatus s = thrownBy([&] { static_cast<void>(d.getString()); });
  EXPECT_EQ(s.rc(), CMPI_RC_ERR_NO_SUCH_PROPERTY);
  EXPECT_NE(messageOf(s).find("null"), std::string::npos) << messageOf(s);
}

TEST_F(DataTest, CharsValuesConvertLikeStrings) {
  CMPIData c{};
  c.type = CMPI_chars;
  c.state = CMPI_goodValue;
  char text[] = "plain";
  c.value.chars = text;
  const CmpiData d(c);
  EXPECT_STREQ(static_cast<const char*>(d), "plain");
  EXPECT_EQ(d.getString(), "plain");
  const CmpiString copy = d;
  EXPECT_STREQ(copy.charPtr(), "plain");
  EXPECT_NE(copy.charPtr(), text);
}

TEST_F(DataTest, NullAndMissingValuesDoNotConvert) {
  const CmpiStatus fromDefault =
      thrownBy([] { static_cast<void>(static_cast<const char*>(CmpiData())); });
  EXPECT_EQ(fromDefault.rc(), CMPI_RC_ERR_NO_SUCH_PROPERTY);

  CMPIData missing{};
  missing.type = CMPI_null;
  missing.state = CMPI_notFound;
  const CmpiStatus notFound =
      thrownBy([&] { static_cast<void>(static_cast<CMPIUint16>(CmpiData(missing))); });
  EXPECT_EQ(notFound.rc(), CMPI_RC_ERR_NO_SUCH_PROPERTY);
  EXPECT_NE(messageOf(notFound).find("not found"), std::string::npos) << messageOf(notFound);

  CMPIData nullRef{};
  nullRef.type = CMPI_ref;
  nullRef.state = CMPI_nullValue;
  const CmpiStatus ref =
      thrownBy([&] { static_cast<void>(static_cast<CmpiObjectPath>(CmpiData(nullRef))); });
  EXPECT_EQ(ref.rc(), CMPI_RC_ERR_NO_SUCH_PROPERTY);
  EXPECT_NE(messageOf(ref).find("reference"), std::string::npos) << messageOf(ref);

  CMPIData nullNumber{};
  nullNumber.type = CMPI_uint32;
  nullNumber.state = CMPI_nullValue;
  EXPECT_EQ(
      thrownBy([&] { static_cast<void>(static_cast<CMPIUint32>(CmpiData(nullNumber))); }).rc(),
      CMPI_RC_ERR_NO_SUCH_PROPERTY);
}

TEST_F(DataTest, BooleansComeFromCmpiBooleanData) {
  const CmpiBooleanData yes(true);
  const CmpiBooleanData no(false);
  EXPECT_EQ(yes.getType(), CMPI_boolean);
  EXPECT_TRUE(yes.getBoolean());
  EXPECT_FALSE(no.getBoolean());
  // CMPIBoolean and CMPIUint8 are one C type; the uint8 conversion takes both.
  EXPECT_EQ(static_cast<CMPIUint8>(yes), 1);
  EXPECT_EQ(static_cast<CMPIUint8>(no), 0);
  EXPECT_EQ(CmpiData(CMPIUint8{1}).getType(), CMPI_uint8);
  EXPECT_EQ(thrownBy([] { static_cast<void>(CmpiData(CMPIUint8{1}).getBoolean()); }).rc(),
            CMPI_RC_ERR_TYPE_MISMATCH);
}

TEST_F(DataTest, ObjectPathIsAReference) {
  const CmpiObjectPath path(kNamespace, "ZEDA_DiskDrive");
  const CmpiData d(path);
  EXPECT_EQ(d.getType(), CMPI_ref);
  const CmpiObjectPath back = d;
  EXPECT_EQ(back.getEnc(), path.getEnc());
  EXPECT_EQ(CmpiData(CmpiObjectPath()).getType(), CMPI_ref);
  EXPECT_TRUE(CmpiData(CmpiObjectPath()).isNullValue());
}

TEST_F(DataTest, EncapsulatedValuesRoundTrip) {
  const CmpiObjectPath path(kNamespace, "C");
  const CmpiInstance inst(path);
  const CmpiData di(inst);
  EXPECT_EQ(di.getType(), CMPI_instance);
  EXPECT_EQ(static_cast<CmpiInstance>(di).getEnc(), inst.getEnc());

  const CmpiDateTime when(5, true);
  const CmpiData dd(when);
  EXPECT_EQ(dd.getType(), CMPI_dateTime);
  EXPECT_EQ(static_cast<CmpiDateTime>(dd).getDateTime(), 5u);

  const CmpiArray numbers(3, CMPI_uint16);
  const CmpiData da(numbers);
  EXPECT_EQ(da.getType(), CMPI_uint16A);
  EXPECT_TRUE(da.isArray());
  EXPECT_EQ(static_cast<CmpiArray>(da).size(), 3u);
}

TEST_F(DataTest, TypeNamesOfArraysInMessages) {
  const CmpiArray strings(1, CMPI_string);
  const CmpiData d(strings);
  const CmpiStatus s = thrownBy([&] { static_cast<void>(static_cast<CMPIUint16>(d)); });
  EXPECT_EQ(s.rc(), CMPI_RC_ERR_TYPE_MISMATCH);
  EXPECT_NE(messageOf(s).find("got string[]"), std::string::npos) << messageOf(s);
}

TEST_F(DataTest, StringComparisons) {
  const CmpiString s("ZEDA_DiskDrive");
  EXPECT_TRUE(s.equals("ZEDA_DiskDrive"));
  EXPECT_FALSE(s.equals("zeda_diskdrive"));
  EXPECT_TRUE(s.equalsIgnoreCase("zeda_diskdrive"));
  EXPECT_FALSE(s.equalsIgnoreCase("ZEDA_Disk"));
  EXPECT_FALSE(s.equals(nullptr));
  const CmpiString none;
  EXPECT_TRUE(none.isNull());
  EXPECT_EQ(none.charPtr(), nullptr);
  EXPECT_TRUE(none.equals(nullptr));
  EXPECT_FALSE(none.equals(""));
  EXPECT_TRUE(CmpiString(static_cast<const char*>(nullptr)).isNull());
}

TEST_F(DataTest, StringWithoutCharPtrEntryIsNotSupported) {
  const CmpiString s("x");
  mb.stringFT.getCharPtr = nullptr;
  EXPECT_EQ(thrownBy([&] { static_cast<void>(s.charPtr()); }).rc(), CMPI_RC_ERR_NOT_SUPPORTED);
}

TEST_F(DataTest, StringWithNullCharactersHasNoStdString) {
  CMPIData d{};
  d.type = CMPI_string;
  d.state = CMPI_goodValue;
  d.value.string = mb.string(nullptr);
  EXPECT_EQ(static_cast<const char*>(CmpiData(d)), nullptr);
  EXPECT_EQ(thrownBy([&] { static_cast<void>(CmpiData(d).getString()); }).rc(),
            CMPI_RC_ERR_NO_SUCH_PROPERTY);
}

}  // namespace zeda::test
