// Parameter lists of the CMPI 2.0 functions this module implements (the MI
// tables) or calls (broker and encapsulated-object tables). A function with
// the right slot but a wrong parameter list breaks the object manager just
// as surely as a wrong slot, so each type is stated here as a fact and
// checked at compile time: a mismatch stops the build of cmpi_layout_test.

#include <cmpift.h>

#include <type_traits>

namespace zeda::test {
namespace {

#define EXPECT_SIGNATURE(T, member, ...) \
  static_assert(std::is_same_v<decltype(T::member), __VA_ARGS__>, #T "." #member)

using St = CMPIStatus;
using Ctx = const CMPIContext*;
using Rslt = const CMPIResult*;
using Op = const CMPIObjectPath*;
using Props = const char**;
using Mb = const CMPIBroker*;

// Instance MI
EXPECT_SIGNATURE(CMPIInstanceMIFT, cleanup, St (*)(CMPIInstanceMI*, Ctx, CMPIBoolean));
EXPECT_SIGNATURE(CMPIInstanceMIFT, enumerateInstanceNames, St (*)(CMPIInstanceMI*, Ctx, Rslt, Op));
EXPECT_SIGNATURE(CMPIInstanceMIFT, enumerateInstances,
                 St (*)(CMPIInstanceMI*, Ctx, Rslt, Op, Props));
EXPECT_SIGNATURE(CMPIInstanceMIFT, getInstance, St (*)(CMPIInstanceMI*, Ctx, Rslt, Op, Props));
EXPECT_SIGNATURE(CMPIInstanceMIFT, createInstance,
                 St (*)(CMPIInstanceMI*, Ctx, Rslt, Op, const CMPIInstance*));
EXPECT_SIGNATURE(CMPIInstanceMIFT, modifyInstance,
                 St (*)(CMPIInstanceMI*, Ctx, Rslt, Op, const CMPIInstance*, Props));
EXPECT_SIGNATURE(CMPIInstanceMIFT, deleteInstance, St (*)(CMPIInstanceMI*, Ctx, Rslt, Op));
EXPECT_SIGNATURE(CMPIInstanceMIFT, execQuery,
                 St (*)(CMPIInstanceMI*, Ctx, Rslt, Op, const char*, const char*));

// Association MI
EXPECT_SIGNATURE(CMPIAssociationMIFT, cleanup, St (*)(CMPIAssociationMI*, Ctx, CMPIBoolean));
EXPECT_SIGNATURE(CMPIAssociationMIFT, associators,
                 St (*)(CMPIAssociationMI*, Ctx, Rslt, Op, const char*, const char*, const char*,
                        const char*, Props));
EXPECT_SIGNATURE(CMPIAssociationMIFT, associatorNames,
                 St (*)(CMPIAssociationMI*, Ctx, Rslt, Op, const char*, const char*, const char*,
                        const char*));
EXPECT_SIGNATURE(CMPIAssociationMIFT, references,
                 St (*)(CMPIAssociationMI*, Ctx, Rslt, Op, const char*, const char*, Props));
EXPECT_SIGNATURE(CMPIAssociationMIFT, referenceNames,
                 St (*)(CMPIAssociationMI*, Ctx, Rslt, Op, const char*, const char*));

// Method MI
EXPECT_SIGNATURE(CMPIMethodMIFT, cleanup, St (*)(CMPIMethodMI*, Ctx, CMPIBoolean));
EXPECT_SIGNATURE(CMPIMethodMIFT, invokeMethod,
                 St (*)(CMPIMethodMI*, Ctx, Rslt, Op, const char*, const CMPIArgs*, CMPIArgs*));

// Property MI
EXPECT_SIGNATURE(CMPIPropertyMIFT, cleanup, St (*)(CMPIPropertyMI*, Ctx, CMPIBoolean));
EXPECT_SIGNATURE(CMPIPropertyMIFT, setProperty,
                 St (*)(CMPIPropertyMI*, Ctx, Rslt, Op, const char*, const CMPIData));
EXPECT_SIGNATURE(CMPIPropertyMIFT, getProperty,
                 St (*)(CMPIPropertyMI*, Ctx, Rslt, Op, const char*));
EXPECT_SIGNATURE(CMPIPropertyMIFT, setPropertyWithOrigin,
                 St (*)(CMPIPropertyMI*, Ctx, Rslt, CMPIObjectPath*, const char*, const CMPIData,
                        const char*));

// Indication MI: no result object anywhere; enable/disable take the context
// and answer a status.
EXPECT_SIGNATURE(CMPIIndicationMIFT, cleanup, St (*)(CMPIIndicationMI*, Ctx, CMPIBoolean));
EXPECT_SIGNATURE(CMPIIndicationMIFT, authorizeFilter,
                 St (*)(CMPIIndicationMI*, Ctx, const CMPISelectExp*, const char*, Op,
                        const char*));
EXPECT_SIGNATURE(CMPIIndicationMIFT, mustPoll,
                 St (*)(CMPIIndicationMI*, Ctx, const CMPISelectExp*, const char*, Op));
EXPECT_SIGNATURE(CMPIIndicationMIFT, activateFilter,
                 St (*)(CMPIIndicationMI*, Ctx, const CMPISelectExp*, const char*, Op,
                        CMPIBoolean));
EXPECT_SIGNATURE(CMPIIndicationMIFT, deActivateFilter,
                 St (*)(CMPIIndicationMI*, Ctx, const CMPISelectExp*, const char*, Op,
                        CMPIBoolean));
EXPECT_SIGNATURE(CMPIIndicationMIFT, enableIndications, St (*)(CMPIIndicationMI*, Ctx));
EXPECT_SIGNATURE(CMPIIndicationMIFT, disableIndications, St (*)(CMPIIndicationMI*, Ctx));

// Context
EXPECT_SIGNATURE(CMPIContextFT, release, St (*)(CMPIContext*));
EXPECT_SIGNATURE(CMPIContextFT, clone, CMPIContext* (*)(Ctx, CMPIStatus*));
EXPECT_SIGNATURE(CMPIContextFT, getEntry, CMPIData (*)(Ctx, const char*, CMPIStatus*));
EXPECT_SIGNATURE(CMPIContextFT, getEntryAt,
                 CMPIData (*)(Ctx, CMPICount, CMPIString**, CMPIStatus*));
EXPECT_SIGNATURE(CMPIContextFT, getEntryCount, CMPICount (*)(Ctx, CMPIStatus*));
EXPECT_SIGNATURE(CMPIContextFT, addEntry,
                 St (*)(Ctx, const char*, const CMPIValue*, const CMPIType));

// Result
EXPECT_SIGNATURE(CMPIResultFT, release, St (*)(CMPIResult*));
EXPECT_SIGNATURE(CMPIResultFT, clone, CMPIResult* (*)(Rslt, CMPIStatus*));
EXPECT_SIGNATURE(CMPIResultFT, returnData, St (*)(Rslt, const CMPIValue*, const CMPIType));
EXPECT_SIGNATURE(CMPIResultFT, returnInstance, St (*)(Rslt, const CMPIInstance*));
EXPECT_SIGNATURE(CMPIResultFT, returnObjectPath, St (*)(Rslt, Op));
EXPECT_SIGNATURE(CMPIResultFT, returnDone, St (*)(Rslt));
EXPECT_SIGNATURE(CMPIResultFT, returnError, St (*)(Rslt, const CMPIError*));

// Broker up-calls
EXPECT_SIGNATURE(CMPIBrokerFT, prepareAttachThread, CMPIContext* (*)(Mb, Ctx));
EXPECT_SIGNATURE(CMPIBrokerFT, deliverIndication,
                 St (*)(Mb, Ctx, const char*, const CMPIInstance*));
EXPECT_SIGNATURE(CMPIBrokerFT, enumerateInstanceNames,
                 CMPIEnumeration* (*)(Mb, Ctx, Op, CMPIStatus*));
EXPECT_SIGNATURE(CMPIBrokerFT, getInstance, CMPIInstance* (*)(Mb, Ctx, Op, Props, CMPIStatus*));
EXPECT_SIGNATURE(CMPIBrokerFT, modifyInstance, St (*)(Mb, Ctx, Op, const CMPIInstance*, Props));
EXPECT_SIGNATURE(CMPIBrokerFT, associators,
                 CMPIEnumeration* (*)(Mb, Ctx, Op, const char*, const char*, const char*,
                                      const char*, Props, CMPIStatus*));
EXPECT_SIGNATURE(CMPIBrokerFT, invokeMethod,
                 CMPIData (*)(Mb, Ctx, Op, const char*, const CMPIArgs*, CMPIArgs*, CMPIStatus*));
EXPECT_SIGNATURE(CMPIBrokerFT, setProperty,
                 St (*)(Mb, Ctx, Op, const char*, const CMPIValue*, CMPIType));

// Broker factories
EXPECT_SIGNATURE(CMPIBrokerEncFT, newInstance, CMPIInstance* (*)(Mb, Op, CMPIStatus*));
EXPECT_SIGNATURE(CMPIBrokerEncFT, newObjectPath,
                 CMPIObjectPath* (*)(Mb, const char*, const char*, CMPIStatus*));
EXPECT_SIGNATURE(CMPIBrokerEncFT, newString, CMPIString* (*)(Mb, const char*, CMPIStatus*));
EXPECT_SIGNATURE(CMPIBrokerEncFT, newArray, CMPIArray* (*)(Mb, CMPICount, CMPIType, CMPIStatus*));
EXPECT_SIGNATURE(CMPIBrokerEncFT, newDateTimeFromBinary,
                 CMPIDateTime* (*)(Mb, CMPIUint64, CMPIBoolean, CMPIStatus*));
EXPECT_SIGNATURE(CMPIBrokerEncFT, getMessage,
                 CMPIString* (*)(Mb, const char*, const char*, CMPIStatus*, CMPICount, ...));
EXPECT_SIGNATURE(CMPIBrokerEncFT, logMessage,
                 St (*)(Mb, int, const char*, const char*, const CMPIString*));
EXPECT_SIGNATURE(CMPIBrokerEncFT, trace,
                 St (*)(Mb, int, const char*, const char*, const CMPIString*));
EXPECT_SIGNATURE(CMPIBrokerEncFT, newCMPIError,
                 CMPIError* (*)(Mb, const char*, const char*, const char*, const CMPIErrorSeverity,
                                const CMPIErrorProbableCause, const CMPIrc, CMPIStatus*));

// Encapsulated objects the module uses
EXPECT_SIGNATURE(CMPIInstanceFT, getProperty,
                 CMPIData (*)(const CMPIInstance*, const char*, CMPIStatus*));
EXPECT_SIGNATURE(CMPIInstanceFT, setProperty,
                 St (*)(const CMPIInstance*, const char*, const CMPIValue*, CMPIType));
EXPECT_SIGNATURE(CMPIInstanceFT, setPropertyFilter, St (*)(CMPIInstance*, Props, Props));
EXPECT_SIGNATURE(CMPIInstanceFT, setObjectPath, St (*)(CMPIInstance*, Op));
EXPECT_SIGNATURE(CMPIObjectPathFT, addKey,
                 St (*)(CMPIObjectPath*, const char*, const CMPIValue*, const CMPIType));
EXPECT_SIGNATURE(CMPIObjectPathFT, getKey, CMPIData (*)(Op, const char*, CMPIStatus*));
EXPECT_SIGNATURE(CMPIObjectPathFT, getClassName, CMPIString* (*)(Op, CMPIStatus*));
EXPECT_SIGNATURE(CMPIStringFT, getCharPtr, char* (*)(const CMPIString*, CMPIStatus*));
EXPECT_SIGNATURE(CMPIArrayFT, getElementAt, CMPIData (*)(const CMPIArray*, CMPICount, CMPIStatus*));
EXPECT_SIGNATURE(CMPIArrayFT, setElementAt,
                 St (*)(CMPIArray*, CMPICount, const CMPIValue*, CMPIType));
EXPECT_SIGNATURE(CMPIEnumerationFT, getNext, CMPIData (*)(const CMPIEnumeration*, CMPIStatus*));
EXPECT_SIGNATURE(CMPIDateTimeFT, getBinaryFormat, CMPIUint64 (*)(const CMPIDateTime*, CMPIStatus*));

}  // namespace
}  // namespace zeda::test
