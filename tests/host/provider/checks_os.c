/* Self-checks of the operating-system table (CMPIBrokerExtFT) and of the
 * memory table (CMPIBrokerMemFT). */
#include <stdlib.h>
#include <string.h>
#include <time.h>

#include "test_provider.h"

#define MB g_broker

typedef struct {
  CMPI_MUTEX_TYPE mutex;
  CMPI_COND_TYPE cond;
  int counter;
  int signalled;
} Shared;

static CMPI_THREAD_RETURN CMPI_THREAD_CDECL worker(void* parm) {
  Shared* s = (Shared*)parm;
  MB->xft->lockMutex(s->mutex);
  s->counter += 1;
  s->signalled = 1;
  MB->xft->signalCondition(s->cond);
  MB->xft->unlockMutex(s->mutex);
  return (CMPI_THREAD_RETURN)parm;
}

static CMPI_THREAD_RETURN CMPI_THREAD_CDECL exiting(void* parm) {
  MB->xft->exitThread(parm);
  return NULL;
}

/* Waits in plain C for its cancellation: a cancellation unwinding through
 * the broker's (instrumented C++) threadSleep trips a false report of
 * AddressSanitizer at thread exit. threadSleep is checked on its own. */
static CMPI_THREAD_RETURN CMPI_THREAD_CDECL sleeper(void* parm) {
  for (;;) {
    struct timespec ts = {0, 10 * 1000 * 1000};
    nanosleep(&ts, NULL);
  }
  return NULL;
}

static int g_once_runs = 0;
static void once_init(void) { ++g_once_runs; }

void check_threads(Report* r, const CMPIContext* ctx, CMPIArgs* out) {
  Shared s;
  CMPI_THREAD_TYPE t;
  CMPI_THREAD_RETURN ret = NULL;
  CMPI_THREAD_KEY_TYPE key;
  char* resolved = MB->xft->resolveFileName("ZEDA_DiskDriveLite");
  int once = 0;
  int marker = 0;
  struct timespec deadline;

  CHECK(r, resolved != NULL && strcmp(resolved, "libZEDA_DiskDriveLite.so") == 0);
  free(resolved);

  s.mutex = MB->xft->newMutex(0);
  s.cond = MB->xft->newCondition(0);
  s.counter = 0;
  s.signalled = 0;
  CHECK(r, s.mutex != NULL && s.cond != NULL);
  MB->xft->lockMutex(s.mutex);
  MB->xft->lockMutex(s.mutex); /* recursive */
  MB->xft->unlockMutex(s.mutex);
  t = MB->xft->newThread(worker, &s, 0);
  CHECK(r, t != NULL);
  while (!s.signalled) {
    CHECK(r, MB->xft->condWait(s.cond, s.mutex) == 0);
  }
  MB->xft->unlockMutex(s.mutex);
  CHECK(r, MB->xft->joinThread(t, &ret) == 0 && ret == (CMPI_THREAD_RETURN)&s && s.counter == 1);

  /* Nobody signals: the timed wait times out. */
  clock_gettime(CLOCK_REALTIME, &deadline);
  deadline.tv_nsec += 20 * 1000 * 1000;
  if (deadline.tv_nsec >= 1000000000L) {
    deadline.tv_sec += 1;
    deadline.tv_nsec -= 1000000000L;
  }
  MB->xft->lockMutex(s.mutex);
  CHECK(r, MB->xft->timedCondWait(s.cond, s.mutex, &deadline) != 0);
  MB->xft->unlockMutex(s.mutex);
  MB->xft->destroyCondition(s.cond);
  MB->xft->destroyMutex(s.mutex);

  t = MB->xft->newThread(exiting, &marker, 0);
  CHECK(r, t != NULL && MB->xft->joinThread(t, &ret) == 0 && ret == (CMPI_THREAD_RETURN)&marker);
  t = MB->xft->newThread(sleeper, NULL, 0);
  CHECK(r, t != NULL && MB->xft->cancelThread(t) == 0);
  CHECK(r, MB->xft->joinThread(t, &ret) == 0 && ret != NULL);
  CHECK(r, MB->xft->threadSleep(1) == 0);

  CHECK(r,
        MB->xft->threadOnce(&once, once_init) == 0 && MB->xft->threadOnce(&once, once_init) == 0);
  CHECK(r, g_once_runs == 1);

  CHECK(r, MB->xft->createThreadKey(&key, NULL) == 0);
  CHECK(r, MB->xft->getThreadSpecific(key) == NULL);
  CHECK(r, MB->xft->setThreadSpecific(key, &marker) == 0 &&
               MB->xft->getThreadSpecific(key) == &marker);
  CHECK(r, MB->xft->destroyThreadKey(key) == 0);
}

void check_memory(Report* r, const CMPIContext* ctx, CMPIArgs* out) {
  CMPIStatus rc = {CMPI_RC_OK, NULL};
  CMPIGcStat* gc;
  CMPIString* inside;
  CMPIString* kept = MB->eft->newString(MB, "kept", NULL);
  char* text;
  int* zeros;
  CMPIValue v;
  v.boolean = MB->mft != NULL;
  out->ft->addArg(out, "MemFT", &v, CMPI_boolean);
  if (MB->mft == NULL) return; /* an object manager may offer none */

  gc = MB->mft->mark(MB, &rc);
  CHECK(r, rc.rc == CMPI_RC_OK && gc != NULL);
  inside = MB->eft->newString(MB, "inside", NULL);
  text = MB->mft->cmpiStrDup(MB, "dup");
  CHECK(r, text != NULL && strcmp(text, "dup") == 0);
  text = (char*)MB->mft->cmpiRealloc(MB, text, 64);
  CHECK(r, text != NULL && strcmp(text, "dup") == 0);
  zeros = (int*)MB->mft->cmpiCalloc(MB, 4, sizeof(int));
  CHECK(r, zeros != NULL && zeros[0] == 0 && zeros[3] == 0);
  MB->mft->cmpiFree(MB, zeros);
  CHECK(r, MB->mft->cmpiMalloc(MB, 16) != NULL); /* freed by release() */
  CHECK(r, str_eq(inside, "inside"));
  /* Frees what was made since mark(): inside, the copies and blocks. */
  CHECK(r, MB->mft->release(MB, gc).rc == CMPI_RC_OK);
  CHECK(r, str_eq(kept, "kept"));
  CHECK(r, MB->mft->release(MB, gc).rc == CMPI_RC_ERR_INVALID_HANDLE);

  {
    CMPIObjectPath* op = make_test_path("root/cimv2", "1");
    CMPIInstance* ci = MB->eft->newInstance(MB, op, NULL);
    CMPIArgs* a = MB->eft->newArgs(MB, NULL);
    CMPIArray* arr = MB->eft->newArray(MB, 1, CMPI_uint8, NULL);
    CMPIDateTime* dt = MB->eft->newDateTime(MB, NULL);
    CMPISelectExp* se = MB->eft->newSelectExp(MB, "SELECT * FROM X", "WQL", NULL, NULL);
    MB->mft->freeInstance(MB, ci);
    MB->mft->freeObjectPath(MB, op);
    MB->mft->freeArgs(MB, a);
    MB->mft->freeString(MB, kept);
    MB->mft->freeArray(MB, arr);
    MB->mft->freeDateTime(MB, dt);
    MB->mft->freeSelectExp(MB, se);
    CHECK(r, IS_FREED(ci) && IS_FREED(op) && IS_FREED(a) && IS_FREED(kept));
    CHECK(r, IS_FREED(arr) && IS_FREED(dt) && IS_FREED(se));
  }
}
