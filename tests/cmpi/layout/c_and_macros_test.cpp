// The C99 unit and the convenience macros: C and C++ must compute one layout,
// a plain-C MI built with CMInstanceMIStub must place each function in its
// slot, and the macros must route each call to the right table entry with
// the arguments unchanged.

#include <cmpimacs.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <map>
#include <string>

#include "cmpi_layout_c_facts.h"

namespace zeda::test {
namespace {

#define FACT(T, m) \
  { #T "." #m, offsetof(T, m) }
#define SIZE_FACT(T) \
  { "sizeof " #T, sizeof(T) }

TEST(CmpiCLayout, CAndCxxAgreeOnEveryReportedOffset) {
  const std::map<std::string, std::size_t> cxx = {
      SIZE_FACT(CMPIValue),
      SIZE_FACT(CMPIData),
      SIZE_FACT(CMPIStatus),
      SIZE_FACT(CMPIBroker),
      SIZE_FACT(CMPIBrokerFT),
      SIZE_FACT(CMPIBrokerEncFT),
      SIZE_FACT(CMPIBrokerExtFT),
      SIZE_FACT(CMPIBrokerMemFT),
      SIZE_FACT(CMPIContextFT),
      SIZE_FACT(CMPIResultFT),
      SIZE_FACT(CMPIErrorFT),
      SIZE_FACT(CMPIInstanceFT),
      SIZE_FACT(CMPIObjectPathFT),
      SIZE_FACT(CMPISelectExpFT),
      SIZE_FACT(CMPISelectCondFT),
      SIZE_FACT(CMPISubCondFT),
      SIZE_FACT(CMPIPredicateFT),
      SIZE_FACT(CMPIArgsFT),
      SIZE_FACT(CMPIStringFT),
      SIZE_FACT(CMPIArrayFT),
      SIZE_FACT(CMPIEnumerationFT),
      SIZE_FACT(CMPIDateTimeFT),
      SIZE_FACT(CMPIInstanceMIFT),
      SIZE_FACT(CMPIAssociationMIFT),
      SIZE_FACT(CMPIMethodMIFT),
      SIZE_FACT(CMPIPropertyMIFT),
      SIZE_FACT(CMPIIndicationMIFT),
      FACT(CMPIData, value),
      FACT(CMPIStatus, msg),
      FACT(CMPIBroker, mft),
      FACT(CMPIBrokerFT, brokerName),
      FACT(CMPIBrokerFT, deliverIndication),
      FACT(CMPIBrokerFT, getProperty),
      FACT(CMPIBrokerEncFT, newString),
      FACT(CMPIBrokerEncFT, trace),
      FACT(CMPIBrokerEncFT, getMessage2),
      FACT(CMPIBrokerExtFT, signalCondition),
      FACT(CMPIBrokerMemFT, freeSelectExp),
      FACT(CMPIContextFT, getEntry),
      FACT(CMPIContextFT, addEntry),
      FACT(CMPIResultFT, returnDone),
      FACT(CMPIResultFT, returnError),
      FACT(CMPIErrorFT, setMessageArguments),
      FACT(CMPIInstanceFT, setPropertyFilter),
      FACT(CMPIInstanceFT, setPropertyWithOrigin),
      FACT(CMPIObjectPathFT, getKey),
      FACT(CMPIObjectPathFT, toString),
      FACT(CMPIArrayFT, setElementAt),
      FACT(CMPIStringFT, getCharPtr),
      FACT(CMPIInstanceMIFT, miName),
      FACT(CMPIInstanceMIFT, execQuery),
      FACT(CMPIAssociationMIFT, referenceNames),
      FACT(CMPIMethodMIFT, invokeMethod),
      FACT(CMPIPropertyMIFT, setPropertyWithOrigin),
      FACT(CMPIIndicationMIFT, mustPoll),
      FACT(CMPIIndicationMIFT, disableIndications),
  };

  std::size_t count = 0;
  const cmpi_c_fact* facts = cmpi_layout_c_facts(&count);
  ASSERT_EQ(count, cxx.size());
  for (std::size_t i = 0; i < count; ++i) {
    const auto it = cxx.find(facts[i].what);
    ASSERT_NE(it, cxx.end()) << facts[i].what;
    EXPECT_EQ(facts[i].value, it->second) << facts[i].what;
  }
}

// ---- a minimal object manager: just enough tables for the macros ---------

struct Recorder {
  std::string lastCall;
  std::string text;
  CMPIType type = CMPI_null;
  const CMPIValue* value = nullptr;
};
Recorder rec;

CMPIString theString{const_cast<char*>("disk0"), nullptr};

CMPIString* NewString(const CMPIBroker*, const char* data, CMPIStatus* rc) {
  rec.lastCall = "newString";
  rec.text = data;
  if (rc != nullptr) {
    rc->rc = CMPI_RC_OK;
    rc->msg = nullptr;
  }
  return &theString;
}

char* GetCharPtr(const CMPIString* s, CMPIStatus*) {
  rec.lastCall = "getCharPtr";
  return static_cast<char*>(s->hdl);
}

CMPIStatus SetProperty(const CMPIInstance*, const char* name, const CMPIValue* value,
                       CMPIType type) {
  rec.lastCall = "setProperty";
  rec.text = name;
  rec.value = value;
  rec.type = type;
  return CMPIStatus{CMPI_RC_OK, nullptr};
}

CMPIStatus ReturnData(const CMPIResult*, const CMPIValue* value, const CMPIType type) {
  rec.lastCall = "returnData";
  rec.value = value;
  rec.type = type;
  return CMPIStatus{CMPI_RC_OK, nullptr};
}

CMPIStatus ReturnDone(const CMPIResult*) {
  rec.lastCall = "returnDone";
  return CMPIStatus{CMPI_RC_OK, nullptr};
}

CMPIBrokerEncFT MakeEncFT() {
  CMPIBrokerEncFT ft{};
  ft.ftVersion = CMPIVersion200;
  ft.newString = NewString;
  return ft;
}
CMPIBrokerEncFT encFT = MakeEncFT();
CMPIBroker broker{nullptr, nullptr, &encFT, nullptr, nullptr};

CMPIStringFT stringFT{CMPIVersion200, nullptr, nullptr, GetCharPtr};

CMPIInstanceFT MakeInstanceFT() {
  CMPIInstanceFT ft{};
  ft.ftVersion = CMPIVersion200;
  ft.setProperty = SetProperty;
  return ft;
}
CMPIInstanceFT instanceFT = MakeInstanceFT();

CMPIResultFT MakeResultFT() {
  CMPIResultFT ft{};
  ft.ftVersion = CMPIVersion200;
  ft.returnData = ReturnData;
  ft.returnDone = ReturnDone;
  return ft;
}
CMPIResultFT resultFT = MakeResultFT();

class CmpiMacros : public ::testing::Test {
 protected:
  void SetUp() override {
    rec = Recorder{};
    theString.ft = &stringFT;
  }
};

CMPIStatus ReturnCode(int code) { CMReturn(code); }
CMPIStatus ReturnChars(const CMPIBroker* mb) { CMReturnWithChars(mb, CMPI_RC_ERR_FAILED, "boom"); }

TEST_F(CmpiMacros, ReturnBuildsTheStatus) {
  const CMPIStatus st = ReturnCode(CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(st.rc, CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_EQ(st.msg, nullptr);
}

TEST_F(CmpiMacros, ReturnWithCharsMakesTheMessageThroughTheBroker) {
  const CMPIStatus st = ReturnChars(&broker);
  EXPECT_EQ(st.rc, CMPI_RC_ERR_FAILED);
  EXPECT_EQ(st.msg, &theString);
  EXPECT_EQ(rec.lastCall, "newString");
  EXPECT_EQ(rec.text, "boom");
}

TEST_F(CmpiMacros, ReturnWithCharsWithoutBrokerHasNoMessage) {
  const CMPIStatus st = ReturnChars(nullptr);
  EXPECT_EQ(st.rc, CMPI_RC_ERR_FAILED);
  EXPECT_EQ(st.msg, nullptr);
  EXPECT_EQ(rec.lastCall, "");
}

TEST_F(CmpiMacros, SetStatusIgnoresANullStatus) {
  CMSetStatus(static_cast<CMPIStatus*>(nullptr), CMPI_RC_ERR_FAILED);
  CMPIStatus st{CMPI_RC_OK, &theString};
  CMSetStatus(&st, CMPI_RC_ERR_NOT_FOUND);
  EXPECT_EQ(st.rc, CMPI_RC_ERR_NOT_FOUND);
  EXPECT_EQ(st.msg, nullptr);
  CMSetStatusWithString(&st, CMPI_RC_ERR_FAILED, &theString);
  EXPECT_EQ(st.rc, CMPI_RC_ERR_FAILED);
  EXPECT_EQ(st.msg, &theString);
}

TEST_F(CmpiMacros, DataTests) {
  CMPIData data{};
  data.type = CMPI_uint16A;
  data.state = CMPI_keyValue;
  EXPECT_TRUE(CMIsArray(data));
  EXPECT_TRUE(CMIsKeyValue(data));
  EXPECT_FALSE(CMIsNullValue(data));
  data.type = CMPI_string;
  data.state = CMPI_nullValue;
  EXPECT_FALSE(CMIsArray(data));
  EXPECT_FALSE(CMIsKeyValue(data));
  EXPECT_TRUE(CMIsNullValue(data));
}

TEST_F(CmpiMacros, NullObjectMeansNullPointerOrNullHandle) {
  const CMPIString* none = nullptr;
  CMPIString empty{nullptr, &stringFT};
  EXPECT_TRUE(CMIsNullObject(none));
  EXPECT_TRUE(CMIsNullObject(&empty));
  EXPECT_FALSE(CMIsNullObject(&theString));
}

TEST_F(CmpiMacros, GetCharPtrGoesThroughTheTable) {
  EXPECT_STREQ(CMGetCharPtr(&theString), "disk0");
  EXPECT_EQ(rec.lastCall, "getCharPtr");
  EXPECT_STREQ(CMGetCharsPtr(&theString, nullptr), "disk0");
}

TEST_F(CmpiMacros, SetPropertyPassesCharsByThemselves) {
  CMPIInstance inst{&rec, &instanceFT};
  const char* text = "ZEDA_DeviceID";
  CMSetProperty(&inst, "DeviceID", text, CMPI_chars);
  EXPECT_EQ(rec.lastCall, "setProperty");
  EXPECT_EQ(rec.text, "DeviceID");
  EXPECT_EQ(static_cast<const void*>(rec.value), static_cast<const void*>(text));
  EXPECT_EQ(rec.type, CMPI_chars);

  const CMPIUint16 status = 2;
  CMSetProperty(&inst, "HealthState", &status, CMPI_uint16);
  EXPECT_EQ(rec.value->uint16, 2);
  EXPECT_EQ(rec.type, CMPI_uint16);
}

TEST_F(CmpiMacros, ResultMacros) {
  CMPIResult rslt{&rec, &resultFT};
  const CMPIUint64 size = 4000787030016ULL;
  CMReturnData(&rslt, &size, CMPI_uint64);
  EXPECT_EQ(rec.lastCall, "returnData");
  EXPECT_EQ(rec.value->uint64, size);
  EXPECT_EQ(rec.type, CMPI_uint64);
  CMReturnDone(&rslt);
  EXPECT_EQ(rec.lastCall, "returnDone");
}

// ---- the plain-C MI made with CMInstanceMIStub ---------------------------

TEST(CmpiCStub, FactoryReturnsTheTableAndKeepsTheBroker) {
  CMPIStatus st{CMPI_RC_ERR_FAILED, nullptr};
  CMPIInstanceMI* mi = CLayoutProbe_Create_InstanceMI(&broker, nullptr, &st);
  ASSERT_NE(mi, nullptr);
  EXPECT_EQ(st.rc, CMPI_RC_OK);
  EXPECT_EQ(cmpi_layout_c_broker(), &broker);
  ASSERT_NE(mi->ft, nullptr);
  EXPECT_EQ(mi->ft->ftVersion, 200);
  EXPECT_EQ(mi->ft->miVersion, 200);
  EXPECT_STREQ(mi->ft->miName, "instanceCLayoutProbe");
}

TEST(CmpiCStub, EachSlotReachesItsCFunction) {
  CMPIStatus st{};
  CMPIInstanceMI* mi = CLayoutProbe_Create_InstanceMI(&broker, nullptr, &st);
  CMPIResult rslt{&rec, &resultFT};
  const CMPIInstanceMIFT* ft = mi->ft;

  ft->cleanup(mi, nullptr, 0);
  EXPECT_EQ(cmpi_layout_c_last_call(), 1);
  ft->enumerateInstanceNames(mi, nullptr, &rslt, nullptr);
  EXPECT_EQ(cmpi_layout_c_last_call(), 2);
  ft->enumerateInstances(mi, nullptr, &rslt, nullptr, nullptr);
  EXPECT_EQ(cmpi_layout_c_last_call(), 3);
  st = ft->getInstance(mi, nullptr, &rslt, nullptr, nullptr);
  EXPECT_EQ(cmpi_layout_c_last_call(), 4);
  EXPECT_EQ(st.rc, CMPI_RC_ERR_NOT_FOUND);
  ft->createInstance(mi, nullptr, &rslt, nullptr, nullptr);
  EXPECT_EQ(cmpi_layout_c_last_call(), 5);
  ft->modifyInstance(mi, nullptr, &rslt, nullptr, nullptr, nullptr);
  EXPECT_EQ(cmpi_layout_c_last_call(), 6);
  ft->deleteInstance(mi, nullptr, &rslt, nullptr);
  EXPECT_EQ(cmpi_layout_c_last_call(), 7);
  ft->execQuery(mi, nullptr, &rslt, nullptr, "SELECT *", "WQL");
  EXPECT_EQ(cmpi_layout_c_last_call(), 8);
}

TEST(CmpiCStub, CMacrosWorkFromC) {
  rec = Recorder{};
  theString.ft = &stringFT;
  CMPIStatus st{};
  CMPIInstanceMI* mi = CLayoutProbe_Create_InstanceMI(&broker, nullptr, &st);
  CMPIResult rslt{&rec, &resultFT};

  st = mi->ft->enumerateInstances(mi, nullptr, &rslt, nullptr, nullptr);
  EXPECT_EQ(st.rc, CMPI_RC_OK);
  EXPECT_EQ(rec.lastCall, "returnDone");

  st = mi->ft->getInstance(mi, nullptr, &rslt, nullptr, nullptr);
  EXPECT_EQ(st.msg, &theString);
  EXPECT_EQ(rec.text, "no such disk");
}

}  // namespace
}  // namespace zeda::test
