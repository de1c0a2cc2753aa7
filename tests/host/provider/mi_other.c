/* Association, method and indication MIs of ZEDA_HostTest, and the
 * exported factories (including two that refuse). */
#include <string.h>

#include "test_provider.h"

const CMPIBroker* g_broker = NULL;

static CMPIStatus ok(void) {
  CMPIStatus st = {CMPI_RC_OK, NULL};
  return st;
}

static CMPIStatus with_message(CMPIrc rc, const char* msg) {
  CMPIStatus st;
  st.rc = rc;
  st.msg = g_broker->eft->newString(g_broker, msg, NULL);
  return st;
}

static void trace_cleanup(const char* kind, CMPIBoolean terminating) {
  char text[64];
  strcpy(text, kind);
  strcat(text, terminating ? " terminating" : "");
  g_broker->eft->trace(g_broker, CMPI_LEV_INFO, "cleanup", text, NULL);
}

/* ---- association MI: answers echo what it received ---------------------- */

static void echo_text(CMPIInstance* ci, const char* name, const char* value) {
  ci->ft->setProperty(ci, name, (const CMPIValue*)value, value ? CMPI_chars : CMPI_string);
}

static void echo_list(CMPIInstance* ci, const char* name, const char** list) {
  CMPIValue v;
  CMPICount n = 0, i;
  if (list == NULL) {
    ci->ft->setProperty(ci, name, NULL, CMPI_stringA);
    return;
  }
  while (list[n] != NULL) ++n;
  v.array = g_broker->eft->newArray(g_broker, n, CMPI_string, NULL);
  for (i = 0; i < n; ++i)
    v.array->ft->setElementAt(v.array, i, (const CMPIValue*)list[i], CMPI_chars);
  ci->ft->setProperty(ci, name, &v, CMPI_stringA);
}

static CMPIInstance* echo(const CMPIObjectPath* op) {
  CMPIObjectPath* path = g_broker->eft->newObjectPath(
      g_broker, str_of(op->ft->getNameSpace(op, NULL)), "ZEDA_HostTestEcho", NULL);
  CMPIInstance* ci = g_broker->eft->newInstance(g_broker, path, NULL);
  CMPIValue v;
  v.ref = (CMPIObjectPath*)op;
  ci->ft->setProperty(ci, "Source", &v, CMPI_ref);
  return ci;
}

static CMPIStatus assoc_cleanup(CMPIAssociationMI* mi, const CMPIContext* ctx,
                                CMPIBoolean terminating) {
  trace_cleanup("association", terminating);
  return ok();
}

static CMPIStatus associators(CMPIAssociationMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                              const CMPIObjectPath* op, const char* assocClass,
                              const char* resultClass, const char* role, const char* resultRole,
                              const char** properties) {
  CMPIInstance* ci = echo(op);
  echo_text(ci, "AssocClass", assocClass);
  echo_text(ci, "ResultClass", resultClass);
  echo_text(ci, "Role", role);
  echo_text(ci, "ResultRole", resultRole);
  echo_list(ci, "Properties", properties);
  rslt->ft->returnInstance(rslt, ci);
  rslt->ft->returnDone(rslt);
  return ok();
}

static CMPIStatus associator_names(CMPIAssociationMI* mi, const CMPIContext* ctx,
                                   const CMPIResult* rslt, const CMPIObjectPath* op,
                                   const char* assocClass, const char* resultClass,
                                   const char* role, const char* resultRole) {
  rslt->ft->returnObjectPath(rslt, make_test_path(str_of(op->ft->getNameSpace(op, NULL)), "2"));
  rslt->ft->returnDone(rslt);
  return ok();
}

static CMPIStatus references(CMPIAssociationMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                             const CMPIObjectPath* op, const char* resultClass, const char* role,
                             const char** properties) {
  CMPIInstance* ci = echo(op);
  echo_text(ci, "ResultClass", resultClass);
  echo_text(ci, "Role", role);
  echo_list(ci, "Properties", properties);
  rslt->ft->returnInstance(rslt, ci);
  rslt->ft->returnDone(rslt);
  return ok();
}

/* No returnDone: the host must report done = false. */
static CMPIStatus reference_names(CMPIAssociationMI* mi, const CMPIContext* ctx,
                                  const CMPIResult* rslt, const CMPIObjectPath* op,
                                  const char* resultClass, const char* role) {
  rslt->ft->returnObjectPath(rslt, op);
  return with_message(CMPI_RC_ERR_NOT_FOUND, "reference names: nothing more");
}

static CMPIAssociationMIFT g_association_ft = {
    CMPIVersion200, CMPIVersion200, "associationZEDA_HostTestProvider",
    assoc_cleanup,  associators,    associator_names,
    references,     reference_names};

/* ---- method MI: Echo and the self-checks -------------------------------- */

typedef void (*CheckFn)(Report*, const CMPIContext*, CMPIArgs*);

static CheckFn find_check(const char* method) {
  static const struct {
    const char* name;
    CheckFn fn;
  } checks[] = {
      {"CheckStrings", check_strings},
      {"CheckArrays", check_arrays},
      {"CheckDateTimes", check_datetimes},
      {"CheckObjectPaths", check_object_paths},
      {"CheckInstances", check_instances},
      {"CheckArgs", check_args},
      {"CheckContexts", check_contexts},
      {"CheckErrors", check_errors},
      {"CheckSelectExps", check_select_exps},
      {"CheckUpcalls", check_upcalls},
      {"CheckEncServices", check_enc_services},
      {"CheckThreads", check_threads},
      {"CheckMemory", check_memory},
  };
  size_t i;
  for (i = 0; i < sizeof checks / sizeof checks[0]; ++i) {
    if (strcmp(checks[i].name, method) == 0) return checks[i].fn;
  }
  return NULL;
}

static CMPIStatus method_cleanup(CMPIMethodMI* mi, const CMPIContext* ctx,
                                 CMPIBoolean terminating) {
  trace_cleanup("method", terminating);
  return ok();
}

static CMPIStatus invoke_method(CMPIMethodMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                                const CMPIObjectPath* op, const char* method, const CMPIArgs* in,
                                CMPIArgs* out) {
  CheckFn fn;
  if (strcmp(method, "Echo") == 0) {
    CMPICount i, n = in->ft->getArgCount(in, NULL);
    CMPIStatus st = {CMPI_RC_OK, NULL};
    CMPIData value;
    for (i = 0; i < n; ++i) {
      CMPIString* name = NULL;
      CMPIData d = in->ft->getArgAt(in, i, &name, NULL);
      out->ft->addArg(out, str_of(name), (d.state & CMPI_nullValue) ? NULL : &d.value, d.type);
    }
    value = in->ft->getArg(in, "Value", &st);
    if (st.rc == CMPI_RC_OK) rslt->ft->returnData(rslt, &value.value, value.type);
    rslt->ft->returnDone(rslt);
    return ok();
  }
  fn = find_check(method);
  if (fn == NULL && strcmp(method, "CheckResults") != 0) {
    return with_message(CMPI_RC_ERR_METHOD_NOT_FOUND, method);
  }
  {
    Report r;
    CMPIValue v;
    memset(&r, 0, sizeof r);
    if (fn != NULL) {
      fn(&r, ctx, out);
    } else {
      check_results(&r, ctx, rslt, out);
    }
    out->ft->addArg(out, "Failures", (const CMPIValue*)r.failures, CMPI_chars);
    v.uint32 = r.checks;
    out->ft->addArg(out, "Checks", &v, CMPI_uint32);
    v.uint32 = r.failed;
    rslt->ft->returnData(rslt, &v, CMPI_uint32);
    rslt->ft->returnDone(rslt);
  }
  return ok();
}

static CMPIMethodMIFT g_method_ft = {CMPIVersion200, CMPIVersion200, "methodZEDA_HostTestProvider",
                                     method_cleanup, invoke_method};

/* ---- indication MI: each answer's message tells what arrived ------------ */

static CMPIStatus indication_cleanup(CMPIIndicationMI* mi, const CMPIContext* ctx,
                                     CMPIBoolean terminating) {
  trace_cleanup("indication", terminating);
  return ok();
}

static CMPIStatus describe(const char* what, const CMPISelectExp* filter, const char* className,
                           const CMPIObjectPath* op, const char* extra) {
  char text[512];
  const char* query = filter ? str_of(filter->ft->getString(filter, NULL)) : "(no filter)";
  const char* cls = op ? str_of(op->ft->getClassName(op, NULL)) : "(no path)";
  text[0] = '\0';
  strncat(text, what, 64);
  strncat(text, " ", 2);
  strncat(text, className ? className : "(null)", 64);
  strncat(text, " ", 2);
  strncat(text, cls, 64);
  strncat(text, " ", 2);
  strncat(text, extra, 64);
  strncat(text, " ", 2);
  strncat(text, query, 200);
  return with_message(CMPI_RC_OK, text);
}

static CMPIStatus authorize_filter(CMPIIndicationMI* mi, const CMPIContext* ctx,
                                   const CMPISelectExp* filter, const char* className,
                                   const CMPIObjectPath* op, const char* owner) {
  return describe("authorize", filter, className, op, owner ? owner : "(null)");
}

static CMPIStatus must_poll(CMPIIndicationMI* mi, const CMPIContext* ctx,
                            const CMPISelectExp* filter, const char* className,
                            const CMPIObjectPath* op) {
  return describe("mustPoll", filter, className, op, "-");
}

static CMPIStatus activate_filter(CMPIIndicationMI* mi, const CMPIContext* ctx,
                                  const CMPISelectExp* filter, const char* className,
                                  const CMPIObjectPath* op, CMPIBoolean first) {
  return describe("activate", filter, className, op, first ? "first" : "more");
}

static CMPIStatus deactivate_filter(CMPIIndicationMI* mi, const CMPIContext* ctx,
                                    const CMPISelectExp* filter, const char* className,
                                    const CMPIObjectPath* op, CMPIBoolean last) {
  return describe("deactivate", filter, className, op, last ? "last" : "more");
}

static CMPIStatus enable_indications(CMPIIndicationMI* mi, const CMPIContext* ctx) {
  return with_message(CMPI_RC_OK, "enabled");
}

static CMPIStatus disable_indications(CMPIIndicationMI* mi, const CMPIContext* ctx) {
  return with_message(CMPI_RC_OK, "disabled");
}

static CMPIIndicationMIFT g_indication_ft = {
    CMPIVersion200,     CMPIVersion200,    "indicationZEDA_HostTestProvider",
    indication_cleanup, authorize_filter,  must_poll,
    activate_filter,    deactivate_filter, enable_indications,
    disable_indications};

/* ---- factories ----------------------------------------------------------- */

/* One shared provider object, like a real module's per-class provider. */
static int g_provider_object;
static CMPIInstanceMI g_instance_mi = {&g_provider_object, &g_instance_ft};
static CMPIAssociationMI g_association_mi = {&g_provider_object, &g_association_ft};
static CMPIMethodMI g_method_mi = {&g_provider_object, &g_method_ft};
static CMPIIndicationMI g_indication_mi = {&g_provider_object, &g_indication_ft};

/* Factories refuse a context without CMPIInitNameSpace. */
static int accept(const CMPIBroker* mb, const CMPIContext* ctx, CMPIStatus* rc) {
  CMPIStatus st = {CMPI_RC_OK, NULL};
  CMPIData ns;
  g_broker = mb;
  ns = ctx->ft->getEntry(ctx, CMPIInitNameSpace, &st);
  if (st.rc != CMPI_RC_OK || ns.type != CMPI_string) {
    rc->rc = CMPI_RC_ERR_FAILED;
    rc->msg = mb->eft->newString(mb, "no CMPIInitNameSpace in the factory context", NULL);
    return 0;
  }
  return 1;
}

CMPI_EXTERN_C CMPIInstanceMI* ZEDA_HostTestProvider_Create_InstanceMI(const CMPIBroker* mb,
                                                                      const CMPIContext* ctx,
                                                                      CMPIStatus* rc) {
  return accept(mb, ctx, rc) ? &g_instance_mi : NULL;
}

CMPI_EXTERN_C CMPIAssociationMI* ZEDA_HostTestProvider_Create_AssociationMI(const CMPIBroker* mb,
                                                                            const CMPIContext* ctx,
                                                                            CMPIStatus* rc) {
  return accept(mb, ctx, rc) ? &g_association_mi : NULL;
}

CMPI_EXTERN_C CMPIMethodMI* ZEDA_HostTestProvider_Create_MethodMI(const CMPIBroker* mb,
                                                                  const CMPIContext* ctx,
                                                                  CMPIStatus* rc) {
  return accept(mb, ctx, rc) ? &g_method_mi : NULL;
}

CMPI_EXTERN_C CMPIIndicationMI* ZEDA_HostTestProvider_Create_IndicationMI(const CMPIBroker* mb,
                                                                          const CMPIContext* ctx,
                                                                          CMPIStatus* rc) {
  return accept(mb, ctx, rc) ? &g_indication_mi : NULL;
}

/* Refuses with a code and a message. */
CMPI_EXTERN_C CMPIInstanceMI* ZEDA_HostRefuseProvider_Create_InstanceMI(const CMPIBroker* mb,
                                                                        const CMPIContext* ctx,
                                                                        CMPIStatus* rc) {
  rc->rc = CMPI_RC_ERR_ACCESS_DENIED;
  rc->msg = mb->eft->newString(mb, "refused", NULL);
  return NULL;
}

/* Hands out a record but reports a failure: an object manager must not use it. */
CMPI_EXTERN_C CMPIInstanceMI* ZEDA_HostHalfProvider_Create_InstanceMI(const CMPIBroker* mb,
                                                                      const CMPIContext* ctx,
                                                                      CMPIStatus* rc) {
  g_broker = mb;
  rc->rc = CMPI_RC_ERR_FAILED;
  rc->msg = NULL;
  return &g_instance_mi;
}

/* Exported, but no factory: `classes` must not list it. */
CMPI_EXTERN_C int ZEDA_HostTest_Create_Nothing(void) { return 0; }
