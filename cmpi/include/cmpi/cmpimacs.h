/*
 * cmpimacs.h - convenience macros of the CMPI 2.0 interface.
 *
 * Every macro is a thin spelling of one function-table call (or of a status
 * assignment), so providers written against the CMPI standard's macro names
 * compile unchanged.  They are macros rather than inline functions on
 * purpose: value arguments are passed as untyped pointers (for CMPI_chars the
 * pointer is the character string itself), which only a cast inside a macro
 * accepts in both C and C++.  Arguments may be evaluated more than once.
 */
#ifndef ZEDA_CMPI_CMPIMACS_H
#define ZEDA_CMPI_CMPIMACS_H

#include "cmpidt.h"
#include "cmpift.h"

#include <stddef.h> /* NULL */

/* ---------------------------------------------------------------------------
 * Status helpers.  st may be NULL (then nothing is written).
 * ------------------------------------------------------------------------- */

#define CMSetStatus(st, rcp)              \
    do {                                  \
        CMPIStatus* cmpi_st_ = (st);      \
        if (cmpi_st_ != NULL) {           \
            cmpi_st_->rc = (CMPIrc)(rcp); \
            cmpi_st_->msg = NULL;         \
        }                                 \
    } while (0)

#define CMSetStatusWithString(st, rcp, string) \
    do {                                       \
        CMPIStatus* cmpi_st_ = (st);           \
        if (cmpi_st_ != NULL) {                \
            cmpi_st_->rc = (CMPIrc)(rcp);      \
            cmpi_st_->msg = (string);          \
        }                                      \
    } while (0)

/* The message string is created through the broker; without one it is NULL. */
#define CMSetStatusWithChars(mb, st, rcp, chars)                                   \
    do {                                                                           \
        CMPIStatus* cmpi_st_ = (st);                                               \
        if (cmpi_st_ != NULL) {                                                    \
            const CMPIBroker* cmpi_mb_ = (mb);                                     \
            cmpi_st_->rc = (CMPIrc)(rcp);                                          \
            cmpi_st_->msg =                                                        \
                cmpi_mb_ != NULL ? cmpi_mb_->eft->newString(cmpi_mb_, (chars), NULL) \
                                 : NULL;                                           \
        }                                                                          \
    } while (0)

/* Return a status from the enclosing MI function. */
#define CMReturn(rcp)                       \
    do {                                    \
        CMPIStatus cmpi_ret_;               \
        cmpi_ret_.rc = (CMPIrc)(rcp);       \
        cmpi_ret_.msg = NULL;               \
        return cmpi_ret_;                   \
    } while (0)

#define CMReturnWithString(rcp, string)     \
    do {                                    \
        CMPIStatus cmpi_ret_;               \
        cmpi_ret_.rc = (CMPIrc)(rcp);       \
        cmpi_ret_.msg = (string);           \
        return cmpi_ret_;                   \
    } while (0)

#define CMReturnWithChars(mb, rcp, chars)                       \
    do {                                                        \
        CMPIStatus cmpi_ret_;                                   \
        CMSetStatusWithChars((mb), &cmpi_ret_, (rcp), (chars)); \
        return cmpi_ret_;                                       \
    } while (0)

/* ---------------------------------------------------------------------------
 * Tests on objects and data items
 * ------------------------------------------------------------------------- */

/* True for a NULL object pointer or an object whose handle is NULL. */
#define CMIsNullObject(obj) ((obj) == NULL || *((void* const*)(obj)) == NULL)

#define CMIsNullValue(data) ((((data).state) & CMPI_nullValue) != 0)
#define CMIsKeyValue(data) ((((data).state) & CMPI_keyValue) != 0)
#define CMIsArray(data) ((((data).type) & CMPI_ARRAY) != 0)

/* Any encapsulated object. */
#define CMClone(obj, rc) ((obj)->ft->clone((obj), (rc)))
#define CMRelease(obj) ((obj)->ft->release((obj)))

/* ---------------------------------------------------------------------------
 * Broker: factories (CMPIBrokerEncFT)
 * ------------------------------------------------------------------------- */

#define CMNewInstance(mb, op, rc) ((mb)->eft->newInstance((mb), (op), (rc)))
#define CMNewObjectPath(mb, ns, cn, rc) ((mb)->eft->newObjectPath((mb), (ns), (cn), (rc)))
#define CMNewString(mb, data, rc) ((mb)->eft->newString((mb), (data), (rc)))
#define CMNewArgs(mb, rc) ((mb)->eft->newArgs((mb), (rc)))
#define CMNewArray(mb, max, type, rc) ((mb)->eft->newArray((mb), (max), (type), (rc)))
#define CMNewDateTime(mb, rc) ((mb)->eft->newDateTime((mb), (rc)))
#define CMNewDateTimeFromBinary(mb, binTime, interval, rc) \
    ((mb)->eft->newDateTimeFromBinary((mb), (binTime), (interval), (rc)))
#define CMNewDateTimeFromChars(mb, utcTime, rc) \
    ((mb)->eft->newDateTimeFromChars((mb), (utcTime), (rc)))
#define CMNewSelectExp(mb, query, lang, projection, rc) \
    ((mb)->eft->newSelectExp((mb), (query), (lang), (projection), (rc)))
#define CMNewCMPIError(mb, owner, msgID, msg, sev, pc, cimStatusCode, rc) \
    ((mb)->eft->newCMPIError((mb), (owner), (msgID), (msg), (sev), (pc), (cimStatusCode), (rc)))

#define CMClassPathIsA(mb, op, type, rc) ((mb)->eft->classPathIsA((mb), (op), (type), (rc)))
#define CDToString(mb, obj, rc) ((mb)->eft->toString((mb), (const void*)(obj), (rc)))
#define CDIsOfType(mb, obj, type, rc) \
    ((mb)->eft->isOfType((mb), (const void*)(obj), (type), (rc)))
#define CDGetType(mb, obj, rc) ((mb)->eft->getType((mb), (const void*)(obj), (rc)))

#define CMLogMessage(mb, severity, id, text, string) \
    ((mb)->eft->logMessage((mb), (severity), (id), (text), (string)))
#define CMTraceMessage(mb, level, component, text, string) \
    ((mb)->eft->trace((mb), (level), (component), (text), (string)))

/*
 * Message catalogue.  The last argument is one of the CMFmtArgsN() lists, e.g.
 *   CMGetMessage(mb, "ID", "Disk $0 failed", &rc, CMFmtArgs1(CMFmtChars(name)))
 */
#define CMGetMessage(mb, msgId, defMsg, rc, parms) \
    ((mb)->eft->getMessage((mb), (msgId), (defMsg), (rc), parms))
#define CMOpenMessageFile(mb, msgFile, msgFileHandle) \
    ((mb)->eft->openMessageFile((mb), (msgFile), (msgFileHandle)))
#define CMCloseMessageFile(mb, msgFileHandle) ((mb)->eft->closeMessageFile((mb), (msgFileHandle)))
#define CMGetMessage2(mb, msgId, msgFileHandle, defMsg, rc, parms) \
    ((mb)->eft->getMessage2((mb), (msgId), (msgFileHandle), (defMsg), (rc), parms))

#define CMFmtSint(v) CMPI_sint32, ((long int)(v))
#define CMFmtUint(v) CMPI_uint32, ((unsigned long int)(v))
#define CMFmtSint64(v) CMPI_sint64, ((long long int)(v))
#define CMFmtUint64(v) CMPI_uint64, ((unsigned long long int)(v))
#define CMFmtReal(v) CMPI_real64, ((double)(v))
#define CMFmtBoolean(v) CMPI_boolean, ((int)(v))
#define CMFmtChars(v) CMPI_chars, ((const char*)(v))
#define CMFmtString(v) CMPI_string, ((CMPIString*)(v))

#define CMFmtArgs0() 0
#define CMFmtArgs1(v1) 1, v1
#define CMFmtArgs2(v1, v2) 2, v1, v2
#define CMFmtArgs3(v1, v2, v3) 3, v1, v2, v3
#define CMFmtArgs4(v1, v2, v3, v4) 4, v1, v2, v3, v4
#define CMFmtArgs5(v1, v2, v3, v4, v5) 5, v1, v2, v3, v4, v5
#define CMFmtArgs6(v1, v2, v3, v4, v5, v6) 6, v1, v2, v3, v4, v5, v6
#define CMFmtArgs7(v1, v2, v3, v4, v5, v6, v7) 7, v1, v2, v3, v4, v5, v6, v7
#define CMFmtArgs8(v1, v2, v3, v4, v5, v6, v7, v8) 8, v1, v2, v3, v4, v5, v6, v7, v8
#define CMFmtArgs9(v1, v2, v3, v4, v5, v6, v7, v8, v9) 9, v1, v2, v3, v4, v5, v6, v7, v8, v9
#define CMFmtArgs10(v1, v2, v3, v4, v5, v6, v7, v8, v9, v10) \
    10, v1, v2, v3, v4, v5, v6, v7, v8, v9, v10

/* ---------------------------------------------------------------------------
 * Broker: up-calls (CMPIBrokerFT)
 * ------------------------------------------------------------------------- */

#define CBGetClassification(mb) ((mb)->bft->brokerCapabilities)
#define CBGetCapabilities(mb) ((mb)->bft->brokerCapabilities)
#define CBBrokerVersion(mb) ((mb)->bft->brokerVersion)
#define CBBrokerName(mb) ((mb)->bft->brokerName)

#define CBPrepareAttachThread(mb, ctx) ((mb)->bft->prepareAttachThread((mb), (ctx)))
#define CBAttachThread(mb, ctx) ((mb)->bft->attachThread((mb), (ctx)))
#define CBDetachThread(mb, ctx) ((mb)->bft->detachThread((mb), (ctx)))
#define CBDeliverIndication(mb, ctx, ns, ind) \
    ((mb)->bft->deliverIndication((mb), (ctx), (ns), (ind)))

#define CBEnumInstanceNames(mb, ctx, op, rc) \
    ((mb)->bft->enumerateInstanceNames((mb), (ctx), (op), (rc)))
#define CBEnumInstances(mb, ctx, op, properties, rc) \
    ((mb)->bft->enumerateInstances((mb), (ctx), (op), (properties), (rc)))
#define CBGetInstance(mb, ctx, op, properties, rc) \
    ((mb)->bft->getInstance((mb), (ctx), (op), (properties), (rc)))
#define CBCreateInstance(mb, ctx, op, inst, rc) \
    ((mb)->bft->createInstance((mb), (ctx), (op), (inst), (rc)))
#define CBModifyInstance(mb, ctx, op, inst, properties) \
    ((mb)->bft->modifyInstance((mb), (ctx), (op), (inst), (properties)))
#define CBDeleteInstance(mb, ctx, op) ((mb)->bft->deleteInstance((mb), (ctx), (op)))
#define CBExecQuery(mb, ctx, op, query, lang, rc) \
    ((mb)->bft->execQuery((mb), (ctx), (op), (query), (lang), (rc)))
#define CBAssociators(mb, ctx, op, assocClass, resultClass, role, resultRole, properties, rc) \
    ((mb)->bft->associators((mb), (ctx), (op), (assocClass), (resultClass), (role),         \
                            (resultRole), (properties), (rc)))
#define CBAssociatorNames(mb, ctx, op, assocClass, resultClass, role, resultRole, rc) \
    ((mb)->bft->associatorNames((mb), (ctx), (op), (assocClass), (resultClass), (role), \
                                (resultRole), (rc)))
#define CBReferences(mb, ctx, op, resultClass, role, properties, rc) \
    ((mb)->bft->references((mb), (ctx), (op), (resultClass), (role), (properties), (rc)))
#define CBReferenceNames(mb, ctx, op, resultClass, role, rc) \
    ((mb)->bft->referenceNames((mb), (ctx), (op), (resultClass), (role), (rc)))
#define CBInvokeMethod(mb, ctx, op, method, in, out, rc) \
    ((mb)->bft->invokeMethod((mb), (ctx), (op), (method), (in), (out), (rc)))
#define CBSetProperty(mb, ctx, op, name, value, type) \
    ((mb)->bft->setProperty((mb), (ctx), (op), (name), (const CMPIValue*)(value), (type)))
#define CBGetProperty(mb, ctx, op, name, rc) \
    ((mb)->bft->getProperty((mb), (ctx), (op), (name), (rc)))

/* ---------------------------------------------------------------------------
 * Broker: memory services (CMPIBrokerMemFT; mft may be NULL)
 * ------------------------------------------------------------------------- */

#define CMMemMark(mb, rc) ((mb)->mft->mark((mb), (rc)))
#define CMMemRelease(mb, gc) ((mb)->mft->release((mb), (gc)))
#define CMMalloc(mb, size) ((mb)->mft->cmpiMalloc((mb), (size)))
#define CMCalloc(mb, nElems, sizeElem) ((mb)->mft->cmpiCalloc((mb), (nElems), (sizeElem)))
#define CMRealloc(mb, ptr, size) ((mb)->mft->cmpiRealloc((mb), (ptr), (size)))
#define CMStrDup(mb, str) ((mb)->mft->cmpiStrDup((mb), (str)))
#define CMFree(mb, ptr) ((mb)->mft->cmpiFree((mb), (ptr)))
#define CMFreeInstance(mb, inst) ((mb)->mft->freeInstance((mb), (inst)))
#define CMFreeObjectPath(mb, obj) ((mb)->mft->freeObjectPath((mb), (obj)))
#define CMFreeArgs(mb, args) ((mb)->mft->freeArgs((mb), (args)))
#define CMFreeString(mb, str) ((mb)->mft->freeString((mb), (str)))
#define CMFreeArray(mb, array) ((mb)->mft->freeArray((mb), (array)))
#define CMFreeDateTime(mb, date) ((mb)->mft->freeDateTime((mb), (date)))
#define CMFreeSelectExp(mb, se) ((mb)->mft->freeSelectExp((mb), (se)))

/* ---------------------------------------------------------------------------
 * Encapsulated data types
 * ------------------------------------------------------------------------- */

/* CMPIInstance */
#define CMGetProperty(inst, name, rc) ((inst)->ft->getProperty((inst), (name), (rc)))
#define CMGetPropertyAt(inst, index, name, rc) \
    ((inst)->ft->getPropertyAt((inst), (index), (name), (rc)))
#define CMGetPropertyCount(inst, rc) ((inst)->ft->getPropertyCount((inst), (rc)))
#define CMSetProperty(inst, name, value, type) \
    ((inst)->ft->setProperty((inst), (name), (const CMPIValue*)(value), (type)))
#define CMGetObjectPath(inst, rc) ((inst)->ft->getObjectPath((inst), (rc)))
#define CMSetPropertyFilter(inst, propertyList, keyList) \
    ((inst)->ft->setPropertyFilter((inst), (propertyList), (keyList)))
#define CMSetObjectPath(inst, op) ((inst)->ft->setObjectPath((inst), (op)))
#define CMSetPropertyWithOrigin(inst, name, value, type, origin) \
    ((inst)->ft->setPropertyWithOrigin((inst), (name), (const CMPIValue*)(value), (type), (origin)))

/* CMPIObjectPath */
#define CMSetNameSpace(op, ns) ((op)->ft->setNameSpace((op), (ns)))
#define CMGetNameSpace(op, rc) ((op)->ft->getNameSpace((op), (rc)))
#define CMSetHostname(op, hn) ((op)->ft->setHostname((op), (hn)))
#define CMGetHostname(op, rc) ((op)->ft->getHostname((op), (rc)))
#define CMSetClassName(op, cn) ((op)->ft->setClassName((op), (cn)))
#define CMGetClassName(op, rc) ((op)->ft->getClassName((op), (rc)))
#define CMAddKey(op, name, value, type) \
    ((op)->ft->addKey((op), (name), (const CMPIValue*)(value), (type)))
#define CMGetKey(op, name, rc) ((op)->ft->getKey((op), (name), (rc)))
#define CMGetKeyAt(op, index, name, rc) ((op)->ft->getKeyAt((op), (index), (name), (rc)))
#define CMGetKeyCount(op, rc) ((op)->ft->getKeyCount((op), (rc)))
#define CMSetNameSpaceFromObjectPath(op, src) ((op)->ft->setNameSpaceFromObjectPath((op), (src)))
#define CMSetHostAndNameSpaceFromObjectPath(op, src) \
    ((op)->ft->setHostAndNameSpaceFromObjectPath((op), (src)))
#define CMGetClassQualifier(op, qName, rc) ((op)->ft->getClassQualifier((op), (qName), (rc)))
#define CMGetPropertyQualifier(op, pName, qName, rc) \
    ((op)->ft->getPropertyQualifier((op), (pName), (qName), (rc)))
#define CMGetMethodQualifier(op, methodName, qName, rc) \
    ((op)->ft->getMethodQualifier((op), (methodName), (qName), (rc)))
#define CMGetParameterQualifier(op, mName, pName, qName, rc) \
    ((op)->ft->getParameterQualifier((op), (mName), (pName), (qName), (rc)))
#define CMObjectPathToString(op, rc) ((op)->ft->toString((op), (rc)))

/* CMPIArray */
#define CMGetArrayCount(ar, rc) ((ar)->ft->getSize((ar), (rc)))
#define CMGetArrayType(ar, rc) ((ar)->ft->getSimpleType((ar), (rc)))
#define CMGetArrayElementAt(ar, index, rc) ((ar)->ft->getElementAt((ar), (index), (rc)))
#define CMSetArrayElementAt(ar, index, value, type) \
    ((ar)->ft->setElementAt((ar), (index), (const CMPIValue*)(value), (type)))

/* CMPIArgs */
#define CMAddArg(as, name, value, type) \
    ((as)->ft->addArg((as), (name), (const CMPIValue*)(value), (type)))
#define CMGetArg(as, name, rc) ((as)->ft->getArg((as), (name), (rc)))
#define CMGetArgAt(as, index, name, rc) ((as)->ft->getArgAt((as), (index), (name), (rc)))
#define CMGetArgCount(as, rc) ((as)->ft->getArgCount((as), (rc)))

/*
 * CMPIString.  CMGetCharPtr goes through the function table instead of
 * reading the handle directly, so it works with every object manager.
 */
#define CMGetCharsPtr(st, rc) ((st)->ft->getCharPtr((st), (rc)))
#define CMGetCharPtr(st) ((st)->ft->getCharPtr((st), NULL))

/* CMPIEnumeration */
#define CMGetNext(en, rc) ((en)->ft->getNext((en), (rc)))
#define CMHasNext(en, rc) ((en)->ft->hasNext((en), (rc)))
#define CMToArray(en, rc) ((en)->ft->toArray((en), (rc)))

/* CMPIResult */
#define CMReturnData(rslt, value, type) \
    ((rslt)->ft->returnData((rslt), (const CMPIValue*)(value), (type)))
#define CMReturnInstance(rslt, inst) ((rslt)->ft->returnInstance((rslt), (inst)))
#define CMReturnObjectPath(rslt, ref) ((rslt)->ft->returnObjectPath((rslt), (ref)))
#define CMReturnDone(rslt) ((rslt)->ft->returnDone((rslt)))
#define CMReturnError(rslt, er) ((rslt)->ft->returnError((rslt), (er)))

/* CMPIContext */
#define CMGetContextEntry(ctx, name, rc) ((ctx)->ft->getEntry((ctx), (name), (rc)))
#define CMGetContextEntryAt(ctx, index, name, rc) \
    ((ctx)->ft->getEntryAt((ctx), (index), (name), (rc)))
#define CMGetContextEntryCount(ctx, rc) ((ctx)->ft->getEntryCount((ctx), (rc)))
#define CMAddContextEntry(ctx, name, value, type) \
    ((ctx)->ft->addEntry((ctx), (name), (const CMPIValue*)(value), (type)))

/* CMPIDateTime */
#define CMGetBinaryFormat(dt, rc) ((dt)->ft->getBinaryFormat((dt), (rc)))
#define CMGetStringFormat(dt, rc) ((dt)->ft->getStringFormat((dt), (rc)))
#define CMIsInterval(dt, rc) ((dt)->ft->isInterval((dt), (rc)))

/* CMPISelectExp, CMPISelectCond, CMPISubCond, CMPIPredicate */
#define CMGetSelExpString(se, rc) ((se)->ft->getString((se), (rc)))
#define CMEvaluateSelExp(se, inst, rc) ((se)->ft->evaluate((se), (inst), (rc)))
#define CMEvaluateSelExpUsingAccessor(se, accessor, parm, rc) \
    ((se)->ft->evaluateUsingAccessor((se), (accessor), (parm), (rc)))
#define CMGetDoc(se, rc) ((se)->ft->getDOC((se), (rc)))
#define CMGetCod(se, rc) ((se)->ft->getCOD((se), (rc)))
#define CMGetSubCondCountAndType(sc, type, rc) ((sc)->ft->getCountAndType((sc), (type), (rc)))
#define CMGetSubCondAt(sc, index, rc) ((sc)->ft->getSubCondAt((sc), (index), (rc)))
#define CMGetPredicateCount(sc, rc) ((sc)->ft->getCount((sc), (rc)))
#define CMGetPredicateAt(sc, index, rc) ((sc)->ft->getPredicateAt((sc), (index), (rc)))
#define CMGetPredicate(sc, name, rc) ((sc)->ft->getPredicate((sc), (name), (rc)))
#define CMGetPredicateData(pr, type, op, lhs, rhs) \
    ((pr)->ft->getData((pr), (type), (op), (lhs), (rhs)))
#define CMEvaluatePredicateUsingAccessor(pr, accessor, parm, rc) \
    ((pr)->ft->evaluateUsingAccessor((pr), (accessor), (parm), (rc)))

/* CMPIError */
#define CMGetErrorType(er, rc) ((er)->ft->getErrorType((er), (rc)))
#define CMGetOtherErrorType(er, rc) ((er)->ft->getOtherErrorType((er), (rc)))
#define CMGetOwningEntity(er, rc) ((er)->ft->getOwningEntity((er), (rc)))
#define CMGetMessageID(er, rc) ((er)->ft->getMessageID((er), (rc)))
#define CMGetErrorMessage(er, rc) ((er)->ft->getMessage((er), (rc)))
#define CMGetPerceivedSeverity(er, rc) ((er)->ft->getPerceivedSeverity((er), (rc)))
#define CMGetProbableCause(er, rc) ((er)->ft->getProbableCause((er), (rc)))
#define CMGetProbableCauseDescription(er, rc) ((er)->ft->getProbableCauseDescription((er), (rc)))
#define CMGetRecommendedActions(er, rc) ((er)->ft->getRecommendedActions((er), (rc)))
#define CMGetErrorSource(er, rc) ((er)->ft->getErrorSource((er), (rc)))
#define CMGetErrorSourceFormat(er, rc) ((er)->ft->getErrorSourceFormat((er), (rc)))
#define CMGetOtherErrorSourceFormat(er, rc) ((er)->ft->getOtherErrorSourceFormat((er), (rc)))
#define CMGetCIMStatusCode(er, rc) ((er)->ft->getCIMStatusCode((er), (rc)))
#define CMGetCIMStatusCodeDescription(er, rc) ((er)->ft->getCIMStatusCodeDescription((er), (rc)))
#define CMGetMessageArguments(er, rc) ((er)->ft->getMessageArguments((er), (rc)))
#define CMSetErrorType(er, et) ((er)->ft->setErrorType((er), (et)))
#define CMSetOtherErrorType(er, ot) ((er)->ft->setOtherErrorType((er), (ot)))
#define CMSetProbableCauseDescription(er, pcd) ((er)->ft->setProbableCauseDescription((er), (pcd)))
#define CMSetRecommendedActions(er, ra) ((er)->ft->setRecommendedActions((er), (ra)))
#define CMSetErrorSource(er, es) ((er)->ft->setErrorSource((er), (es)))
#define CMSetErrorSourceFormat(er, esf) ((er)->ft->setErrorSourceFormat((er), (esf)))
#define CMSetOtherErrorSourceFormat(er, oesf) ((er)->ft->setOtherErrorSourceFormat((er), (oesf)))
#define CMSetCIMStatusCodeDescription(er, cd) ((er)->ft->setCIMStatusCodeDescription((er), (cd)))
#define CMSetMessageArguments(er, values) ((er)->ft->setMessageArguments((er), (values)))

/* ---------------------------------------------------------------------------
 * MI factory stubs for providers written in plain C.
 *
 * CMxxxMIStub(pfx, pn, broker, hook) defines a static function table filled
 * with the functions pfx<Operation> and the exported factory
 * pn_Create_xxxMI, which stores the broker in the variable named by broker
 * (declared by the provider as `static const CMPIBroker* broker;`), runs hook
 * (a statement, or CMNoHook) and returns a static MI record.  The MI name in
 * the table is the MI kind glued to pn.
 * ------------------------------------------------------------------------- */

#define CMNoHook

#define CMPI_STUB_OK_(st) CMSetStatus((st), CMPI_RC_OK)

#define CMInstanceMIStub(pfx, pn, broker, hook)                                          \
    static CMPIInstanceMIFT cmpi_instMIFT_ = {                                         \
        CMPICurrentVersion, CMPICurrentVersion, "instance" #pn,                         \
        pfx##Cleanup, pfx##EnumInstanceNames, pfx##EnumInstances, pfx##GetInstance,     \
        pfx##CreateInstance, pfx##ModifyInstance, pfx##DeleteInstance, pfx##ExecQuery}; \
    CMPI_EXTERN_C CMPIInstanceMI* pn##_Create_InstanceMI(                               \
        const CMPIBroker* brkr, const CMPIContext* ctx, CMPIStatus* rc) {               \
        static CMPIInstanceMI mi = {NULL, &cmpi_instMIFT_};                             \
        (void)ctx;                                                                      \
        broker = brkr;                                                                  \
        hook;                                                                           \
        CMPI_STUB_OK_(rc);                                                              \
        return &mi;                                                                     \
    }

#define CMAssociationMIStub(pfx, pn, broker, hook)                                        \
    static CMPIAssociationMIFT cmpi_assocMIFT_ = {                                      \
        CMPICurrentVersion, CMPICurrentVersion, "association" #pn,                       \
        pfx##AssociationCleanup, pfx##Associators, pfx##AssociatorNames, pfx##References, \
        pfx##ReferenceNames};                                                            \
    CMPI_EXTERN_C CMPIAssociationMI* pn##_Create_AssociationMI(                          \
        const CMPIBroker* brkr, const CMPIContext* ctx, CMPIStatus* rc) {                \
        static CMPIAssociationMI mi = {NULL, &cmpi_assocMIFT_};                          \
        (void)ctx;                                                                       \
        broker = brkr;                                                                   \
        hook;                                                                            \
        CMPI_STUB_OK_(rc);                                                               \
        return &mi;                                                                      \
    }

#define CMMethodMIStub(pfx, pn, broker, hook)                                       \
    static CMPIMethodMIFT cmpi_methMIFT_ = {CMPICurrentVersion, CMPICurrentVersion, \
                                            "method" #pn, pfx##MethodCleanup,       \
                                            pfx##InvokeMethod};                     \
    CMPI_EXTERN_C CMPIMethodMI* pn##_Create_MethodMI(                               \
        const CMPIBroker* brkr, const CMPIContext* ctx, CMPIStatus* rc) {           \
        static CMPIMethodMI mi = {NULL, &cmpi_methMIFT_};                           \
        (void)ctx;                                                                  \
        broker = brkr;                                                              \
        hook;                                                                       \
        CMPI_STUB_OK_(rc);                                                          \
        return &mi;                                                                 \
    }

/* Like the CMPI standard's stub, leaves setPropertyWithOrigin NULL. */
#define CMPropertyMIStub(pfx, pn, broker, hook)                                                 \
    static CMPIPropertyMIFT cmpi_propMIFT_ = {                                                \
        CMPICurrentVersion, CMPICurrentVersion, "property" #pn, pfx##PropertyCleanup,          \
        pfx##SetProperty, pfx##GetProperty, NULL};                                 \
    CMPI_EXTERN_C CMPIPropertyMI* pn##_Create_PropertyMI(                                      \
        const CMPIBroker* brkr, const CMPIContext* ctx, CMPIStatus* rc) {                      \
        static CMPIPropertyMI mi = {NULL, &cmpi_propMIFT_};                                    \
        (void)ctx;                                                                             \
        broker = brkr;                                                                         \
        hook;                                                                                  \
        CMPI_STUB_OK_(rc);                                                                     \
        return &mi;                                                                            \
    }

#define CMIndicationMIStub(pfx, pn, broker, hook)                                       \
    static CMPIIndicationMIFT cmpi_indMIFT_ = {                                       \
        CMPICurrentVersion, CMPICurrentVersion, "Indication" #pn,                      \
        pfx##IndicationCleanup, pfx##AuthorizeFilter, pfx##MustPoll,                    \
        pfx##ActivateFilter, pfx##DeActivateFilter, pfx##EnableIndications,             \
        pfx##DisableIndications};                                                      \
    CMPI_EXTERN_C CMPIIndicationMI* pn##_Create_IndicationMI(                          \
        const CMPIBroker* brkr, const CMPIContext* ctx, CMPIStatus* rc) {              \
        static CMPIIndicationMI mi = {NULL, &cmpi_indMIFT_};                           \
        (void)ctx;                                                                     \
        broker = brkr;                                                                 \
        hook;                                                                          \
        CMPI_STUB_OK_(rc);                                                             \
        return &mi;                                                                    \
    }

#endif /* ZEDA_CMPI_CMPIMACS_H */
