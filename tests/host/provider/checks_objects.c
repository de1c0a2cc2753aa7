/* Self-checks of CMPIObjectPath, CMPIInstance (with property filters) and
 * CMPIContext. */
#include <string.h>

#include "test_provider.h"

#define MB g_broker

void check_object_paths(Report* r, const CMPIContext* ctx, CMPIArgs* out) {
  CMPIStatus rc = {CMPI_RC_OK, NULL};
  CMPIObjectPath* op = MB->eft->newObjectPath(MB, "root/test", "ZEDA_X", &rc);
  CMPIObjectPath* other = MB->eft->newObjectPath(MB, "root/other", "ZEDA_O", NULL);
  CMPIObjectPath* c;
  CMPIString* name = NULL;
  CMPIData d;
  CMPIValue v;
  CHECK(r, rc.rc == CMPI_RC_OK && op != NULL);
  CHECK(r, str_eq(op->ft->getNameSpace(op, &rc), "root/test") && rc.rc == CMPI_RC_OK);
  CHECK(r, str_eq(op->ft->getClassName(op, NULL), "ZEDA_X"));
  CHECK(r, op->ft->setNameSpace(op, "ns2").rc == CMPI_RC_OK &&
               str_eq(op->ft->getNameSpace(op, NULL), "ns2"));
  CHECK(r, op->ft->setClassName(op, "ZEDA_Y").rc == CMPI_RC_OK &&
               str_eq(op->ft->getClassName(op, NULL), "ZEDA_Y"));
  CHECK(r, op->ft->setHostname(op, "nas").rc == CMPI_RC_OK &&
               str_eq(op->ft->getHostname(op, NULL), "nas"));
  CHECK(r, op->ft->addKey(op, "A", (const CMPIValue*)"1", CMPI_chars).rc == CMPI_RC_OK);
  v.uint16 = 2;
  CHECK(r, op->ft->addKey(op, "B", &v, CMPI_uint16).rc == CMPI_RC_OK);
  CHECK(r, op->ft->addKey(op, "a", (const CMPIValue*)"x", CMPI_chars).rc == CMPI_RC_OK);
  CHECK(r, op->ft->getKeyCount(op, &rc) == 2 && rc.rc == CMPI_RC_OK);
  d = op->ft->getKeyAt(op, 0, &name, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && str_eq(name, "A") && str_eq(d.value.string, "x"));
  CHECK(r, (d.state & CMPI_keyValue) != 0);
  d = op->ft->getKey(op, "b", &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && d.type == CMPI_uint16 && d.value.uint16 == 2);
  op->ft->getKey(op, "Zzz", &rc);
  CHECK(r, rc.rc == CMPI_RC_ERR_NOT_FOUND);
  op->ft->getKeyAt(op, 9, NULL, &rc);
  CHECK(r, rc.rc == CMPI_RC_ERR_NO_SUCH_PROPERTY);
  CHECK(r, str_eq(op->ft->toString(op, NULL), "ns2:ZEDA_Y.A=\"x\",B=2"));
  CHECK(r, op->ft->setNameSpaceFromObjectPath(op, other).rc == CMPI_RC_OK);
  CHECK(r, str_eq(op->ft->getNameSpace(op, NULL), "root/other"));
  other->ft->setHostname(other, "h2");
  CHECK(r, op->ft->setHostAndNameSpaceFromObjectPath(op, other).rc == CMPI_RC_OK);
  CHECK(r, str_eq(op->ft->getHostname(op, NULL), "h2"));
  op->ft->getClassQualifier(op, "Key", &rc);
  CHECK(r, rc.rc == CMPI_RC_ERR_NOT_SUPPORTED);
  op->ft->getPropertyQualifier(op, "A", "Key", &rc);
  CHECK(r, rc.rc == CMPI_RC_ERR_NOT_SUPPORTED);
  op->ft->getMethodQualifier(op, "M", "Q", &rc);
  CHECK(r, rc.rc == CMPI_RC_ERR_NOT_SUPPORTED);
  op->ft->getParameterQualifier(op, "M", "P", "Q", &rc);
  CHECK(r, rc.rc == CMPI_RC_ERR_NOT_SUPPORTED);
  CHECK(r, op->ft->addKey(op, NULL, &v, CMPI_uint16).rc == CMPI_RC_ERR_INVALID_PARAMETER);
  CHECK(r, op->ft->setNameSpace(op, NULL).rc == CMPI_RC_ERR_INVALID_PARAMETER);
  CHECK(r, op->ft->setNameSpaceFromObjectPath(op, NULL).rc == CMPI_RC_ERR_INVALID_PARAMETER);
  CHECK(r, MB->eft->newObjectPath(MB, "ns", NULL, &rc) == NULL &&
               rc.rc == CMPI_RC_ERR_INVALID_PARAMETER);
  c = op->ft->clone(op, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && c->ft->getKeyCount(c, NULL) == 2);
  CHECK(r, c->ft->setClassName(c, "ZEDA_Z").rc == CMPI_RC_OK &&
               str_eq(op->ft->getClassName(op, NULL), "ZEDA_Y"));
  CHECK(r, c->ft->release(c).rc == CMPI_RC_OK);
  CHECK_FREED(r, c, c->ft->getKeyCount(c, &rc) == 0 && rc.rc == CMPI_RC_ERR_INVALID_HANDLE);
}

void check_instances(Report* r, const CMPIContext* ctx, CMPIArgs* out) {
  static const char* props[] = {"P3", NULL};
  /* P8 is no key of the path: the object manager ignores the key list. */
  static const char* keys[] = {"K", "P8", NULL};
  CMPIStatus rc = {CMPI_RC_OK, NULL};
  CMPIObjectPath* op = MB->eft->newObjectPath(MB, "root/cimv2", "ZEDA_I", NULL);
  CMPIObjectPath* other = MB->eft->newObjectPath(MB, "root/cimv2", "ZEDA_J", NULL);
  CMPIInstance* ci;
  CMPIInstance* c;
  CMPIString* name = NULL;
  CMPIData d;
  CMPIValue v;
  op->ft->addKey(op, "K", (const CMPIValue*)"k1", CMPI_chars);
  ci = MB->eft->newInstance(MB, op, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && ci != NULL && ci->ft->getPropertyCount(ci, NULL) == 0);
  CHECK(r, ci->ft->setProperty(ci, "P1", (const CMPIValue*)"one", CMPI_chars).rc == CMPI_RC_OK);
  v.uint32 = 2;
  CHECK(r, ci->ft->setProperty(ci, "P2", &v, CMPI_uint32).rc == CMPI_RC_OK);
  CHECK(r, ci->ft->setProperty(ci, "p1", (const CMPIValue*)"uno", CMPI_chars).rc == CMPI_RC_OK);
  CHECK(r, ci->ft->getPropertyCount(ci, NULL) == 2);
  d = ci->ft->getPropertyAt(ci, 0, &name, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && str_eq(name, "P1") && str_eq(d.value.string, "uno"));
  d = ci->ft->getProperty(ci, "p2", &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && d.type == CMPI_uint32 && d.value.uint32 == 2);
  ci->ft->getProperty(ci, "Nope", &rc);
  CHECK(r, rc.rc == CMPI_RC_ERR_NO_SUCH_PROPERTY);
  ci->ft->getPropertyAt(ci, 7, NULL, &rc);
  CHECK(r, rc.rc == CMPI_RC_ERR_NO_SUCH_PROPERTY);
  CHECK(r, ci->ft->setProperty(ci, "Null", NULL, CMPI_uint16).rc == CMPI_RC_OK);
  d = ci->ft->getProperty(ci, "Null", NULL);
  CHECK(r, (d.state & CMPI_nullValue) != 0 && d.type == CMPI_uint16);

  /* The filter: neither in the property list nor a key of the path -> dropped,
     whatever the key list names. */
  CHECK(r, ci->ft->setPropertyFilter(ci, props, keys).rc == CMPI_RC_OK);
  CHECK(r, ci->ft->setProperty(ci, "P4", &v, CMPI_uint32).rc == CMPI_RC_OK);
  ci->ft->getProperty(ci, "P4", &rc);
  CHECK(r, rc.rc == CMPI_RC_ERR_NO_SUCH_PROPERTY);
  CHECK(r, ci->ft->setProperty(ci, "P8", &v, CMPI_uint32).rc == CMPI_RC_OK);
  ci->ft->getProperty(ci, "P8", &rc);
  CHECK(r, rc.rc == CMPI_RC_ERR_NO_SUCH_PROPERTY);
  CHECK(r, ci->ft->setProperty(ci, "p3", &v, CMPI_uint32).rc == CMPI_RC_OK);
  CHECK(r, ci->ft->setProperty(ci, "K", (const CMPIValue*)"k1", CMPI_chars).rc == CMPI_RC_OK);
  CHECK(r, ci->ft->getPropertyCount(ci, NULL) == 5);
  CHECK(r, ci->ft->setPropertyFilter(ci, NULL, NULL).rc == CMPI_RC_OK);
  CHECK(r, ci->ft->setProperty(ci, "P5", &v, CMPI_uint32).rc == CMPI_RC_OK);
  CHECK(r, ci->ft->getPropertyCount(ci, NULL) == 6);
  CHECK(r, ci->ft->setPropertyWithOrigin(ci, "P6", &v, CMPI_uint32, "ZEDA_Base").rc == CMPI_RC_OK);
  CHECK(r, ci->ft->getPropertyCount(ci, NULL) == 7);

  CHECK(r, str_eq(ci->ft->getObjectPath(ci, &rc)->ft->getClassName(ci->ft->getObjectPath(ci, NULL),
                                                                   NULL),
                  "ZEDA_I"));
  CHECK(r, ci->ft->setObjectPath(ci, other).rc == CMPI_RC_OK);
  {
    CMPIObjectPath* now = ci->ft->getObjectPath(ci, &rc);
    CHECK(r, rc.rc == CMPI_RC_OK && str_eq(now->ft->getClassName(now, NULL), "ZEDA_J"));
  }
  CHECK(r, ci->ft->setObjectPath(ci, NULL).rc == CMPI_RC_ERR_INVALID_PARAMETER);
  CHECK(r, ci->ft->setProperty(ci, NULL, &v, CMPI_uint32).rc == CMPI_RC_ERR_INVALID_PARAMETER);
  CHECK(r, MB->eft->newInstance(MB, NULL, &rc) == NULL && rc.rc == CMPI_RC_ERR_INVALID_PARAMETER);

  c = ci->ft->clone(ci, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && c->ft->getPropertyCount(c, NULL) == 7);
  CHECK(r, c->ft->setPropertyFilter(c, props, keys).rc == CMPI_RC_OK);
  CHECK(r, c->ft->setProperty(c, "P9", &v, CMPI_uint32).rc == CMPI_RC_OK &&
               c->ft->getPropertyCount(c, NULL) == 7);
  CHECK(r, c->ft->release(c).rc == CMPI_RC_OK);
  CHECK_FREED(r, c, c->ft->getPropertyCount(c, &rc) == 0 && rc.rc == CMPI_RC_ERR_INVALID_HANDLE);
}

void check_contexts(Report* r, const CMPIContext* ctx, CMPIArgs* out) {
  CMPIStatus rc = {CMPI_RC_OK, NULL};
  CMPIData d = ctx->ft->getEntry(ctx, CMPIInitNameSpace, &rc);
  CMPIContext* c;
  CMPIString* name = NULL;
  CMPIValue v;
  CHECK(r, rc.rc == CMPI_RC_OK && d.type == CMPI_string);
  if (d.type == CMPI_string) out->ft->addArg(out, "NameSpace", &d.value, CMPI_string);
  d = ctx->ft->getEntry(ctx, CMPIInvocationFlags, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && d.type == CMPI_uint32);
  if (d.type == CMPI_uint32) out->ft->addArg(out, "Flags", &d.value, CMPI_uint32);
  d = ctx->ft->getEntry(ctx, CMPIPrincipal, &rc);
  if (rc.rc == CMPI_RC_OK) out->ft->addArg(out, "Principal", &d.value, d.type);
  CHECK(r, ctx->ft->getEntryCount(ctx, &rc) >= 2 && rc.rc == CMPI_RC_OK);
  ctx->ft->getEntryAt(ctx, 0, &name, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && str_eq(name, CMPIInitNameSpace));
  ctx->ft->getEntryAt(ctx, 99, NULL, &rc);
  CHECK(r, rc.rc == CMPI_RC_ERR_NO_SUCH_PROPERTY);
  ctx->ft->getEntry(ctx, "NoSuchEntry", &rc);
  CHECK(r, rc.rc == CMPI_RC_ERR_NO_SUCH_PROPERTY);
  v.uint16 = 9;
  CHECK(r, ctx->ft->addEntry(ctx, "ZEDA.Test", &v, CMPI_uint16).rc == CMPI_RC_OK);
  d = ctx->ft->getEntry(ctx, "ZEDA.Test", &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && d.value.uint16 == 9);
  CHECK(r, ctx->ft->addEntry(ctx, NULL, &v, CMPI_uint16).rc == CMPI_RC_ERR_INVALID_PARAMETER);
  c = ctx->ft->clone(ctx, &rc);
  CHECK(r,
        rc.rc == CMPI_RC_OK && c->ft->getEntryCount(c, NULL) == ctx->ft->getEntryCount(ctx, NULL));
  CHECK(r, c->ft->release(c).rc == CMPI_RC_OK);
  CHECK_FREED(r, c, c->ft->getEntryCount(c, &rc) == 0 && rc.rc == CMPI_RC_ERR_INVALID_HANDLE);
}
