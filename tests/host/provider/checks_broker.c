/* Self-checks of the broker's up-calls (CMPIBrokerFT, CMPIEnumeration) and
 * of the miscellaneous services of CMPIBrokerEncFT. */
#include <stdint.h>
#include <string.h>

#include "test_provider.h"

#define MB g_broker

static CMPIObjectPath* class_path(const char* cls) {
  return MB->eft->newObjectPath(MB, "root/cimv2", cls, NULL);
}

static unsigned count(const CMPIEnumeration* en) {
  unsigned n = 0;
  while (en->ft->hasNext(en, NULL)) {
    en->ft->getNext(en, NULL);
    ++n;
  }
  return n;
}

void check_upcalls(Report* r, const CMPIContext* ctx, CMPIArgs* out) {
  static const char* u16[] = {"U16", NULL};
  CMPIStatus rc = {CMPI_RC_OK, NULL};
  CMPIObjectPath* cls = class_path(TEST_CLASS);
  CMPIContext* attached = MB->bft->prepareAttachThread(MB, ctx);
  CMPIEnumeration* en;
  CMPIEnumeration* copy;
  CMPIArray* all;
  CMPIInstance* ci;
  CMPIData d;
  CHECK(r, attached != NULL);
  CHECK(r, MB->bft->attachThread(MB, attached).rc == CMPI_RC_OK);
  CHECK(r, MB->bft->detachThread(MB, attached).rc == CMPI_RC_OK);
  CHECK(r, MB->bft->deliverIndication(MB, ctx, "root/cimv2", NULL).rc == CMPI_RC_ERR_NOT_SUPPORTED);

  en = MB->bft->enumerateInstanceNames(MB, ctx, cls, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && en != NULL);
  if (en == NULL) return;
  CHECK(r, en->ft->hasNext(en, NULL));
  copy = en->ft->clone(en, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && copy != NULL);
  d = en->ft->getNext(en, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && d.type == CMPI_ref);
  CHECK(r, d.type == CMPI_ref && str_eq(d.value.ref->ft->toString(d.value.ref, NULL),
                                        "root/cimv2:ZEDA_HostTest.InstanceID=\"1\""));
  CHECK(r, count(en) == 1);
  en->ft->getNext(en, &rc);
  CHECK(r, rc.rc == CMPI_RC_ERR_NOT_FOUND);
  all = en->ft->toArray(en, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && all->ft->getSize(all, NULL) == 2 &&
               all->ft->getSimpleType(all, NULL) == CMPI_ref);
  CHECK(r, count(copy) == 2);
  CHECK(r, copy->ft->release(copy).rc == CMPI_RC_OK);

  en = MB->bft->enumerateInstances(MB, ctx, cls, NULL, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && en != NULL);
  d = en->ft->getNext(en, NULL);
  CHECK(r, d.type == CMPI_instance);
  if (d.type == CMPI_instance) {
    CHECK(r, d.value.inst->ft->getProperty(d.value.inst, "U64", NULL).value.uint64 == UINT64_MAX);
  }
  en = MB->bft->enumerateInstances(MB, ctx, cls, u16, &rc);
  d = en->ft->getNext(en, NULL);
  CHECK(r, d.type == CMPI_instance && d.value.inst->ft->getPropertyCount(d.value.inst, NULL) == 2);

  ci = MB->bft->getInstance(MB, ctx, make_test_path("root/cimv2", "2"), NULL, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && ci != NULL);
  CHECK(r, ci != NULL && ci->ft->getProperty(ci, "U16", NULL).value.uint16 == 2);
  ci = MB->bft->getInstance(MB, ctx, make_test_path("root/cimv2", "9"), NULL, &rc);
  CHECK(r, ci == NULL && rc.rc == CMPI_RC_ERR_NOT_FOUND && str_eq(rc.msg, "no such instance"));

  {
    CMPIInstance* fresh = make_test_instance("root/cimv2", "2", NULL);
    CMPIObjectPath* made =
        MB->bft->createInstance(MB, ctx, make_test_path("root/cimv2", "2"), fresh, &rc);
    CHECK(r, rc.rc == CMPI_RC_OK && made != NULL);
    CHECK(r, made != NULL && str_eq(made->ft->getClassName(made, NULL), TEST_CLASS));
    CHECK(r, MB->bft->modifyInstance(MB, ctx, make_test_path("root/cimv2", "2"), fresh, NULL).rc ==
                 CMPI_RC_OK);
  }
  CHECK(r, MB->bft->deleteInstance(MB, ctx, make_test_path("root/cimv2", "1")).rc == CMPI_RC_OK);
  CHECK(r, MB->bft->deleteInstance(MB, ctx, make_test_path("root/cimv2", "9")).rc ==
               CMPI_RC_ERR_NOT_FOUND);
  en = MB->bft->execQuery(MB, ctx, cls, "SELECT * FROM ZEDA_HostTest", "WQL", &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && en != NULL && count(en) == 2);

  en = MB->bft->associators(MB, ctx, make_test_path("root/cimv2", "1"), TEST_CLASS, NULL, NULL,
                            NULL, NULL, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && en != NULL);
  d = en->ft->getNext(en, NULL);
  CHECK(r, d.type == CMPI_instance &&
               str_eq(d.value.inst->ft->getProperty(d.value.inst, "AssocClass", NULL).value.string,
                      TEST_CLASS));
  en = MB->bft->associators(MB, ctx, make_test_path("root/cimv2", "1"), NULL, NULL, NULL, NULL,
                            NULL, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && en != NULL && count(en) == 1);
  en = MB->bft->associatorNames(MB, ctx, make_test_path("root/cimv2", "1"), TEST_CLASS, NULL, NULL,
                                NULL, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && en != NULL && count(en) == 1);
  en = MB->bft->references(MB, ctx, make_test_path("root/cimv2", "1"), TEST_CLASS, NULL, NULL, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && en != NULL && count(en) == 1);
  en = MB->bft->referenceNames(MB, ctx, make_test_path("root/cimv2", "1"), TEST_CLASS, NULL, &rc);
  CHECK(r, en == NULL && rc.rc == CMPI_RC_ERR_NOT_FOUND);

  {
    CMPIArgs* in = MB->eft->newArgs(MB, NULL);
    CMPIArgs* outArgs = MB->eft->newArgs(MB, NULL);
    CMPIValue v;
    v.uint16 = 5;
    in->ft->addArg(in, "Value", &v, CMPI_uint16);
    d = MB->bft->invokeMethod(MB, ctx, make_test_path("root/cimv2", "1"), "Echo", in, outArgs, &rc);
    CHECK(r, rc.rc == CMPI_RC_OK && d.type == CMPI_uint16 && d.value.uint16 == 5);
    CHECK(r, outArgs->ft->getArg(outArgs, "Value", NULL).value.uint16 == 5);
  }
  CHECK(r,
        MB->bft->setProperty(MB, ctx, cls, "P", NULL, CMPI_uint16).rc == CMPI_RC_ERR_NOT_SUPPORTED);
  MB->bft->getProperty(MB, ctx, cls, "P", &rc);
  CHECK(r, rc.rc == CMPI_RC_ERR_NOT_SUPPORTED);
  en = MB->bft->enumerateInstances(MB, ctx, class_path("ZEDA_Nobody"), NULL, &rc);
  CHECK(r, en == NULL && rc.rc == CMPI_RC_ERR_NOT_SUPPORTED);
  en = MB->bft->enumerateInstances(MB, ctx, NULL, NULL, &rc);
  CHECK(r, en == NULL && rc.rc == CMPI_RC_ERR_INVALID_PARAMETER);
}

void check_enc_services(Report* r, const CMPIContext* ctx, CMPIArgs* out) {
  CMPIStatus rc = {CMPI_RC_OK, NULL};
  CMPIObjectPath* op = make_test_path("root/cimv2", "1");
  CMPIString* s = MB->eft->newString(MB, "text", NULL);
  CMPIArray* a = MB->eft->newArray(MB, 1, CMPI_uint8, NULL);
  CMPIInstance* ci = make_test_instance("root/cimv2", "2", NULL);
  CMPIMsgFileHandle h = NULL;
  CMPIValue v;

  CHECK(r, MB->eft->classPathIsA(MB, op, "zeda_hosttest", &rc) && rc.rc == CMPI_RC_OK);
  CHECK(r, !MB->eft->classPathIsA(MB, op, "CIM_ManagedElement", &rc) && rc.rc == CMPI_RC_OK);
  MB->eft->classPathIsA(MB, NULL, "X", &rc);
  CHECK(r, rc.rc == CMPI_RC_ERR_INVALID_PARAMETER);

  CHECK(r, str_eq(MB->eft->toString(MB, s, &rc), "text") && rc.rc == CMPI_RC_OK);
  CHECK(r, str_eq(MB->eft->toString(MB, op, NULL), "root/cimv2:ZEDA_HostTest.InstanceID=\"1\""));
  CHECK(r, MB->eft->toString(MB, NULL, &rc) == NULL && rc.rc == CMPI_RC_ERR_INVALID_PARAMETER);
  CHECK(r, str_eq(MB->eft->getType(MB, ci, &rc), "CMPIInstance") && rc.rc == CMPI_RC_OK);
  CHECK(r, str_eq(MB->eft->getType(MB, op, NULL), "CMPIObjectPath"));
  CHECK(r, str_eq(MB->eft->getType(MB, ctx, NULL), "CMPIContext"));
  CHECK(r, MB->eft->isOfType(MB, a, "CMPIArray", &rc) && rc.rc == CMPI_RC_OK);
  CHECK(r, !MB->eft->isOfType(MB, a, "CMPIString", NULL));

  s = MB->eft->getMessage(MB, "ZEDA0003", "Disk $0 of $1: $2 ($3, $4, $5)", &rc, 6, CMPI_chars,
                          "d1", CMPI_sint32, (long)-5, CMPI_string,
                          MB->eft->newString(MB, "gone", NULL), CMPI_uint64,
                          (unsigned long long)UINT64_MAX, CMPI_boolean, 1, CMPI_real64, 0.5);
  CHECK(r,
        rc.rc == CMPI_RC_OK && str_eq(s, "Disk d1 of -5: gone (18446744073709551615, true, 0.5)"));
  s = MB->eft->getMessage(MB, "ZEDA0004", "no arguments $0", &rc, 0);
  CHECK(r, rc.rc == CMPI_RC_OK && str_eq(s, "no arguments $0"));
  CHECK(r, MB->eft->openMessageFile(MB, "zeda_messages", &h).rc == CMPI_RC_OK && h != NULL);
  s = MB->eft->getMessage2(MB, "ZEDA0005", h, "bay $0", &rc, 1, CMPI_uint32, (unsigned long)7);
  CHECK(r, rc.rc == CMPI_RC_OK && str_eq(s, "bay 7"));
  CHECK(r, MB->eft->closeMessageFile(MB, h).rc == CMPI_RC_OK);
  CHECK(r, MB->eft->closeMessageFile(MB, h).rc == CMPI_RC_ERR_INVALID_HANDLE);

  v.uint32 = MB->eft->logMessage(MB, CMPI_SEV_INFO, "ZEDA", "logged text", NULL).rc;
  out->ft->addArg(out, "LogRc", &v, CMPI_uint32);
  CHECK(r, MB->eft->trace(MB, CMPI_LEV_VERBOSE, "zeda.test", NULL,
                          MB->eft->newString(MB, "traced", NULL))
                   .rc == CMPI_RC_OK);

  v.sint32 = (CMPISint32)MB->bft->brokerVersion;
  out->ft->addArg(out, "BrokerVersion", &v, CMPI_sint32);
  out->ft->addArg(out, "BrokerName", (const CMPIValue*)MB->bft->brokerName, CMPI_chars);
  v.sint32 = MB->eft->ftVersion;
  out->ft->addArg(out, "EncVersion", &v, CMPI_sint32);
  v.boolean = MB->mft != NULL;
  out->ft->addArg(out, "HasMemFT", &v, CMPI_boolean);
}
