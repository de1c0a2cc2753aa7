// The encapsulated-type wrappers: every call goes through the object's
// function table; failures, null handles and empty entries become CmpiStatus.
#include <gtest/gtest.h>

#include "CmpiCpp.h"
#include "FakeBroker.h"
#include "Names.h"
#include "ThrownStatus.h"

namespace zeda::test {
namespace {

class ObjectsTest : public ::testing::Test {
 protected:
  fake::Broker mb;
  CmpiBrokerScope scope{mb.enc()};
};

}  // namespace

TEST_F(ObjectsTest, ObjectPathPartsAndOrderedKeys) {
  CmpiObjectPath path(kNamespace, "ZEDA_DiskDrive");
  EXPECT_STREQ(path.getNameSpace().charPtr(), kNamespace);
  EXPECT_STREQ(path.getClassName().charPtr(), "ZEDA_DiskDrive");
  path.setHostname("nas1");
  EXPECT_STREQ(path.getHostname().charPtr(), "nas1");
  path.setNameSpace("root/zeda");
  path.setClassName("ZEDA_StorageExtent_Disk");
  EXPECT_STREQ(path.getNameSpace().charPtr(), "root/zeda");
  EXPECT_STREQ(path.getClassName().charPtr(), "ZEDA_StorageExtent_Disk");

  path.setKey("SystemName", "ZEDA:nas1");
  path.setKey("DeviceID", CmpiData(CMPIUint16{4}));
  path.setKey("DeviceID", CmpiData(CMPIUint16{5}));  // replaced in place
  ASSERT_EQ(path.getKeyCount(), 2u);
  CmpiString name;
  EXPECT_EQ(path.getKey(0, &name).getString(), "ZEDA:nas1");
  EXPECT_STREQ(name.charPtr(), "SystemName");
  EXPECT_EQ(static_cast<CMPIUint16>(path.getKey(1, &name)), 5);
  EXPECT_STREQ(name.charPtr(), "DeviceID");
  EXPECT_EQ(static_cast<CMPIUint16>(path.getKey("DeviceID")), 5);
  EXPECT_TRUE(path.getKey("DeviceID").isKey());
  EXPECT_STREQ(path.toString().charPtr(),
               "root/zeda:ZEDA_StorageExtent_Disk.SystemName=\"ZEDA:nas1\",DeviceID=5");
}

TEST_F(ObjectsTest, MissingKeyThrowsTheObjectManagersStatus) {
  const CmpiObjectPath path(kNamespace, "C");
  const CmpiStatus s = thrownBy([&] { path.getKey("Tag"); });
  EXPECT_EQ(s.rc(), CMPI_RC_ERR_NOT_FOUND);
  EXPECT_EQ(messageOf(s), "no entry Tag");
  EXPECT_EQ(thrownBy([&] { path.getKey(3u); }).rc(), CMPI_RC_ERR_NO_SUCH_PROPERTY);
}

TEST_F(ObjectsTest, NullHandlesThrowInvalidHandle) {
  const CmpiObjectPath path;
  EXPECT_EQ(thrownBy([&] { path.getClassName(); }).rc(), CMPI_RC_ERR_INVALID_HANDLE);
  CmpiInstance inst;
  EXPECT_EQ(thrownBy([&] { inst.setProperty("A", CmpiData(CMPIUint32{1})); }).rc(),
            CMPI_RC_ERR_INVALID_HANDLE);
  const CmpiArray array;
  EXPECT_EQ(thrownBy([&] { array.size(); }).rc(), CMPI_RC_ERR_INVALID_HANDLE);
  const CmpiContext ctx;
  EXPECT_EQ(thrownBy([&] { ctx.getEntryCount(); }).rc(), CMPI_RC_ERR_INVALID_HANDLE);
  CmpiResult result;
  EXPECT_EQ(thrownBy([&] { result.returnDone(); }).rc(), CMPI_RC_ERR_INVALID_HANDLE);
  CmpiEnumeration en;
  EXPECT_EQ(thrownBy([&] { en.hasNext(); }).rc(), CMPI_RC_ERR_INVALID_HANDLE);
  const CmpiArgs args;
  EXPECT_EQ(thrownBy([&] { args.getArgCount(); }).rc(), CMPI_RC_ERR_INVALID_HANDLE);
  const CmpiDateTime dt;
  EXPECT_EQ(thrownBy([&] { dt.isInterval(); }).rc(), CMPI_RC_ERR_INVALID_HANDLE);
  const CmpiSelectExp se;
  EXPECT_EQ(thrownBy([&] { se.getString(); }).rc(), CMPI_RC_ERR_INVALID_HANDLE);
  EXPECT_EQ(thrownBy([&] { CmpiInstance{CmpiObjectPath()}; }).rc(), CMPI_RC_ERR_INVALID_HANDLE);
}

TEST_F(ObjectsTest, ObjectWithoutFunctionTableIsAnInvalidHandle) {
  CMPIObjectPath broken{nullptr, nullptr};
  EXPECT_EQ(thrownBy([&] { CmpiObjectPath(&broken).getKeyCount(); }).rc(),
            CMPI_RC_ERR_INVALID_HANDLE);
}

TEST_F(ObjectsTest, EmptyTableEntriesAreNotSupported) {
  CmpiObjectPath path(kNamespace, "C");
  mb.pathFT.getHostname = nullptr;
  mb.pathFT.addKey = nullptr;
  const CmpiStatus get = thrownBy([&] { path.getHostname(); });
  EXPECT_EQ(get.rc(), CMPI_RC_ERR_NOT_SUPPORTED);
  EXPECT_NE(messageOf(get).find("getHostname"), std::string::npos) << messageOf(get);
  EXPECT_EQ(thrownBy([&] { path.setKey("K", CmpiData(CMPIUint32{1})); }).rc(),
            CMPI_RC_ERR_NOT_SUPPORTED);
  mb.eft.newObjectPath = nullptr;
  EXPECT_EQ(thrownBy([] { CmpiObjectPath p(kNamespace, "C"); }).rc(), CMPI_RC_ERR_NOT_SUPPORTED);
  mb.enc_.eft = nullptr;
  EXPECT_EQ(thrownBy([] { CmpiString s("x"); }).rc(), CMPI_RC_ERR_INVALID_HANDLE);
}

TEST_F(ObjectsTest, InstanceProperties) {
  CmpiObjectPath path(kNamespace, "ZEDA_DiskDrive");
  path.setKey("DeviceID", "d1");
  CmpiInstance inst(path);
  inst.setProperty("Name", "disk one");
  inst.setProperty("Size", CmpiData(CMPIUint64{1ULL << 40}));
  ASSERT_EQ(inst.getPropertyCount(), 2u);
  CmpiString name;
  EXPECT_EQ(inst.getProperty(0u, &name).getString(), "disk one");
  EXPECT_STREQ(name.charPtr(), "Name");
  EXPECT_EQ(static_cast<CMPIUint64>(inst.getProperty("Size")), 1ULL << 40);
  EXPECT_EQ(thrownBy([&] { inst.getProperty("Missing"); }).rc(), CMPI_RC_ERR_NO_SUCH_PROPERTY);

  const CmpiObjectPath own = inst.getObjectPath();
  EXPECT_STREQ(own.getClassName().charPtr(), "ZEDA_DiskDrive");
  EXPECT_EQ(own.getKey("DeviceID").getString(), "d1");

  const CmpiObjectPath other(kNamespace, "Other");
  inst.setObjectPath(other);
  EXPECT_EQ(inst.getObjectPath().getEnc(), other.getEnc());
}

TEST_F(ObjectsTest, InstancePropertyFilterIsPassedOn) {
  const CmpiObjectPath path(kNamespace, "C");
  CmpiInstance inst(path);
  const char* properties[] = {"Name", nullptr};
  const char* keys[] = {"DeviceID", nullptr};
  inst.setPropertyFilter(properties, keys);
  inst.setProperty("Name", "n");
  inst.setProperty("DeviceID", "k");
  inst.setProperty("Other", "dropped");
  EXPECT_EQ(inst.getPropertyCount(), 2u);
}

TEST_F(ObjectsTest, ArrayElements) {
  CmpiArray array(2, CMPI_string);
  EXPECT_EQ(array.size(), 2u);
  EXPECT_EQ(array.getSimpleType(), CMPI_string);
  EXPECT_TRUE(array.getElementAt(0).isNullValue());
  array.setElementAt(0, "a");
  array.setElementAt(1, "b");
  EXPECT_EQ(array.getElementAt(1).getString(), "b");
  const CmpiStatus wrong = thrownBy([&] { array.setElementAt(0, CmpiData(CMPIUint16{1})); });
  EXPECT_EQ(wrong.rc(), CMPI_RC_ERR_TYPE_MISMATCH);
  EXPECT_EQ(messageOf(wrong), "wrong element type");
  EXPECT_EQ(thrownBy([&] { array.getElementAt(2); }).rc(), CMPI_RC_ERR_NO_SUCH_PROPERTY);

  CmpiArray numbers(1, CMPI_uint16);
  numbers.setElementAt(0, CmpiData(CMPIUint16{3}));
  EXPECT_EQ(static_cast<CMPIUint16>(numbers.getElementAt(0)), 3);
}

TEST_F(ObjectsTest, ArgsByNameAndIndex) {
  CmpiArgs args = CmpiArgs::create();
  args.setArg("Count", CmpiData(CMPIUint32{2}));
  args.setArg("Label", "x");
  EXPECT_EQ(args.getArgCount(), 2u);
  EXPECT_EQ(static_cast<CMPIUint32>(args.getArg("Count")), 2u);
  CmpiString name;
  EXPECT_EQ(args.getArg(1u, &name).getString(), "x");
  EXPECT_STREQ(name.charPtr(), "Label");
  EXPECT_EQ(args.getArg(0u).getType(), CMPI_uint32);
}

TEST_F(ObjectsTest, DateTimes) {
  const CmpiDateTime interval("00000001020304.000005:000");
  EXPECT_TRUE(interval.isInterval());
  EXPECT_EQ(interval.getDateTime(), ((86400ULL + 2 * 3600 + 3 * 60 + 4) * 1000000ULL) + 5);
  const CmpiDateTime binary(42, false);
  EXPECT_FALSE(binary.isInterval());
  EXPECT_STREQ(binary.getStringFormat().charPtr(), "42");
  EXPECT_EQ(CmpiDateTime::now().getDateTime(), 1000000u);
  const CmpiStatus bad = thrownBy([] { CmpiDateTime d("yesterday"); });
  EXPECT_EQ(bad.rc(), CMPI_RC_ERR_INVALID_PARAMETER);
  EXPECT_EQ(messageOf(bad), "bad date-time yesterday");
}

TEST_F(ObjectsTest, ContextEntries) {
  fake::Context* c = mb.context();
  CmpiContext ctx(&c->enc);
  ctx.setEntry(CMPIPrincipal, "root");
  ctx.setEntry(CMPIInvocationFlags, CmpiData(CMPIUint32{CMPI_FLAG_DeepInheritance}));
  EXPECT_EQ(ctx.getEntryCount(), 2u);
  EXPECT_EQ(ctx.getEntry(CMPIPrincipal).getString(), "root");
  CmpiString name;
  EXPECT_EQ(static_cast<CMPIUint32>(ctx.getEntry(1u, &name)), 2u);
  EXPECT_STREQ(name.charPtr(), CMPIInvocationFlags);
  EXPECT_EQ(thrownBy([&] { ctx.getEntry("CMPIRole"); }).rc(), CMPI_RC_ERR_NOT_FOUND);
}

TEST_F(ObjectsTest, ResultReceivesDataInstancesPathsAndDone) {
  fake::Result* r = mb.result();
  CmpiResult result(&r->enc);
  const CmpiObjectPath path(kNamespace, "C");
  const CmpiInstance inst(path);
  result.returnData(CmpiData(CMPIUint16{9}));
  result.returnData(inst);
  result.returnData(path);
  EXPECT_FALSE(r->done);
  result.returnDone();
  EXPECT_TRUE(r->done);
  ASSERT_EQ(r->data.size(), 3u);
  EXPECT_EQ(r->data[0].type, CMPI_uint16);
  EXPECT_EQ(r->data[0].value.uint16, 9);
  EXPECT_EQ(r->data[1].type, CMPI_instance);
  EXPECT_EQ(r->data[1].value.inst, inst.getEnc());
  EXPECT_EQ(r->data[2].type, CMPI_ref);
  EXPECT_EQ(r->data[2].value.ref, path.getEnc());

  const CmpiStatus late = thrownBy([&] { result.returnData(path); });
  EXPECT_EQ(late.rc(), CMPI_RC_ERR_FAILED);
  EXPECT_EQ(messageOf(late), "result already done");
  EXPECT_EQ(thrownBy([&] { result.returnData(CmpiInstance()); }).rc(), CMPI_RC_ERR_INVALID_HANDLE);
  EXPECT_EQ(thrownBy([&] { result.returnData(CmpiObjectPath()); }).rc(),
            CMPI_RC_ERR_INVALID_HANDLE);
}

TEST_F(ObjectsTest, EnumerationReadsOneByOne) {
  CMPIData one{};
  one.type = CMPI_uint16;
  one.value.uint16 = 1;
  CMPIData two = one;
  two.value.uint16 = 2;
  CmpiEnumeration en(&mb.enumeration({one, two})->enc);
  ASSERT_TRUE(en.hasNext());
  EXPECT_EQ(static_cast<CMPIUint16>(en.getNext()), 1);
  EXPECT_EQ(static_cast<CMPIUint16>(en.getNext()), 2);
  EXPECT_FALSE(en.hasNext());
  EXPECT_EQ(thrownBy([&] { en.getNext(); }).rc(), CMPI_RC_ERR_NOT_FOUND);
  EXPECT_EQ(en.toArray().size(), 2u);
}

TEST_F(ObjectsTest, SelectExpression) {
  fake::SelectExp* s = mb.selectExp("SELECT * FROM CIM_InstModification");
  const CmpiSelectExp se(&s->enc);
  EXPECT_STREQ(se.getString().charPtr(), "SELECT * FROM CIM_InstModification");
  const CmpiInstance inst(CmpiObjectPath(kNamespace, "C"));
  EXPECT_TRUE(se.evaluate(inst));
  s->matches = false;
  EXPECT_FALSE(se.evaluate(inst));
  EXPECT_FALSE(se.isNull());
}

}  // namespace zeda::test
