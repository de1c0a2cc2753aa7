/* Self-checks of the value-like encapsulated types: CMPIString, CMPIArray,
 * CMPIDateTime, CMPIArgs. */
#include <string.h>

#include "test_provider.h"

#define MB g_broker

void check_strings(Report* r, const CMPIContext* ctx, CMPIArgs* out) {
  CMPIStatus rc = {CMPI_RC_OK, NULL};
  CMPIString* s = MB->eft->newString(MB, "abc", &rc);
  CMPIString* c;
  CMPIString* n;
  CHECK(r, rc.rc == CMPI_RC_OK && s != NULL);
  CHECK(r, strcmp(s->ft->getCharPtr(s, &rc), "abc") == 0 && rc.rc == CMPI_RC_OK);
  c = s->ft->clone(s, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && c != NULL && c != s && str_eq(c, "abc"));
  CHECK(r, c->ft->release(c).rc == CMPI_RC_OK);
  CHECK_FREED(r, c, c->hdl == NULL);
  CHECK_FREED(r, c, c->ft->release(c).rc == CMPI_RC_ERR_INVALID_HANDLE);
  CHECK_FREED(r, c, c->ft->getCharPtr(c, &rc) == NULL && rc.rc == CMPI_RC_ERR_INVALID_HANDLE);
  CHECK_FREED(r, c, c->ft->clone(c, &rc) == NULL && rc.rc == CMPI_RC_ERR_INVALID_HANDLE);
  n = MB->eft->newString(MB, NULL, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && n != NULL && n->ft->getCharPtr(n, NULL) == NULL);
  CHECK(r, str_eq(s, "abc")); /* the original survives its clone's release */
}

void check_arrays(Report* r, const CMPIContext* ctx, CMPIArgs* out) {
  CMPIStatus rc = {CMPI_RC_OK, NULL};
  CMPIArray* a = MB->eft->newArray(MB, 3, CMPI_uint32, &rc);
  CMPIArray* s;
  CMPIArray* c;
  CMPIData d;
  CMPIValue v;
  CHECK(r, rc.rc == CMPI_RC_OK && a != NULL);
  CHECK(r, a->ft->getSize(a, &rc) == 3 && rc.rc == CMPI_RC_OK);
  CHECK(r, a->ft->getSimpleType(a, &rc) == CMPI_uint32);
  d = a->ft->getElementAt(a, 0, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && (d.state & CMPI_nullValue) && d.type == CMPI_uint32);
  v.uint32 = 7;
  CHECK(r, a->ft->setElementAt(a, 1, &v, CMPI_uint32).rc == CMPI_RC_OK);
  d = a->ft->getElementAt(a, 1, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && d.type == CMPI_uint32 && d.state == CMPI_goodValue &&
               d.value.uint32 == 7);
  CHECK(r, a->ft->setElementAt(a, 3, &v, CMPI_uint32).rc == CMPI_RC_ERR_NO_SUCH_PROPERTY);
  a->ft->getElementAt(a, 3, &rc);
  CHECK(r, rc.rc == CMPI_RC_ERR_NO_SUCH_PROPERTY);
  CHECK(r, a->ft->setElementAt(a, 0, (const CMPIValue*)"x", CMPI_chars).rc ==
               CMPI_RC_ERR_TYPE_MISMATCH);
  CHECK(r, a->ft->setElementAt(a, 1, NULL, CMPI_null).rc == CMPI_RC_OK);
  CHECK(r, a->ft->getElementAt(a, 1, NULL).state & CMPI_nullValue);

  s = MB->eft->newArray(MB, 2, CMPI_stringA, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && s->ft->getSimpleType(s, NULL) == CMPI_string);
  CHECK(r, s->ft->setElementAt(s, 0, (const CMPIValue*)"one", CMPI_chars).rc == CMPI_RC_OK);
  d = s->ft->getElementAt(s, 0, NULL);
  CHECK(r, d.type == CMPI_string && str_eq(d.value.string, "one"));

  c = s->ft->clone(s, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && c != NULL);
  CHECK(r, c->ft->setElementAt(c, 0, (const CMPIValue*)"two", CMPI_chars).rc == CMPI_RC_OK);
  CHECK(r, str_eq(s->ft->getElementAt(s, 0, NULL).value.string, "one"));
  CHECK(r, c->ft->release(c).rc == CMPI_RC_OK);
  CHECK_FREED(r, c, c->ft->getSize(c, &rc) == 0 && rc.rc == CMPI_RC_ERR_INVALID_HANDLE);

  CHECK(r,
        MB->eft->newArray(MB, 1, CMPI_args, &rc) == NULL && rc.rc == CMPI_RC_ERR_INVALID_DATA_TYPE);
}

void check_datetimes(Report* r, const CMPIContext* ctx, CMPIArgs* out) {
  const CMPIUint64 leapDay = 1709210096789012ULL; /* 2024-02-29 12:34:56.789012 UTC */
  const CMPIUint64 span = 93784000005ULL;         /* 1 day 02:03:04.000005 */
  CMPIStatus rc = {CMPI_RC_OK, NULL};
  CMPIDateTime* t = MB->eft->newDateTimeFromChars(MB, "20240229123456.789012+000", &rc);
  CMPIDateTime* o = MB->eft->newDateTimeFromChars(MB, "20240229143456.789012+120", NULL);
  CMPIDateTime* i = MB->eft->newDateTimeFromChars(MB, "00000001020304.000005:000", NULL);
  CMPIDateTime* e;
  CMPIDateTime* now;
  CMPIDateTime* c;
  CHECK(r, rc.rc == CMPI_RC_OK && t != NULL && o != NULL && i != NULL);
  CHECK(r, t->ft->getBinaryFormat(t, &rc) == leapDay && rc.rc == CMPI_RC_OK);
  CHECK(r, o->ft->getBinaryFormat(o, NULL) == leapDay);
  CHECK(r, t->ft->isInterval(t, NULL) == 0);
  CHECK(r, str_eq(t->ft->getStringFormat(t, NULL), "20240229123456.789012+000"));
  CHECK(r, i->ft->isInterval(i, NULL) != 0 && i->ft->getBinaryFormat(i, NULL) == span);
  e = MB->eft->newDateTimeFromBinary(MB, 0, 0, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK &&
               str_eq(e->ft->getStringFormat(e, NULL), "19700101000000.000000+000"));
  e = MB->eft->newDateTimeFromBinary(MB, span, 1, NULL);
  CHECK(r, str_eq(e->ft->getStringFormat(e, NULL), "00000001020304.000005:000"));
  e = MB->eft->newDateTimeFromBinary(MB, leapDay, 0, NULL);
  CHECK(r, str_eq(e->ft->getStringFormat(e, NULL), "20240229123456.789012+000"));
  now = MB->eft->newDateTime(MB, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && now->ft->getBinaryFormat(now, NULL) > leapDay);
  CHECK(r, MB->eft->newDateTimeFromChars(MB, "2024-02-29", &rc) == NULL &&
               rc.rc == CMPI_RC_ERR_INVALID_PARAMETER);
  CHECK(r, MB->eft->newDateTimeFromChars(MB, NULL, &rc) == NULL &&
               rc.rc == CMPI_RC_ERR_INVALID_PARAMETER);
  c = t->ft->clone(t, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && c->ft->getBinaryFormat(c, NULL) == leapDay);
  CHECK(r, c->ft->release(c).rc == CMPI_RC_OK);
  CHECK_FREED(r, c, c->ft->isInterval(c, &rc) == 0 && rc.rc == CMPI_RC_ERR_INVALID_HANDLE);
}

void check_args(Report* r, const CMPIContext* ctx, CMPIArgs* out) {
  CMPIStatus rc = {CMPI_RC_OK, NULL};
  CMPIArgs* a = MB->eft->newArgs(MB, &rc);
  CMPIArgs* c;
  CMPIString* name = NULL;
  CMPIData d;
  CMPIValue v;
  CHECK(r, rc.rc == CMPI_RC_OK && a != NULL && a->ft->getArgCount(a, NULL) == 0);
  v.uint8 = 1;
  CHECK(r, a->ft->addArg(a, "A", &v, CMPI_uint8).rc == CMPI_RC_OK);
  CHECK(r, a->ft->addArg(a, "B", (const CMPIValue*)"bee", CMPI_chars).rc == CMPI_RC_OK);
  v.uint8 = 2;
  CHECK(r, a->ft->addArg(a, "a", &v, CMPI_uint8).rc == CMPI_RC_OK);
  CHECK(r, a->ft->getArgCount(a, &rc) == 2 && rc.rc == CMPI_RC_OK);
  d = a->ft->getArgAt(a, 0, &name, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && str_eq(name, "A") && d.type == CMPI_uint8 && d.value.uint8 == 2);
  d = a->ft->getArg(a, "b", &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && d.type == CMPI_string && str_eq(d.value.string, "bee"));
  a->ft->getArg(a, "missing", &rc);
  CHECK(r, rc.rc == CMPI_RC_ERR_NOT_FOUND);
  a->ft->getArgAt(a, 5, NULL, &rc);
  CHECK(r, rc.rc == CMPI_RC_ERR_NO_SUCH_PROPERTY);
  CHECK(r, a->ft->addArg(a, NULL, &v, CMPI_uint8).rc == CMPI_RC_ERR_INVALID_PARAMETER);
  c = a->ft->clone(a, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && c->ft->getArgCount(c, NULL) == 2);
  CHECK(r, c->ft->release(c).rc == CMPI_RC_OK);
  CHECK(r, a->ft->getArgCount(a, NULL) == 2);
}
