/* Instance MI of ZEDA_HostTest: two instances carrying every CIM type the
 * output formats print. */
#include <stdint.h>
#include <string.h>

#include "test_provider.h"

CMPIObjectPath* make_test_path(const char* ns, const char* id) {
  CMPIObjectPath* op = g_broker->eft->newObjectPath(g_broker, ns, TEST_CLASS, NULL);
  op->ft->addKey(op, "InstanceID", (const CMPIValue*)id, CMPI_chars);
  return op;
}

static void set(CMPIInstance* ci, const char* name, CMPIValue v, CMPIType t) {
  ci->ft->setProperty(ci, name, &v, t);
}

static CMPIArray* uint_array(CMPIType t, const CMPIUint64* v, CMPICount n) {
  CMPICount i;
  CMPIArray* a = g_broker->eft->newArray(g_broker, n, t, NULL);
  for (i = 0; i < n; ++i) {
    CMPIValue e;
    if (t == CMPI_uint16)
      e.uint16 = (CMPIUint16)v[i];
    else
      e.uint64 = v[i];
    a->ft->setElementAt(a, i, &e, t);
  }
  return a;
}

CMPIInstance* make_test_instance(const char* ns, const char* id, const char** properties) {
  static const char* keys[] = {"InstanceID", NULL};
  CMPIObjectPath* op;
  CMPIInstance* ci;
  CMPIValue v;
  if (strcmp(id, "1") != 0 && strcmp(id, "2") != 0) return NULL;
  op = make_test_path(ns, id);
  ci = g_broker->eft->newInstance(g_broker, op, NULL);
  ci->ft->setPropertyFilter(ci, properties, keys);

  v.string = g_broker->eft->newString(g_broker, id, NULL);
  set(ci, "InstanceID", v, CMPI_string);
  if (strcmp(id, "2") == 0) {
    v.uint16 = 2;
    set(ci, "U16", v, CMPI_uint16);
    return ci;
  }
  /* CMPI_chars arguments pass the char* itself. */
  ci->ft->setProperty(ci, "Name", (const CMPIValue*)"Disk \"one\" <&> \\ end", CMPI_chars);
  v.boolean = 1;
  set(ci, "Flag", v, CMPI_boolean);
  v.uint8 = 200;
  set(ci, "U8", v, CMPI_uint8);
  v.uint16 = 65535;
  set(ci, "U16", v, CMPI_uint16);
  v.uint32 = 4294967295u;
  set(ci, "U32", v, CMPI_uint32);
  v.uint64 = UINT64_MAX;
  set(ci, "U64", v, CMPI_uint64);
  v.sint8 = -128;
  set(ci, "S8", v, CMPI_sint8);
  v.sint16 = -32768;
  set(ci, "S16", v, CMPI_sint16);
  v.sint32 = INT32_MIN;
  set(ci, "S32", v, CMPI_sint32);
  v.sint64 = INT64_MIN;
  set(ci, "S64", v, CMPI_sint64);
  v.real32 = 1.5f;
  set(ci, "R32", v, CMPI_real32);
  v.real64 = -0.25;
  set(ci, "R64", v, CMPI_real64);
  v.dateTime = g_broker->eft->newDateTimeFromChars(g_broker, "20240229123456.789012+000", NULL);
  set(ci, "Stamp", v, CMPI_dateTime);
  v.dateTime = g_broker->eft->newDateTimeFromChars(g_broker, "00000001020304.000005:000", NULL);
  set(ci, "Span", v, CMPI_dateTime);
  v.ref = make_test_path(ns, "2");
  set(ci, "Ref", v, CMPI_ref);
  {
    static const CMPIUint64 u16[] = {1, 2, 3};
    static const CMPIUint64 u64[] = {UINT64_MAX, 0};
    CMPIArray* s = g_broker->eft->newArray(g_broker, 2, CMPI_string, NULL);
    CMPIArray* b = g_broker->eft->newArray(g_broker, 2, CMPI_boolean, NULL);
    CMPIValue e;
    v.array = uint_array(CMPI_uint16, u16, 3);
    set(ci, "U16A", v, CMPI_uint16A);
    s->ft->setElementAt(s, 0, (const CMPIValue*)"a", CMPI_chars);
    e.string = g_broker->eft->newString(g_broker, "b\"c", NULL);
    s->ft->setElementAt(s, 1, &e, CMPI_string);
    v.array = s;
    set(ci, "StrA", v, CMPI_stringA);
    v.array = uint_array(CMPI_uint64, u64, 2);
    set(ci, "U64A", v, CMPI_uint64A);
    e.boolean = 1;
    b->ft->setElementAt(b, 0, &e, CMPI_boolean);
    e.boolean = 0;
    b->ft->setElementAt(b, 1, &e, CMPI_boolean);
    v.array = b;
    set(ci, "BoolA", v, CMPI_booleanA);
  }
  ci->ft->setProperty(ci, "NullStr", NULL, CMPI_string);
  return ci;
}

static const char* ns_of(const CMPIObjectPath* op) {
  return str_of(op->ft->getNameSpace(op, NULL));
}

static CMPIStatus ok(void) {
  CMPIStatus st = {CMPI_RC_OK, NULL};
  return st;
}

static CMPIStatus fail(CMPIrc rc, const char* msg) {
  CMPIStatus st;
  st.rc = rc;
  st.msg = msg ? g_broker->eft->newString(g_broker, msg, NULL) : NULL;
  return st;
}

/* Logs the clean-up through the broker so that tests can see it happened. */
static CMPIStatus cleanup(CMPIInstanceMI* mi, const CMPIContext* ctx, CMPIBoolean terminating) {
  g_broker->eft->trace(g_broker, CMPI_LEV_INFO, "cleanup",
                       terminating ? "instance terminating" : "instance", NULL);
  return ok();
}

static CMPIStatus enum_names(CMPIInstanceMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                             const CMPIObjectPath* op) {
  rslt->ft->returnObjectPath(rslt, make_test_path(ns_of(op), "1"));
  rslt->ft->returnObjectPath(rslt, make_test_path(ns_of(op), "2"));
  rslt->ft->returnDone(rslt);
  return ok();
}

static CMPIStatus enum_instances(CMPIInstanceMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                                 const CMPIObjectPath* op, const char** properties) {
  rslt->ft->returnInstance(rslt, make_test_instance(ns_of(op), "1", properties));
  rslt->ft->returnInstance(rslt, make_test_instance(ns_of(op), "2", properties));
  rslt->ft->returnDone(rslt);
  return ok();
}

static CMPIStatus get_instance(CMPIInstanceMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                               const CMPIObjectPath* op, const char** properties) {
  CMPIStatus st = {CMPI_RC_OK, NULL};
  CMPIData key = op->ft->getKey(op, "InstanceID", &st);
  CMPIInstance* ci;
  if (st.rc != CMPI_RC_OK) return fail(CMPI_RC_ERR_INVALID_PARAMETER, "no InstanceID key");
  if (key.type != CMPI_string)
    return fail(CMPI_RC_ERR_INVALID_PARAMETER, "InstanceID is not a string");
  ci = make_test_instance(ns_of(op), str_of(key.value.string), properties);
  if (ci == NULL) return fail(CMPI_RC_ERR_NOT_FOUND, "no such instance");
  rslt->ft->returnInstance(rslt, ci);
  rslt->ft->returnDone(rslt);
  return ok();
}

/* Echoes the new instance's path. */
static CMPIStatus create_instance(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                  const CMPIResult* rslt, const CMPIObjectPath* op,
                                  const CMPIInstance* inst) {
  rslt->ft->returnObjectPath(rslt, inst->ft->getObjectPath(inst, NULL));
  rslt->ft->returnDone(rslt);
  return ok();
}

/* Answers the instance back, filtered by the property list. */
static CMPIStatus modify_instance(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                  const CMPIResult* rslt, const CMPIObjectPath* op,
                                  const CMPIInstance* inst, const char** properties) {
  static const char* keys[] = {"InstanceID", NULL};
  CMPIInstance* copy = g_broker->eft->newInstance(g_broker, op, NULL);
  CMPICount i, n = inst->ft->getPropertyCount(inst, NULL);
  copy->ft->setPropertyFilter(copy, properties, keys);
  for (i = 0; i < n; ++i) {
    CMPIString* name = NULL;
    CMPIData d = inst->ft->getPropertyAt(inst, i, &name, NULL);
    copy->ft->setProperty(copy, str_of(name), (d.state & CMPI_nullValue) ? NULL : &d.value, d.type);
  }
  rslt->ft->returnInstance(rslt, copy);
  return ok();
}

static CMPIStatus delete_instance(CMPIInstanceMI* mi, const CMPIContext* ctx,
                                  const CMPIResult* rslt, const CMPIObjectPath* op) {
  CMPIData key = op->ft->getKey(op, "InstanceID", NULL);
  if (key.type == CMPI_string && str_eq(key.value.string, "1")) return ok();
  return fail(CMPI_RC_ERR_NOT_FOUND, NULL);
}

/* Hands back query and language as plain data. */
static CMPIStatus exec_query(CMPIInstanceMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                             const CMPIObjectPath* op, const char* query, const char* lang) {
  rslt->ft->returnData(rslt, (const CMPIValue*)query, CMPI_chars);
  rslt->ft->returnData(rslt, (const CMPIValue*)lang, CMPI_chars);
  rslt->ft->returnDone(rslt);
  return ok();
}

CMPIInstanceMIFT g_instance_ft = {CMPIVersion200,  CMPIVersion200,  "instanceZEDA_HostTestProvider",
                                  cleanup,         enum_names,      enum_instances,
                                  get_instance,    create_instance, modify_instance,
                                  delete_instance, exec_query};
