// Member order of every CMPI 2.0 function table and encapsulated structure.
//
// An object manager built with the CMPI standard's headers finds each
// function by its slot number, so each table is listed here in the order the
// CMPI standard gives it: slot i must sit at header + i * sizeof(void*), and
// the table must end right after its last slot. A reordered member fails the
// offset check, an inserted one shifts every later slot, an appended one
// fails the size check and a missing one does not compile.

#include <cmpift.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <initializer_list>
#include <string>

namespace zeda::test {
namespace {

constexpr std::size_t kPtr = sizeof(void*);

struct Slot {
  const char* name;
  std::size_t offset;
};

#define SLOT(T, m) \
  Slot { #m, offsetof(T, m) }

// firstSlot: byte offset of the first function pointer (after the leading
// version/name fields).
void ExpectSlots(const char* table, std::size_t tableSize, std::size_t firstSlot,
                 std::initializer_list<Slot> slots) {
  std::size_t index = 0;
  for (const Slot& slot : slots) {
    EXPECT_EQ(slot.offset, firstSlot + index * kPtr)
        << table << "." << slot.name << " must be slot " << index;
    ++index;
  }
  EXPECT_EQ(tableSize, firstSlot + slots.size() * kPtr)
      << table << " must end after its " << slots.size() << " slots";
}

TEST(CmpiLayout, PointersAre64Bit) {
  // The literal sizes in these tests are those of the LP64 Linux target.
  EXPECT_EQ(kPtr, 8u);
  EXPECT_EQ(sizeof(int), 4u);
}

TEST(CmpiLayout, BrokerHoldsItsFourTables) {
  ExpectSlots("CMPIBroker", sizeof(CMPIBroker), 0,
              {SLOT(CMPIBroker, hdl), SLOT(CMPIBroker, bft), SLOT(CMPIBroker, eft),
               SLOT(CMPIBroker, xft), SLOT(CMPIBroker, mft)});
}

TEST(CmpiLayout, BrokerFT) {
  EXPECT_EQ(offsetof(CMPIBrokerFT, brokerCapabilities), 0u);
  EXPECT_EQ(offsetof(CMPIBrokerFT, brokerVersion), 4u);
  EXPECT_EQ(offsetof(CMPIBrokerFT, brokerName), 8u);
  using T = CMPIBrokerFT;
  ExpectSlots("CMPIBrokerFT", sizeof(T), 16,
              {SLOT(T, prepareAttachThread), SLOT(T, attachThread), SLOT(T, detachThread),
               SLOT(T, deliverIndication), SLOT(T, enumerateInstanceNames), SLOT(T, getInstance),
               SLOT(T, createInstance), SLOT(T, modifyInstance), SLOT(T, deleteInstance),
               SLOT(T, execQuery), SLOT(T, enumerateInstances), SLOT(T, associators),
               SLOT(T, associatorNames), SLOT(T, references), SLOT(T, referenceNames),
               SLOT(T, invokeMethod), SLOT(T, setProperty), SLOT(T, getProperty)});
}

TEST(CmpiLayout, BrokerEncFT) {
  using T = CMPIBrokerEncFT;
  EXPECT_EQ(offsetof(T, ftVersion), 0u);
  ExpectSlots("CMPIBrokerEncFT", sizeof(T), 8,
              {SLOT(T, newInstance),
               SLOT(T, newObjectPath),
               SLOT(T, newArgs),
               SLOT(T, newString),
               SLOT(T, newArray),
               SLOT(T, newDateTime),
               SLOT(T, newDateTimeFromBinary),
               SLOT(T, newDateTimeFromChars),
               SLOT(T, newSelectExp),
               SLOT(T, classPathIsA),
               SLOT(T, toString),
               SLOT(T, isOfType),
               SLOT(T, getType),
               SLOT(T, getMessage),
               SLOT(T, logMessage),
               SLOT(T, trace),
               SLOT(T, newCMPIError),
               SLOT(T, openMessageFile),
               SLOT(T, closeMessageFile),
               SLOT(T, getMessage2)});
}

TEST(CmpiLayout, BrokerExtFT) {
  using T = CMPIBrokerExtFT;
  EXPECT_EQ(offsetof(T, ftVersion), 0u);
  ExpectSlots("CMPIBrokerExtFT", sizeof(T), 8,
              {SLOT(T, resolveFileName),   SLOT(T, newThread),         SLOT(T, joinThread),
               SLOT(T, exitThread),        SLOT(T, cancelThread),      SLOT(T, threadSleep),
               SLOT(T, threadOnce),        SLOT(T, createThreadKey),   SLOT(T, destroyThreadKey),
               SLOT(T, getThreadSpecific), SLOT(T, setThreadSpecific), SLOT(T, newMutex),
               SLOT(T, destroyMutex),      SLOT(T, lockMutex),         SLOT(T, unlockMutex),
               SLOT(T, newCondition),      SLOT(T, destroyCondition),  SLOT(T, condWait),
               SLOT(T, timedCondWait),     SLOT(T, signalCondition)});
}

TEST(CmpiLayout, BrokerMemFT) {
  using T = CMPIBrokerMemFT;
  EXPECT_EQ(offsetof(T, ftVersion), 0u);
  ExpectSlots("CMPIBrokerMemFT", sizeof(T), 8,
              {SLOT(T, mark), SLOT(T, release), SLOT(T, cmpiMalloc), SLOT(T, cmpiCalloc),
               SLOT(T, cmpiRealloc), SLOT(T, cmpiStrDup), SLOT(T, cmpiFree), SLOT(T, freeInstance),
               SLOT(T, freeObjectPath), SLOT(T, freeArgs), SLOT(T, freeString), SLOT(T, freeArray),
               SLOT(T, freeDateTime), SLOT(T, freeSelectExp)});
}

// Every encapsulated object is {hdl, ft} and nothing else.
#define EXPECT_ENCAPSULATED(T) ExpectSlots(#T, sizeof(T), 0, {SLOT(T, hdl), SLOT(T, ft)})

TEST(CmpiLayout, EncapsulatedObjectsAreHandleAndTable) {
  EXPECT_ENCAPSULATED(CMPIContext);
  EXPECT_ENCAPSULATED(CMPIResult);
  EXPECT_ENCAPSULATED(CMPIError);
  EXPECT_ENCAPSULATED(CMPIInstance);
  EXPECT_ENCAPSULATED(CMPIObjectPath);
  EXPECT_ENCAPSULATED(CMPISelectExp);
  EXPECT_ENCAPSULATED(CMPISelectCond);
  EXPECT_ENCAPSULATED(CMPISubCond);
  EXPECT_ENCAPSULATED(CMPIPredicate);
  EXPECT_ENCAPSULATED(CMPIArgs);
  EXPECT_ENCAPSULATED(CMPIString);
  EXPECT_ENCAPSULATED(CMPIArray);
  EXPECT_ENCAPSULATED(CMPIEnumeration);
  EXPECT_ENCAPSULATED(CMPIDateTime);
  EXPECT_ENCAPSULATED(CMPIInstanceMI);
  EXPECT_ENCAPSULATED(CMPIAssociationMI);
  EXPECT_ENCAPSULATED(CMPIMethodMI);
  EXPECT_ENCAPSULATED(CMPIPropertyMI);
  EXPECT_ENCAPSULATED(CMPIIndicationMI);
}

TEST(CmpiLayout, ContextFT) {
  using T = CMPIContextFT;
  EXPECT_EQ(offsetof(T, ftVersion), 0u);
  ExpectSlots("CMPIContextFT", sizeof(T), 8,
              {SLOT(T, release), SLOT(T, clone), SLOT(T, getEntry), SLOT(T, getEntryAt),
               SLOT(T, getEntryCount), SLOT(T, addEntry)});
}

TEST(CmpiLayout, ResultFT) {
  using T = CMPIResultFT;
  EXPECT_EQ(offsetof(T, ftVersion), 0u);
  ExpectSlots("CMPIResultFT", sizeof(T), 8,
              {SLOT(T, release), SLOT(T, clone), SLOT(T, returnData), SLOT(T, returnInstance),
               SLOT(T, returnObjectPath), SLOT(T, returnDone), SLOT(T, returnError)});
}

TEST(CmpiLayout, ErrorFT) {
  using T = CMPIErrorFT;
  EXPECT_EQ(offsetof(T, ftVersion), 0u);
  ExpectSlots("CMPIErrorFT", sizeof(T), 8,
              {SLOT(T, release),
               SLOT(T, clone),
               SLOT(T, getErrorType),
               SLOT(T, getOtherErrorType),
               SLOT(T, getOwningEntity),
               SLOT(T, getMessageID),
               SLOT(T, getMessage),
               SLOT(T, getPerceivedSeverity),
               SLOT(T, getProbableCause),
               SLOT(T, getProbableCauseDescription),
               SLOT(T, getRecommendedActions),
               SLOT(T, getErrorSource),
               SLOT(T, getErrorSourceFormat),
               SLOT(T, getOtherErrorSourceFormat),
               SLOT(T, getCIMStatusCode),
               SLOT(T, getCIMStatusCodeDescription),
               SLOT(T, getMessageArguments),
               SLOT(T, setErrorType),
               SLOT(T, setOtherErrorType),
               SLOT(T, setProbableCauseDescription),
               SLOT(T, setRecommendedActions),
               SLOT(T, setErrorSource),
               SLOT(T, setErrorSourceFormat),
               SLOT(T, setOtherErrorSourceFormat),
               SLOT(T, setCIMStatusCodeDescription),
               SLOT(T, setMessageArguments)});
}

TEST(CmpiLayout, InstanceFT) {
  using T = CMPIInstanceFT;
  EXPECT_EQ(offsetof(T, ftVersion), 0u);
  ExpectSlots("CMPIInstanceFT", sizeof(T), 8,
              {SLOT(T, release), SLOT(T, clone), SLOT(T, getProperty), SLOT(T, getPropertyAt),
               SLOT(T, getPropertyCount), SLOT(T, setProperty), SLOT(T, getObjectPath),
               SLOT(T, setPropertyFilter), SLOT(T, setObjectPath), SLOT(T, setPropertyWithOrigin)});
}

TEST(CmpiLayout, ObjectPathFT) {
  using T = CMPIObjectPathFT;
  EXPECT_EQ(offsetof(T, ftVersion), 0u);
  ExpectSlots(
      "CMPIObjectPathFT", sizeof(T), 8,
      {SLOT(T, release), SLOT(T, clone), SLOT(T, setNameSpace), SLOT(T, getNameSpace),
       SLOT(T, setHostname), SLOT(T, getHostname), SLOT(T, setClassName), SLOT(T, getClassName),
       SLOT(T, addKey), SLOT(T, getKey), SLOT(T, getKeyAt), SLOT(T, getKeyCount),
       SLOT(T, setNameSpaceFromObjectPath), SLOT(T, setHostAndNameSpaceFromObjectPath),
       SLOT(T, getClassQualifier), SLOT(T, getPropertyQualifier), SLOT(T, getMethodQualifier),
       SLOT(T, getParameterQualifier), SLOT(T, toString)});
}

TEST(CmpiLayout, SelectExpFT) {
  using T = CMPISelectExpFT;
  ExpectSlots("CMPISelectExpFT", sizeof(T), 8,
              {SLOT(T, release), SLOT(T, clone), SLOT(T, evaluate), SLOT(T, getString),
               SLOT(T, getDOC), SLOT(T, getCOD), SLOT(T, evaluateUsingAccessor)});
}

TEST(CmpiLayout, SelectCondSubCondPredicateFT) {
  ExpectSlots("CMPISelectCondFT", sizeof(CMPISelectCondFT), 8,
              {SLOT(CMPISelectCondFT, release), SLOT(CMPISelectCondFT, clone),
               SLOT(CMPISelectCondFT, getCountAndType), SLOT(CMPISelectCondFT, getSubCondAt)});
  ExpectSlots(
      "CMPISubCondFT", sizeof(CMPISubCondFT), 8,
      {SLOT(CMPISubCondFT, release), SLOT(CMPISubCondFT, clone), SLOT(CMPISubCondFT, getCount),
       SLOT(CMPISubCondFT, getPredicateAt), SLOT(CMPISubCondFT, getPredicate)});
  ExpectSlots("CMPIPredicateFT", sizeof(CMPIPredicateFT), 8,
              {SLOT(CMPIPredicateFT, release), SLOT(CMPIPredicateFT, clone),
               SLOT(CMPIPredicateFT, getData), SLOT(CMPIPredicateFT, evaluateUsingAccessor)});
}

TEST(CmpiLayout, ArgsFT) {
  using T = CMPIArgsFT;
  ExpectSlots("CMPIArgsFT", sizeof(T), 8,
              {SLOT(T, release), SLOT(T, clone), SLOT(T, addArg), SLOT(T, getArg),
               SLOT(T, getArgAt), SLOT(T, getArgCount)});
}

TEST(CmpiLayout, StringFT) {
  using T = CMPIStringFT;
  ExpectSlots("CMPIStringFT", sizeof(T), 8,
              {SLOT(T, release), SLOT(T, clone), SLOT(T, getCharPtr)});
}

TEST(CmpiLayout, ArrayFT) {
  using T = CMPIArrayFT;
  ExpectSlots("CMPIArrayFT", sizeof(T), 8,
              {SLOT(T, release), SLOT(T, clone), SLOT(T, getSize), SLOT(T, getSimpleType),
               SLOT(T, getElementAt), SLOT(T, setElementAt)});
}

TEST(CmpiLayout, EnumerationFT) {
  using T = CMPIEnumerationFT;
  ExpectSlots(
      "CMPIEnumerationFT", sizeof(T), 8,
      {SLOT(T, release), SLOT(T, clone), SLOT(T, getNext), SLOT(T, hasNext), SLOT(T, toArray)});
}

TEST(CmpiLayout, DateTimeFT) {
  using T = CMPIDateTimeFT;
  ExpectSlots("CMPIDateTimeFT", sizeof(T), 8,
              {SLOT(T, release), SLOT(T, clone), SLOT(T, getBinaryFormat), SLOT(T, getStringFormat),
               SLOT(T, isInterval)});
}

// MI tables: ftVersion (int) at 0, miVersion (int) at 4, miName at 8.
#define EXPECT_MI_HEADER(T)              \
  EXPECT_EQ(offsetof(T, ftVersion), 0u); \
  EXPECT_EQ(offsetof(T, miVersion), 4u); \
  EXPECT_EQ(offsetof(T, miName), 8u)

TEST(CmpiLayout, InstanceMIFT) {
  using T = CMPIInstanceMIFT;
  EXPECT_MI_HEADER(T);
  ExpectSlots("CMPIInstanceMIFT", sizeof(T), 16,
              {SLOT(T, cleanup), SLOT(T, enumerateInstanceNames), SLOT(T, enumerateInstances),
               SLOT(T, getInstance), SLOT(T, createInstance), SLOT(T, modifyInstance),
               SLOT(T, deleteInstance), SLOT(T, execQuery)});
}

TEST(CmpiLayout, AssociationMIFT) {
  using T = CMPIAssociationMIFT;
  EXPECT_MI_HEADER(T);
  ExpectSlots("CMPIAssociationMIFT", sizeof(T), 16,
              {SLOT(T, cleanup), SLOT(T, associators), SLOT(T, associatorNames),
               SLOT(T, references), SLOT(T, referenceNames)});
}

TEST(CmpiLayout, MethodMIFT) {
  using T = CMPIMethodMIFT;
  EXPECT_MI_HEADER(T);
  ExpectSlots("CMPIMethodMIFT", sizeof(T), 16, {SLOT(T, cleanup), SLOT(T, invokeMethod)});
}

TEST(CmpiLayout, PropertyMIFT) {
  using T = CMPIPropertyMIFT;
  EXPECT_MI_HEADER(T);
  ExpectSlots("CMPIPropertyMIFT", sizeof(T), 16,
              {SLOT(T, cleanup), SLOT(T, setProperty), SLOT(T, getProperty),
               SLOT(T, setPropertyWithOrigin)});
}

TEST(CmpiLayout, IndicationMIFT) {
  using T = CMPIIndicationMIFT;
  EXPECT_MI_HEADER(T);
  ExpectSlots(
      "CMPIIndicationMIFT", sizeof(T), 16,
      {SLOT(T, cleanup), SLOT(T, authorizeFilter), SLOT(T, mustPoll), SLOT(T, activateFilter),
       SLOT(T, deActivateFilter), SLOT(T, enableIndications), SLOT(T, disableIndications)});
}

}  // namespace
}  // namespace zeda::test
