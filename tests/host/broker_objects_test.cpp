// The encapsulated objects of the broker, driven through their raw CMPI
// function tables: property filters, key order, lifetimes, bad arguments.
#include <gtest/gtest.h>

#include "Sanitizers.h"
#include "host_fixture.hpp"
#include "sample_values.hpp"

namespace zeda::test {

using namespace zeda::host;

namespace {

// AddressSanitizer's report of a use of a poisoned (freed) face.
constexpr const char* kLateUseReport = "use-after-poison";

class BrokerObjects : public ::testing::Test {
 protected:
  Host host{testProvider()};
  const CMPIBroker* mb = host.broker();

  CMPIInstance* instance() { return host.makeInstance(Instance(ObjectPath(kNamespace, "ZEDA_F"))); }
  // An instance whose object path has the key K.
  CMPIInstance* keyedInstance() {
    return host.makeInstance(
        Instance(ObjectPath(kNamespace, "ZEDA_F", {{"K", Value::string("k1")}})));
  }

  static CMPIStatus setU16(CMPIInstance* ci, const char* name, CMPIUint16 v) {
    CMPIValue value;
    value.uint16 = v;
    return ci->ft->setProperty(ci, name, &value, CMPI_uint16);
  }
};

// The key list of setPropertyFilter is deprecated in the CMPI standard and
// ignored by the object manager: the filter keeps the properties of its
// property list and the keys of the instance's own object path.
TEST_F(BrokerObjects, PropertyFilterKeepsThePropertyListAndThePathKeys) {
  const char* props[] = {"A", nullptr};
  const char* keys[] = {"B", nullptr};  // no key of the path, not in the property list
  CMPIInstance* ci = keyedInstance();
  ASSERT_EQ(ci->ft->setPropertyFilter(ci, props, keys).rc, CMPI_RC_OK);
  EXPECT_EQ(setU16(ci, "B", 1).rc, CMPI_RC_OK);
  EXPECT_EQ(setU16(ci, "k", 2).rc, CMPI_RC_OK);
  EXPECT_EQ(setU16(ci, "a", 3).rc, CMPI_RC_OK);
  EXPECT_EQ(setU16(ci, "C", 4).rc, CMPI_RC_OK);
  const Instance got = readInstance(ci);
  EXPECT_EQ(got.names(), (std::vector<std::string>{"k", "a"}));
  CMPIStatus rc{};
  ci->ft->getProperty(ci, "B", &rc);
  EXPECT_EQ(rc.rc, CMPI_RC_ERR_NO_SUCH_PROPERTY);
}

TEST_F(BrokerObjects, PathKeysAreKeptWithANullOrEmptyKeyList) {
  const char* props[] = {"A", nullptr};
  const char* noKeys[] = {nullptr};
  for (const char** keys : {static_cast<const char**>(nullptr), noKeys}) {
    CMPIInstance* ci = keyedInstance();
    ASSERT_EQ(ci->ft->setPropertyFilter(ci, props, keys).rc, CMPI_RC_OK);
    setU16(ci, "B", 1);
    setU16(ci, "K", 2);
    setU16(ci, "A", 3);
    EXPECT_EQ(readInstance(ci).names(), (std::vector<std::string>{"K", "A"}));
  }
}

TEST_F(BrokerObjects, EmptyPropertyListKeepsOnlyThePathKeys) {
  const char* props[] = {nullptr};
  const char* keys[] = {"A", nullptr};
  CMPIInstance* ci = keyedInstance();
  ci->ft->setPropertyFilter(ci, props, keys);
  setU16(ci, "A", 1);
  setU16(ci, "K", 2);
  EXPECT_EQ(readInstance(ci).names(), (std::vector<std::string>{"K"}));
  // A path without keys: nothing is kept.
  CMPIInstance* keyless = instance();
  keyless->ft->setPropertyFilter(keyless, props, keys);
  setU16(keyless, "A", 1);
  setU16(keyless, "K", 2);
  EXPECT_TRUE(readInstance(keyless).names().empty());
}

TEST_F(BrokerObjects, TheFilterFollowsTheCurrentObjectPath) {
  const char* props[] = {"A", nullptr};
  CMPIInstance* ci = instance();
  ci->ft->setPropertyFilter(ci, props, nullptr);
  setU16(ci, "K", 1);
  CMPIObjectPath* keyed =
      host.makeObjectPath(ObjectPath(kNamespace, "ZEDA_F", {{"K", Value::uint16(1)}}));
  ASSERT_EQ(ci->ft->setObjectPath(ci, keyed).rc, CMPI_RC_OK);
  setU16(ci, "K", 2);
  EXPECT_EQ(readInstance(ci).names(), (std::vector<std::string>{"K"}));
}

TEST_F(BrokerObjects, NullPropertyListIgnoresTheKeyListToo) {
  const char* keys[] = {"K", nullptr};
  CMPIInstance* ci = instance();
  ci->ft->setPropertyFilter(ci, nullptr, keys);
  setU16(ci, "B", 1);
  setU16(ci, "K", 2);
  EXPECT_EQ(readInstance(ci).names(), (std::vector<std::string>{"B", "K"}));
}

// An object manager of the first CMPI versions also kept what the key list
// names (Host::setHonourKeyList).
class KeyListHonoured : public BrokerObjects {
 protected:
  void SetUp() override { host.setHonourKeyList(true); }
};

TEST_F(KeyListHonoured, PropertyFilterDropsPropertiesOutsideBothListsSilently) {
  const char* props[] = {"A", nullptr};
  const char* keys[] = {"K", nullptr};
  CMPIInstance* ci = instance();
  ASSERT_EQ(ci->ft->setPropertyFilter(ci, props, keys).rc, CMPI_RC_OK);
  EXPECT_EQ(setU16(ci, "B", 1).rc, CMPI_RC_OK);
  EXPECT_EQ(setU16(ci, "K", 2).rc, CMPI_RC_OK);
  EXPECT_EQ(setU16(ci, "a", 3).rc, CMPI_RC_OK);
  EXPECT_EQ(setU16(ci, "C", 4).rc, CMPI_RC_OK);
  const Instance got = readInstance(ci);
  EXPECT_EQ(got.names(), (std::vector<std::string>{"K", "a"}));
  CMPIStatus rc{};
  ci->ft->getProperty(ci, "B", &rc);
  EXPECT_EQ(rc.rc, CMPI_RC_ERR_NO_SUCH_PROPERTY);
}

TEST_F(KeyListHonoured, EmptyPropertyListKeepsOnlyKeys) {
  const char* props[] = {nullptr};
  const char* keys[] = {"K", nullptr};
  CMPIInstance* ci = instance();
  ci->ft->setPropertyFilter(ci, props, keys);
  setU16(ci, "A", 1);
  setU16(ci, "K", 2);
  EXPECT_EQ(readInstance(ci).names(), (std::vector<std::string>{"K"}));
}

TEST_F(KeyListHonoured, SwitchedOffTheKeyListIsIgnoredAgain) {
  const char* props[] = {"A", nullptr};
  const char* keys[] = {"K", nullptr};
  host.setHonourKeyList(false);
  CMPIInstance* ci = instance();
  ci->ft->setPropertyFilter(ci, props, keys);
  setU16(ci, "K", 1);
  setU16(ci, "A", 2);
  EXPECT_EQ(readInstance(ci).names(), (std::vector<std::string>{"A"}));
}

TEST_F(KeyListHonoured, AClearedFilterForgetsTheKeyList) {
  const char* props[] = {"A", nullptr};
  const char* keys[] = {"K", nullptr};
  CMPIInstance* ci = instance();
  ci->ft->setPropertyFilter(ci, props, keys);
  ci->ft->setPropertyFilter(ci, props, nullptr);
  setU16(ci, "K", 1);
  setU16(ci, "A", 2);
  EXPECT_EQ(readInstance(ci).names(), (std::vector<std::string>{"A"}));
}

TEST_F(BrokerObjects, NullPropertyListMeansNoFilter) {
  const char* props[] = {"A", nullptr};
  CMPIInstance* ci = instance();
  ci->ft->setPropertyFilter(ci, props, nullptr);
  setU16(ci, "B", 1);
  ci->ft->setPropertyFilter(ci, nullptr, nullptr);
  setU16(ci, "C", 2);
  setU16(ci, "A", 3);
  EXPECT_EQ(readInstance(ci).names(), (std::vector<std::string>{"C", "A"}));
}

TEST_F(BrokerObjects, PropertiesStayInFirstSetOrder) {
  CMPIInstance* ci = instance();
  setU16(ci, "Z", 1);
  setU16(ci, "A", 2);
  setU16(ci, "z", 3);
  const Instance got = readInstance(ci);
  EXPECT_EQ(got.names(), (std::vector<std::string>{"Z", "A"}));
  EXPECT_EQ(got.property("Z").u(), 3u);
}

TEST_F(BrokerObjects, KeysStayInOrderAndAddKeyReplacesInPlace) {
  CMPIObjectPath* op = host.makeObjectPath(ObjectPath(kNamespace, "ZEDA_K"));
  op->ft->addKey(op, "B", reinterpret_cast<const CMPIValue*>("1"), CMPI_chars);
  op->ft->addKey(op, "A", reinterpret_cast<const CMPIValue*>("2"), CMPI_chars);
  op->ft->addKey(op, "b", reinterpret_cast<const CMPIValue*>("3"), CMPI_chars);
  const ObjectPath got = readObjectPath(op);
  EXPECT_EQ(got.keyNames(), (std::vector<std::string>{"B", "A"}));
  EXPECT_EQ(got.key("B").str(), "3");
  EXPECT_EQ(TextOf(op->ft->toString(op, nullptr)), "root/cimv2:ZEDA_K.B=\"3\",A=\"2\"");
}

TEST_F(BrokerObjects, EveryTypeSurvivesTheRoundTripThroughCmpi) {
  const Instance sample = sampleInstance();
  EXPECT_EQ(readInstance(host.makeInstance(sample)), sample);
}

TEST_F(BrokerObjects, ClonesLiveUntilReleased) {
  CMPIString* s = mb->eft->newString(mb, "x", nullptr);
  EXPECT_EQ(host.liveClones(), 0u);
  CMPIStatus rc{};
  CMPIString* c = s->ft->clone(s, &rc);
  ASSERT_EQ(rc.rc, CMPI_RC_OK);
  EXPECT_EQ(host.liveClones(), 1u);
  EXPECT_EQ(TextOf(c), "x");
  EXPECT_EQ(c->ft->release(c).rc, CMPI_RC_OK);
  EXPECT_EQ(host.liveClones(), 0u);
  if (kUnderAddressSanitizer) {
    EXPECT_DEATH(c->ft->release(c), kLateUseReport);
    EXPECT_DEATH(c->ft->getCharPtr(c, &rc), kLateUseReport);
  } else {
    EXPECT_EQ(c->ft->release(c).rc, CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(c->ft->getCharPtr(c, &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_HANDLE);
  }
}

// Real object managers free a released object, face and all: under
// AddressSanitizer every later use is reported; elsewhere it answers
// CMPI_RC_ERR_INVALID_HANDLE.
TEST_F(BrokerObjects, AReleasedObjectIsFreedAtOnceAndALateUseIsCaught) {
  const std::size_t before = host.liveObjects();
  CMPIString* s = mb->eft->newString(mb, "x", nullptr);
  CMPIInstance* ci = instance();
  EXPECT_EQ(host.liveObjects(), before + 2);
  CMPIValue v;
  v.string = s;
  ASSERT_EQ(ci->ft->setProperty(ci, "Name", &v, CMPI_string).rc, CMPI_RC_OK);

  EXPECT_EQ(s->ft->release(s).rc, CMPI_RC_OK);
  EXPECT_EQ(host.liveObjects(), before + 1);
  CMPIStatus rc{};
  if (kUnderAddressSanitizer) {
    EXPECT_DEATH(s->ft->release(s), kLateUseReport);
    EXPECT_DEATH(s->ft->getCharPtr(s, &rc), kLateUseReport);
    EXPECT_DEATH(mb->eft->isOfType(mb, s, "CMPIString", &rc), kLateUseReport);
  } else {
    EXPECT_EQ(s->ft->release(s).rc, CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(s->ft->getCharPtr(s, &rc), nullptr);
    EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(mb->eft->isOfType(mb, s, "CMPIString", &rc), 0);
  }
  // setProperty copies what it is given (as sfcb and OpenPegasus do).
  EXPECT_EQ(readInstance(ci).property("Name").str(), "x");

  EXPECT_EQ(ci->ft->release(ci).rc, CMPI_RC_OK);
  EXPECT_EQ(host.liveObjects(), before);
  if (kUnderAddressSanitizer) {
    EXPECT_DEATH(setU16(ci, "A", 1), kLateUseReport);
    EXPECT_DEATH(ci->ft->release(ci), kLateUseReport);
  } else {
    EXPECT_EQ(setU16(ci, "A", 1).rc, CMPI_RC_ERR_INVALID_HANDLE);
    EXPECT_EQ(ci->ft->release(ci).rc, CMPI_RC_ERR_INVALID_HANDLE);
  }
}

// Both sfcb and OpenPegasus keep an encapsulated element given to
// setElementAt by pointer and read it only when the array is used (here by
// setProperty): releasing the element before that is a use of freed memory.
TEST_F(BrokerObjects, ArrayElementsAreKeptByPointerNotCopied) {
  CMPIStatus rc{};
  CMPIArray* a = mb->eft->newArray(mb, 2, CMPI_string, &rc);
  ASSERT_EQ(rc.rc, CMPI_RC_OK);
  CMPIString* s = mb->eft->newString(mb, "kept", nullptr);
  CMPIValue v;
  v.string = s;
  ASSERT_EQ(a->ft->setElementAt(a, 0, &v, CMPI_string).rc, CMPI_RC_OK);
  ASSERT_EQ(a->ft->setElementAt(a, 1, reinterpret_cast<const CMPIValue*>("copied"), CMPI_chars).rc,
            CMPI_RC_OK);
  const CMPIData first = a->ft->getElementAt(a, 0, &rc);
  ASSERT_EQ(rc.rc, CMPI_RC_OK);
  EXPECT_EQ(first.value.string, s);  // the object itself, not a copy

  CMPIInstance* ci = instance();
  CMPIValue array;
  array.array = a;
  ASSERT_EQ(ci->ft->setProperty(ci, "Kept", &array, CMPI_stringA).rc, CMPI_RC_OK);
  EXPECT_EQ(readInstance(ci).property("Kept"), Value::strings({"kept", "copied"}));

  EXPECT_EQ(s->ft->release(s).rc, CMPI_RC_OK);
  if (kUnderAddressSanitizer) {
    EXPECT_DEATH(ci->ft->setProperty(ci, "Late", &array, CMPI_stringA), kLateUseReport);
  } else {
    EXPECT_EQ(ci->ft->setProperty(ci, "Late", &array, CMPI_stringA).rc, CMPI_RC_ERR_INVALID_HANDLE);
  }
  // What setProperty copied before the release stays.
  EXPECT_EQ(readInstance(ci).property("Kept"), Value::strings({"kept", "copied"}));
}

TEST_F(BrokerObjects, NullHandlesAnswerInvalidHandle) {
  CMPIInstance* ci = instance();
  CMPIStatus rc{};
  ci->ft->getProperty(nullptr, "A", &rc);
  EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_HANDLE);
  EXPECT_EQ(ci->ft->setProperty(nullptr, "A", nullptr, CMPI_uint16).rc, CMPI_RC_ERR_INVALID_HANDLE);
  EXPECT_EQ(ci->ft->release(nullptr).rc, CMPI_RC_ERR_INVALID_HANDLE);
  EXPECT_EQ(mb->eft->newString(nullptr, "x", &rc), nullptr);
  EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_HANDLE);
  EXPECT_EQ(mb->bft->enumerateInstances(nullptr, host.context(), nullptr, nullptr, &rc), nullptr);
  EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_HANDLE);
  const CMPIArray* a = mb->eft->newArray(mb, 1, CMPI_uint8, nullptr);
  EXPECT_EQ(a->ft->getSize(nullptr, &rc), 0u);
  EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_HANDLE);
  const CMPIContext* ctx = host.context();
  ctx->ft->getEntry(ctx, nullptr, &rc);
  EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_PARAMETER);
}

TEST_F(BrokerObjects, UnknownObjectsForTypeInquiry) {
  CMPIStatus rc{};
  void* notAnObject[2] = {&rc, &rc};  // a {hdl, ft} pair of nobody's
  EXPECT_EQ(mb->eft->getType(mb, notAnObject, &rc), nullptr);
  EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_PARAMETER);
  EXPECT_EQ(mb->eft->isOfType(mb, nullptr, "CMPIString", &rc), 0);
  EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_PARAMETER);
}

TEST_F(BrokerObjects, GetMessageSubstitutesArguments) {
  CMPIStatus rc{};
  CMPIString* s = mb->eft->getMessage(mb, "ZEDA1", "$1 then $0, not $7", &rc, 2, CMPI_chars,
                                      "first", CMPI_uint32, static_cast<unsigned long>(9));
  EXPECT_EQ(rc.rc, CMPI_RC_OK);
  EXPECT_EQ(TextOf(s), "9 then first, not $7");
  EXPECT_EQ(mb->eft->getMessage(mb, "ZEDA1", "x", &rc, 1, CMPI_args, nullptr), nullptr);
  EXPECT_EQ(rc.rc, CMPI_RC_ERR_INVALID_PARAMETER);
}

TEST_F(BrokerObjects, LogAndTraceAreRecorded) {
  EXPECT_EQ(mb->eft->logMessage(mb, CMPI_SEV_ERROR, "ZEDA", "broken", nullptr).rc, CMPI_RC_OK);
  EXPECT_EQ(
      mb->eft->trace(mb, CMPI_LEV_INFO, "comp", nullptr, mb->eft->newString(mb, "t", nullptr)).rc,
      CMPI_RC_OK);
  ASSERT_EQ(host.logMessages().size(), 1u);
  EXPECT_EQ(host.logMessages()[0].level, CMPI_SEV_ERROR);
  EXPECT_EQ(host.logMessages()[0].component, "ZEDA");
  EXPECT_EQ(host.logMessages()[0].text, "broken");
  ASSERT_EQ(host.traces().size(), 1u);
  EXPECT_EQ(host.traces()[0].text, "t");
}

TEST(BrokerSettingsTest, DefaultsAreThoseOfCmpi20) {
  Host host(testProvider());
  const CMPIBroker* mb = host.broker();
  EXPECT_EQ(mb->bft->brokerVersion, 200u);
  EXPECT_EQ(mb->eft->ftVersion, 200);
  EXPECT_EQ(mb->xft->ftVersion, 200);
  ASSERT_NE(mb->mft, nullptr);
  EXPECT_EQ(mb->mft->ftVersion, 200);
}

TEST(BrokerSettingsTest, SfcbLikeBroker) {
  Host host(testProvider(), BrokerSettings::sfcbLike());
  const CMPIBroker* mb = host.broker();
  EXPECT_EQ(mb->bft->brokerVersion, 0u);
  EXPECT_EQ(mb->eft->ftVersion, 1);
  EXPECT_EQ(mb->mft, nullptr);
  EXPECT_EQ(mb->eft->logMessage(mb, CMPI_SEV_INFO, "id", "text", nullptr).rc,
            CMPI_RC_ERR_NOT_SUPPORTED);
}

}  // namespace
}  // namespace zeda::test
