/*
 * C99 side of the CMPI layout checks.
 *
 * Compiled as strict C99 (-std=c99 -pedantic -Werror): proves that the CMPI
 * headers, including the convenience macros and the MI factory stubs, are
 * valid C, and pins the main layout facts at compile time.  It also reports
 * the offsets the C compiler computed, so the C++ test can verify that C and
 * C++ see one and the same layout, and it defines one instance MI through
 * CMInstanceMIStub for the C++ test to drive.
 */
#include <cmpidt.h>
#include <cmpift.h>
#include <cmpimacs.h>
#include <cmpios.h>
#include <cmpipl.h>

#include <stddef.h>

#include "cmpi_layout_c_facts.h"

/* C99 has no _Static_assert: a negative array size fails the compilation. */
#define LAYOUT_ASSERT(name, cond) typedef char layout_assert_##name[(cond) ? 1 : -1]

#define P sizeof(void*)

/* The module is built for 64-bit Linux; all literal sizes below assume LP64. */
LAYOUT_ASSERT(lp64_pointer, sizeof(void*) == 8);
LAYOUT_ASSERT(lp64_int, sizeof(int) == 4);

LAYOUT_ASSERT(boolean_size, sizeof(CMPIBoolean) == 1);
LAYOUT_ASSERT(char16_size, sizeof(CMPIChar16) == 2);
LAYOUT_ASSERT(uint64_size, sizeof(CMPIUint64) == 8);
LAYOUT_ASSERT(sint64_size, sizeof(CMPISint64) == 8);
LAYOUT_ASSERT(count_size, sizeof(CMPICount) == 4);
LAYOUT_ASSERT(type_size, sizeof(CMPIType) == 2);
LAYOUT_ASSERT(state_size, sizeof(CMPIValueState) == 2);
LAYOUT_ASSERT(rc_size, sizeof(CMPIrc) == 4);

LAYOUT_ASSERT(value_size, sizeof(CMPIValue) == 16);
LAYOUT_ASSERT(data_type_at_0, offsetof(CMPIData, type) == 0);
LAYOUT_ASSERT(data_state_at_2, offsetof(CMPIData, state) == 2);
LAYOUT_ASSERT(data_value_at_8, offsetof(CMPIData, value) == 8);
LAYOUT_ASSERT(data_size, sizeof(CMPIData) == 24);
LAYOUT_ASSERT(status_msg_at_8, offsetof(CMPIStatus, msg) == 8);
LAYOUT_ASSERT(status_size, sizeof(CMPIStatus) == 16);

LAYOUT_ASSERT(broker_mft_last, offsetof(CMPIBroker, mft) == 4 * P && sizeof(CMPIBroker) == 5 * P);
LAYOUT_ASSERT(brokerft_first_fn, offsetof(CMPIBrokerFT, prepareAttachThread) == 2 * P);
LAYOUT_ASSERT(brokerft_last_fn, offsetof(CMPIBrokerFT, getProperty) == 2 * P + 17 * P);
LAYOUT_ASSERT(encft_last_fn, offsetof(CMPIBrokerEncFT, getMessage2) == P + 19 * P);
LAYOUT_ASSERT(contextft_last_fn, offsetof(CMPIContextFT, addEntry) == P + 5 * P);
LAYOUT_ASSERT(instanceft_last_fn, offsetof(CMPIInstanceFT, setPropertyWithOrigin) == P + 9 * P);
LAYOUT_ASSERT(instmift_first_fn, offsetof(CMPIInstanceMIFT, cleanup) == 2 * P);
LAYOUT_ASSERT(instmift_size, sizeof(CMPIInstanceMIFT) == 2 * P + 8 * P);
LAYOUT_ASSERT(indmift_last_fn, offsetof(CMPIIndicationMIFT, disableIndications) == 2 * P + 6 * P);

LAYOUT_ASSERT(rc_error, CMPI_RC_ERROR == 200);
LAYOUT_ASSERT(type_string, CMPI_string == 0x1600);
LAYOUT_ASSERT(type_uint16A, CMPI_uint16A == 0x2090);
LAYOUT_ASSERT(state_null, CMPI_nullValue == 0x100);

/* ---- offsets as the C compiler sees them ------------------------------ */

#define FACT(T, m) \
  { #T "." #m, offsetof(T, m) }
#define SIZE_FACT(T) \
  { "sizeof " #T, sizeof(T) }

static const struct cmpi_c_fact facts[] = {
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

const struct cmpi_c_fact* cmpi_layout_c_facts(size_t* count) {
  *count = sizeof facts / sizeof facts[0];
  return facts;
}

/* ---- an instance MI written in plain C with the factory stub ------------ */

static const CMPIBroker* probe_broker;
static int probe_last_call;

static CMPIStatus ProbeCleanup(CMPIInstanceMI* mi, const CMPIContext* ctx, CMPIBoolean term) {
  (void)mi;
  (void)ctx;
  (void)term;
  probe_last_call = 1;
  CMReturn(CMPI_RC_OK);
}

static CMPIStatus ProbeEnumInstanceNames(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                         const CMPIResult* rslt, const CMPIObjectPath* op) {
  (void)mi;
  (void)ctx;
  (void)rslt;
  (void)op;
  probe_last_call = 2;
  CMReturn(CMPI_RC_ERR_NOT_SUPPORTED);
}

static CMPIStatus ProbeEnumInstances(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                     const CMPIResult* rslt, const CMPIObjectPath* op,
                                     const char** props) {
  (void)mi;
  (void)ctx;
  (void)op;
  (void)props;
  probe_last_call = 3;
  CMReturnDone(rslt);
  CMReturn(CMPI_RC_OK);
}

static CMPIStatus ProbeGetInstance(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                   const CMPIResult* rslt, const CMPIObjectPath* op,
                                   const char** props) {
  (void)mi;
  (void)ctx;
  (void)rslt;
  (void)op;
  (void)props;
  probe_last_call = 4;
  CMReturnWithChars(probe_broker, CMPI_RC_ERR_NOT_FOUND, "no such disk");
}

static CMPIStatus ProbeCreateInstance(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                      const CMPIResult* rslt, const CMPIObjectPath* op,
                                      const CMPIInstance* inst) {
  (void)mi;
  (void)ctx;
  (void)rslt;
  (void)op;
  (void)inst;
  probe_last_call = 5;
  CMReturn(CMPI_RC_ERR_NOT_SUPPORTED);
}

static CMPIStatus ProbeModifyInstance(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                      const CMPIResult* rslt, const CMPIObjectPath* op,
                                      const CMPIInstance* inst, const char** props) {
  (void)mi;
  (void)ctx;
  (void)rslt;
  (void)op;
  (void)inst;
  (void)props;
  probe_last_call = 6;
  CMReturn(CMPI_RC_ERR_NOT_SUPPORTED);
}

static CMPIStatus ProbeDeleteInstance(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                      const CMPIResult* rslt, const CMPIObjectPath* op) {
  (void)mi;
  (void)ctx;
  (void)rslt;
  (void)op;
  probe_last_call = 7;
  CMReturn(CMPI_RC_ERR_NOT_SUPPORTED);
}

static CMPIStatus ProbeExecQuery(CMPIInstanceMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                                 const CMPIObjectPath* op, const char* query, const char* lang) {
  (void)mi;
  (void)ctx;
  (void)rslt;
  (void)op;
  (void)query;
  (void)lang;
  probe_last_call = 8;
  CMReturn(CMPI_RC_ERR_NOT_SUPPORTED);
}

CMInstanceMIStub(Probe, CLayoutProbe, probe_broker, CMNoHook)

    int cmpi_layout_c_last_call(void) {
  return probe_last_call;
}

const CMPIBroker* cmpi_layout_c_broker(void) { return probe_broker; }
