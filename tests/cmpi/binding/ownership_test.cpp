// Ownership: the binding releases every object it made through the broker
// exactly once, when the last wrapper or value holding it goes, and never an
// object the object manager handed to it.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "CmpiCpp.h"
#include "DriverHarness.h"
#include "FakeBroker.h"
#include "Names.h"

namespace zeda::test {
namespace {

class OwnershipTest : public ::testing::Test {
 protected:
  // Every object made through the factory table was released exactly once.
  void expectEveryMadeObjectReleasedOnce() const {
    for (const void* enc : mb.made) {
      EXPECT_EQ(mb.releasesOf(enc), 1) << "object " << enc;
    }
  }
  // Nothing but what was made through the factory table was ever released.
  void expectOnlyMadeObjectsReleased() const {
    for (const auto& [enc, count] : mb.releases) {
      EXPECT_EQ(mb.made.count(enc), 1u) << "released an object it did not make: " << enc;
    }
  }

  fake::Broker mb;
  CmpiBrokerScope scope{mb.enc()};
};

}  // namespace

TEST_F(OwnershipTest, AStringMadeFromTextIsReleasedWhenItsLastCopyGoes) {
  const CMPIString* enc = nullptr;
  {
    const CmpiString made("abc");
    enc = made.getEnc();
    {
      const CmpiString copy = made;  // NOLINT(performance-unnecessary-copy-initialization)
      EXPECT_STREQ(copy.charPtr(), "abc");
    }
    EXPECT_EQ(mb.releasesOf(enc), 0) << "released while a copy still holds it";
    CmpiString moved = made;
    CmpiString target;
    target = std::move(moved);
    EXPECT_EQ(mb.releasesOf(enc), 0);
  }
  EXPECT_EQ(mb.releasesOf(enc), 1);
  EXPECT_EQ(mb.releasesInAll(), 1);
}

TEST_F(OwnershipTest, EveryKindOfMadeObjectIsReleasedOnce) {
  {
    const CmpiObjectPath path(kNamespace, "C");
    const CmpiInstance inst(path);
    const CmpiArray array(2, CMPI_uint16);
    const CmpiDateTime fromText("00000001020304.000005:000");
    const CmpiDateTime fromBinary(5, true);
    const CmpiDateTime now = CmpiDateTime::now();
    const CmpiArgs args = CmpiArgs::create();
    const CmpiString text("t");
    EXPECT_EQ(mb.releasesInAll(), 0);
  }
  EXPECT_EQ(mb.made.size(), 8u);
  expectEveryMadeObjectReleasedOnce();
  expectOnlyMadeObjectsReleased();
}

TEST_F(OwnershipTest, AValueSharesOwnershipOfTheObjectItWasMadeFrom) {
  const CMPIString* enc = nullptr;
  CmpiString back;
  {
    const CmpiData value("abc");  // a string made through the broker
    enc = value.getEnc().value.string;
    ASSERT_NE(enc, nullptr);
    back = value;
  }
  EXPECT_EQ(mb.releasesOf(enc), 0) << "released while a string made from the value holds it";
  EXPECT_STREQ(back.charPtr(), "abc");
  back = CmpiString();
  EXPECT_EQ(mb.releasesOf(enc), 1);

  const CMPIArray* array = nullptr;
  {
    CmpiData value;
    {
      CmpiArray made(1, CMPI_uint32);
      made.setElementAt(0, CmpiData(CMPIUint32{7}));
      array = made.getEnc();
      value = CmpiData(made);
    }
    EXPECT_EQ(mb.releasesOf(array), 0);
    EXPECT_EQ(static_cast<CMPIUint32>(static_cast<CmpiArray>(value).getElementAt(0)), 7u);
  }
  EXPECT_EQ(mb.releasesOf(array), 1);
  expectOnlyMadeObjectsReleased();
}

TEST_F(OwnershipTest, BuildingAndReturningAnInstanceReleasesWhatItMadeOnce) {
  // What a provider does for every result: a path for the instance, the
  // instance, strings and an array for its properties, returned by value.
  fake::Result* result = mb.result();
  CmpiResult rslt(&result->enc);
  for (int i = 0; i < 3; ++i) {
    CmpiInstance inst(CmpiObjectPath(kNamespace, "ZEDA_DiskDrive"));
    inst.setProperty("DeviceID", CmpiData(std::string("d") + std::to_string(i)));
    inst.setProperty("Name", "disk");
    CmpiArray status(1, CMPI_uint16);
    status.setElementAt(0, CmpiData(CMPIUint16{2}));
    inst.setProperty("OperationalStatus", CmpiData(status));
    inst.setProperty("RPM", CmpiData(CMPIUint32{7200}));
    rslt.returnData(inst);
  }
  rslt.returnDone();
  EXPECT_EQ(result->data.size(), 3u);
  // Per result: path, instance, two strings, one array.
  EXPECT_EQ(mb.made.size(), 15u);
  expectEveryMadeObjectReleasedOnce();
  expectOnlyMadeObjectsReleased();
  EXPECT_EQ(mb.releasesOf(&result->enc), 0);
}

// sfcb and OpenPegasus keep an encapsulated element given to setElementAt by
// pointer: the binding leaves it to the object manager (freed with the call)
// and releases the array itself, and plain scalars cost nothing.
TEST_F(OwnershipTest, AnObjectSetIntoAnArrayIsLeftToTheObjectManager) {
  const CMPIString* element = nullptr;
  const CMPIArray* array = nullptr;
  {
    CmpiArray made(2, CMPI_string);
    array = made.getEnc();
    const CmpiData text("kept");
    element = text.getEnc().value.string;
    made.setElementAt(0, text);
    CmpiInstance inst(CmpiObjectPath(kNamespace, "ZEDA_StorageExtent_Disk"));
    inst.setProperty("ExtentDiscriminator", CmpiData(made));
  }
  EXPECT_EQ(mb.releasesOf(element), 0) << "released a string the object manager keeps";
  EXPECT_EQ(mb.releasesOf(array), 1);
  expectOnlyMadeObjectsReleased();
}

TEST_F(OwnershipTest, EveryCopyOfAHandedOverValueLeavesTheObjectAlone) {
  const CMPIString* element = nullptr;
  {
    const CmpiString text("kept");
    element = text.getEnc();
    const CmpiData copy(text);  // NOLINT(performance-unnecessary-copy-initialization)
    CmpiArray made(1, CMPI_string);
    made.setElementAt(0, CmpiData(text));
    EXPECT_STREQ(CmpiString(copy).charPtr(), "kept");
  }
  EXPECT_EQ(mb.releasesOf(element), 0);
}

// sfcb collects values given to returnData in an array of its own, by pointer.
TEST_F(OwnershipTest, AValueReturnedAsDataIsLeftToTheObjectManager) {
  fake::Result* result = mb.result();
  const CMPIString* returned = nullptr;
  {
    CmpiResult rslt(&result->enc);
    const CmpiData text("answer");
    returned = text.getEnc().value.string;
    rslt.returnData(text);
  }
  EXPECT_EQ(mb.releasesOf(returned), 0);
}

TEST_F(OwnershipTest, ObjectsHandedInAndValuesReadFromThemAreNeverReleased) {
  fake::Path* given = mb.path(kNamespace, "ZEDA_DiskDrive");
  const CMPIString* key = mb.string("d1");
  CMPIValue keyValue;
  keyValue.string = const_cast<CMPIString*>(key);
  given->enc.ft->addKey(&given->enc, "DeviceID", &keyValue, CMPI_string);
  fake::Instance* givenInstance = mb.instance(given);
  {
    const CmpiObjectPath path(&given->enc);
    const CmpiString ns = path.getNameSpace();
    const CmpiString className = path.getClassName();
    const CmpiData deviceId = path.getKey("DeviceID");
    const CmpiString asString = deviceId;
    EXPECT_STREQ(asString.charPtr(), "d1");
    const CmpiInstance inst(&givenInstance->enc);
    const CmpiObjectPath instPath = inst.getObjectPath();
    const CmpiString view(key);
    const CmpiData copied(view);
    EXPECT_STREQ(ns.charPtr(), kNamespace);
    EXPECT_STREQ(className.charPtr(), "ZEDA_DiskDrive");
  }
  EXPECT_EQ(mb.releasesInAll(), 0);
}

TEST_F(OwnershipTest, ACharsValueCopiedIntoAStringOwnsTheCopy) {
  CMPIData chars{};
  chars.type = CMPI_chars;
  chars.state = CMPI_goodValue;
  chars.value.chars = const_cast<char*>("text");
  const CMPIString* enc = nullptr;
  {
    const CmpiString copy = CmpiData(chars);
    enc = copy.getEnc();
    EXPECT_STREQ(copy.charPtr(), "text");
  }
  EXPECT_EQ(mb.made.count(enc), 1u);
  EXPECT_EQ(mb.releasesOf(enc), 1);
}

TEST_F(OwnershipTest, WithoutAReleaseEntryTheObjectIsLeftToTheObjectManager) {
  mb.stringFT.release = nullptr;
  { const CmpiString made("kept"); }
  EXPECT_EQ(mb.releasesInAll(), 0);
}

TEST(OwnershipDrivers, NoDriverReleasesWhatTheObjectManagerHandedIn) {
  // Context, result, path, instance, filter and argument lists come from the
  // object manager; so does nothing the drivers make for a status message.
  fake::Broker mb;
  harness::AllInterfaces provider{CmpiBroker(mb.enc()), CmpiContext(&mb.context()->enc)};
  harness::Call call;
  call.ctx = &mb.context()->enc;
  call.rslt = &mb.result()->enc;
  call.cop = &mb.path(kNamespace, "C")->enc;
  call.inst = &mb.instance(mb.path(kNamespace, "C"))->enc;
  call.filter = &mb.selectExp("SELECT * FROM C")->enc;
  call.in = &mb.args()->enc;
  call.out = &mb.args()->enc;
  call.point(&provider);
  for (const harness::Behaviour behaviour :
       {harness::Behaviour::ReturnOk, harness::Behaviour::ReturnStatus,
        harness::Behaviour::ThrowStatus, harness::Behaviour::ThrowStd}) {
    provider.behaviour = behaviour;
    for (const auto& [name, driver] : harness::allDrivers()) {
      SCOPED_TRACE(name);
      driver(call);
      EXPECT_EQ(mb.releasesInAll(), 0);
    }
  }
  // The status messages were made through the broker, for the object
  // manager to read after the call: not the binding's to release.
  EXPECT_FALSE(mb.made.empty());
}

}  // namespace zeda::test
