/* Self-checks of CMPIError, CMPISelectExp and CMPIResult. */
#include <string.h>

#include "test_provider.h"

#define MB g_broker

void check_errors(Report* r, const CMPIContext* ctx, CMPIArgs* out) {
  CMPIStatus rc = {CMPI_RC_OK, NULL};
  CMPIError* e = MB->eft->newCMPIError(MB, "ZEDA", "ZEDA0001", "disk gone", ErrorSevHigh,
                                       Equipment_Malfunction, CMPI_RC_ERR_NOT_FOUND, &rc);
  CMPIError* c;
  CMPIArray* actions = MB->eft->newArray(MB, 2, CMPI_string, NULL);
  CMPIArray* got;
  CHECK(r, rc.rc == CMPI_RC_OK && e != NULL);
  CHECK(r, str_eq(e->ft->getOwningEntity(e, &rc), "ZEDA") && rc.rc == CMPI_RC_OK);
  CHECK(r, str_eq(e->ft->getMessageID(e, NULL), "ZEDA0001"));
  CHECK(r, str_eq(e->ft->getMessage(e, NULL), "disk gone"));
  CHECK(r, e->ft->getPerceivedSeverity(e, NULL) == ErrorSevHigh);
  CHECK(r, e->ft->getProbableCause(e, NULL) == Equipment_Malfunction);
  CHECK(r, e->ft->getCIMStatusCode(e, NULL) == CMPI_RC_ERR_NOT_FOUND);
  CHECK(r, e->ft->getErrorType(e, NULL) == UnknownErrorType);
  CHECK(r, e->ft->getOtherErrorType(e, &rc) == NULL && rc.rc == CMPI_RC_OK);
  CHECK(r, e->ft->setErrorType(e, SoftwareError).rc == CMPI_RC_OK &&
               e->ft->getErrorType(e, NULL) == SoftwareError);
  CHECK(r, e->ft->setOtherErrorType(e, "other").rc == CMPI_RC_OK);
  CHECK(r, str_eq(e->ft->getOtherErrorType(e, NULL), "other"));
  CHECK(r, e->ft->setProbableCauseDescription(e, "fell off").rc == CMPI_RC_OK);
  CHECK(r, str_eq(e->ft->getProbableCauseDescription(e, NULL), "fell off"));
  actions->ft->setElementAt(actions, 0, (const CMPIValue*)"replace", CMPI_chars);
  actions->ft->setElementAt(actions, 1, (const CMPIValue*)"call", CMPI_chars);
  CHECK(r, e->ft->setRecommendedActions(e, actions).rc == CMPI_RC_OK);
  got = e->ft->getRecommendedActions(e, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && got != NULL && got->ft->getSize(got, NULL) == 2);
  CHECK(r, got != NULL && str_eq(got->ft->getElementAt(got, 1, NULL).value.string, "call"));
  CHECK(r, e->ft->setErrorSource(e, "bay 3").rc == CMPI_RC_OK &&
               str_eq(e->ft->getErrorSource(e, NULL), "bay 3"));
  CHECK(r, e->ft->setErrorSourceFormat(e, CIMObjectHandle).rc == CMPI_RC_OK);
  CHECK(r, e->ft->getErrorSourceFormat(e, NULL) == CIMObjectHandle);
  CHECK(r, e->ft->setOtherErrorSourceFormat(e, "fmt").rc == CMPI_RC_OK);
  CHECK(r, str_eq(e->ft->getOtherErrorSourceFormat(e, NULL), "fmt"));
  CHECK(r, e->ft->setCIMStatusCodeDescription(e, "not there").rc == CMPI_RC_OK);
  CHECK(r, str_eq(e->ft->getCIMStatusCodeDescription(e, NULL), "not there"));
  CHECK(r, e->ft->setMessageArguments(e, actions).rc == CMPI_RC_OK);
  got = e->ft->getMessageArguments(e, NULL);
  CHECK(r, got != NULL && got->ft->getSize(got, NULL) == 2);
  CHECK(r, e->ft->setErrorSource(e, NULL).rc == CMPI_RC_ERR_INVALID_PARAMETER);
  CHECK(r, e->ft->setMessageArguments(e, NULL).rc == CMPI_RC_ERR_INVALID_PARAMETER);
  c = e->ft->clone(e, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && str_eq(c->ft->getErrorSource(c, NULL), "bay 3"));
  CHECK(r, c->ft->release(c).rc == CMPI_RC_OK);
  CHECK_FREED(r, c, (c->ft->getMessage(c, &rc), rc.rc == CMPI_RC_ERR_INVALID_HANDLE));
}

void check_select_exps(Report* r, const CMPIContext* ctx, CMPIArgs* out) {
  CMPIStatus rc = {CMPI_RC_OK, NULL};
  CMPIArray* projection = (CMPIArray*)&rc; /* must be overwritten */
  CMPISelectExp* se =
      MB->eft->newSelectExp(MB, "SELECT * FROM ZEDA_HostTest", "WQL", &projection, &rc);
  CMPISelectExp* c;
  CHECK(r, rc.rc == CMPI_RC_OK && se != NULL && projection == NULL);
  CHECK(r,
        str_eq(se->ft->getString(se, &rc), "SELECT * FROM ZEDA_HostTest") && rc.rc == CMPI_RC_OK);
  se->ft->evaluate(se, NULL, &rc);
  CHECK(r, rc.rc == CMPI_RC_ERR_NOT_SUPPORTED);
  CHECK(r, se->ft->getDOC(se, &rc) == NULL && rc.rc == CMPI_RC_ERR_NOT_SUPPORTED);
  CHECK(r, se->ft->getCOD(se, &rc) == NULL && rc.rc == CMPI_RC_ERR_NOT_SUPPORTED);
  se->ft->evaluateUsingAccessor(se, NULL, NULL, &rc);
  CHECK(r, rc.rc == CMPI_RC_ERR_NOT_SUPPORTED);
  CHECK(r, MB->eft->newSelectExp(MB, "SELECT", "XQL", NULL, &rc) == NULL &&
               rc.rc == CMPI_RC_ERR_QUERY_LANGUAGE_NOT_SUPPORTED);
  c = se->ft->clone(se, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && str_eq(c->ft->getString(c, NULL), "SELECT * FROM ZEDA_HostTest"));
  CHECK(r, c->ft->release(c).rc == CMPI_RC_OK);
  CHECK_FREED(r, c, c->ft->getString(c, &rc) == NULL && rc.rc == CMPI_RC_ERR_INVALID_HANDLE);
}

/* Leaves in the result, before the failure count: the uint16 7, an
 * instance, a path, and a returned error. */
void check_results(Report* r, const CMPIContext* ctx, const CMPIResult* rslt, CMPIArgs* out) {
  CMPIStatus rc = {CMPI_RC_OK, NULL};
  CMPIValue v;
  v.uint16 = 7;
  CHECK(r, rslt->ft->returnData(rslt, &v, CMPI_uint16).rc == CMPI_RC_OK);
  CHECK(r, rslt->ft->returnInstance(rslt, make_test_instance("root/cimv2", "2", NULL)).rc ==
               CMPI_RC_OK);
  CHECK(r, rslt->ft->returnObjectPath(rslt, make_test_path("root/cimv2", "1")).rc == CMPI_RC_OK);
  CHECK(r, rslt->ft->returnInstance(rslt, NULL).rc == CMPI_RC_ERR_INVALID_PARAMETER);
  CHECK(r, rslt->ft->returnObjectPath(rslt, NULL).rc == CMPI_RC_ERR_INVALID_PARAMETER);
  CHECK(r, rslt->ft->returnError(
                       rslt, MB->eft->newCMPIError(MB, "ZEDA", "ZEDA0002", "partial", ErrorSevLow,
                                                   ErrorProbCauseOther, CMPI_RC_ERR_FAILED, NULL))
                   .rc == CMPI_RC_OK);
  CHECK(r, rslt->ft->clone(rslt, &rc) == NULL && rc.rc == CMPI_RC_ERR_NOT_SUPPORTED);
}
