/*
 * A provider module for the host's streaming and concurrency tests.
 *
 * ZEDA_HostMany: enumerateInstances returns kItems instances (Index uint32,
 * Name "item-<Index>", Tag = the Tag key of the class path handed in, so a
 * test tells the requests apart); every object is made through the broker.
 * With Tag "release" it releases each instance, path and string once the
 * instance is returned.
 * ZEDA_HostSlowA / ZEDA_HostSlowB: factories that take a while and count how
 * many calls of the same class overlap; zeda_slow_*() read the counters.
 */
#include <stdatomic.h>
#include <stdio.h>
#include <string.h>
#include <time.h>

#include <cmpidt.h>
#include <cmpift.h>

enum { kItems = 500 };

static const CMPIBroker* many_broker;

static CMPIStatus ok_status(void) {
  CMPIStatus st = {CMPI_RC_OK, NULL};
  return st;
}

static CMPIStatus cleanup(CMPIInstanceMI* mi, const CMPIContext* ctx, CMPIBoolean terminating) {
  (void)mi;
  (void)ctx;
  (void)terminating;
  return ok_status();
}

static const char* tag_of(const CMPIObjectPath* op) {
  CMPIStatus st = {CMPI_RC_OK, NULL};
  CMPIData d = op->ft->getKey(op, "Tag", &st);
  if (st.rc != CMPI_RC_OK || d.type != CMPI_string || d.value.string == NULL) return "";
  return d.value.string->ft->getCharPtr(d.value.string, NULL);
}

static CMPIStatus enumerate(CMPIInstanceMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                            const CMPIObjectPath* classPath, const char** properties) {
  CMPIStatus st = {CMPI_RC_OK, NULL};
  const char* ns = classPath->ft->getNameSpace(classPath, NULL)
                       ->ft->getCharPtr(classPath->ft->getNameSpace(classPath, NULL), NULL);
  const char* tag = tag_of(classPath);
  const int release = strcmp(tag, "release") == 0;
  unsigned int i;
  (void)mi;
  (void)ctx;
  (void)properties;
  for (i = 0; i < kItems; ++i) {
    char name[32];
    CMPIValue v;
    CMPIObjectPath* op = many_broker->eft->newObjectPath(many_broker, ns, "ZEDA_HostMany", &st);
    CMPIInstance* ci;
    if (st.rc != CMPI_RC_OK) return st;
    snprintf(name, sizeof name, "item-%u", i);
    op->ft->addKey(op, "Name", (const CMPIValue*)name, CMPI_chars);
    ci = many_broker->eft->newInstance(many_broker, op, &st);
    if (st.rc != CMPI_RC_OK) return st;
    v.uint32 = i;
    ci->ft->setProperty(ci, "Index", &v, CMPI_uint32);
    v.string = many_broker->eft->newString(many_broker, name, NULL);
    ci->ft->setProperty(ci, "Name", &v, CMPI_string);
    ci->ft->setProperty(ci, "Tag", (const CMPIValue*)tag, CMPI_chars);
    st = rslt->ft->returnInstance(rslt, ci);
    if (st.rc != CMPI_RC_OK) return st;
    if (release) {
      v.string->ft->release(v.string);
      ci->ft->release(ci);
      op->ft->release(op);
    }
  }
  rslt->ft->returnDone(rslt);
  return ok_status();
}

static CMPIInstanceMIFT many_ft = {CMPICurrentVersion,
                                   CMPICurrentVersion,
                                   "ZEDA_HostMany",
                                   cleanup,
                                   NULL,
                                   enumerate,
                                   NULL,
                                   NULL,
                                   NULL,
                                   NULL,
                                   NULL};
static CMPIInstanceMI many_mi = {NULL, &many_ft};

CMPI_EXTERN_C CMPIInstanceMI* ZEDA_HostManyProvider_Create_InstanceMI(const CMPIBroker* mb,
                                                                      const CMPIContext* ctx,
                                                                      CMPIStatus* rc) {
  (void)ctx;
  many_broker = mb;
  if (rc != NULL) *rc = ok_status();
  return &many_mi;
}

/* --- slow factories ----------------------------------------------------- */

typedef struct {
  atomic_int inside;    /* calls of this class running now */
  atomic_int maxInside; /* most calls of this class seen running at once */
  atomic_int calls;
} SlowClass;

static SlowClass slow[2];
static atomic_int inside_any;
static atomic_int max_inside_any;

static void note_max(atomic_int* max, int now) {
  int seen = atomic_load(max);
  while (now > seen && !atomic_compare_exchange_weak(max, &seen, now)) {
  }
}

static CMPIStatus slow_enumerate(CMPIInstanceMI* mi, const CMPIContext* ctx, const CMPIResult* rslt,
                                 const CMPIObjectPath* classPath, const char** properties) {
  (void)mi;
  (void)ctx;
  (void)classPath;
  (void)properties;
  rslt->ft->returnDone(rslt);
  return ok_status();
}

static CMPIInstanceMIFT slow_ft = {CMPICurrentVersion,
                                   CMPICurrentVersion,
                                   "ZEDA_HostSlow",
                                   cleanup,
                                   NULL,
                                   slow_enumerate,
                                   NULL,
                                   NULL,
                                   NULL,
                                   NULL,
                                   NULL};
static CMPIInstanceMI slow_mi[2] = {{NULL, &slow_ft}, {NULL, &slow_ft}};

static CMPIInstanceMI* slow_factory(int which, CMPIStatus* rc) {
  SlowClass* c = &slow[which];
  const struct timespec pause = {0, 50 * 1000 * 1000};
  note_max(&c->maxInside, atomic_fetch_add(&c->inside, 1) + 1);
  note_max(&max_inside_any, atomic_fetch_add(&inside_any, 1) + 1);
  atomic_fetch_add(&c->calls, 1);
  nanosleep(&pause, NULL);
  atomic_fetch_sub(&inside_any, 1);
  atomic_fetch_sub(&c->inside, 1);
  if (rc != NULL) *rc = ok_status();
  return &slow_mi[which];
}

CMPI_EXTERN_C CMPIInstanceMI* ZEDA_HostSlowAProvider_Create_InstanceMI(const CMPIBroker* mb,
                                                                       const CMPIContext* ctx,
                                                                       CMPIStatus* rc) {
  (void)mb;
  (void)ctx;
  return slow_factory(0, rc);
}

CMPI_EXTERN_C CMPIInstanceMI* ZEDA_HostSlowBProvider_Create_InstanceMI(const CMPIBroker* mb,
                                                                       const CMPIContext* ctx,
                                                                       CMPIStatus* rc) {
  (void)mb;
  (void)ctx;
  return slow_factory(1, rc);
}

/* Readers for the test (found with dlsym). */
CMPI_EXTERN_C int zeda_slow_max_same_class(int which) {
  return atomic_load(&slow[which].maxInside);
}
CMPI_EXTERN_C int zeda_slow_calls(int which) { return atomic_load(&slow[which].calls); }
CMPI_EXTERN_C int zeda_slow_max_any(void) { return atomic_load(&max_inside_any); }
