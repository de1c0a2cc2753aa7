// CMPIBrokerExtFT: operating-system encapsulation over POSIX threads.
// Thread handles are the pthread_t values; mutexes and conditions are heap
// pthread objects owned by the provider between new... and destroy....
#include <pthread.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>
#include <string>

#include "broker.hpp"

namespace zeda::host::detail {

namespace {

static_assert(sizeof(pthread_t) <= sizeof(void*), "a pthread_t must fit a CMPI_THREAD_TYPE");
static_assert(sizeof(pthread_key_t) == sizeof(CMPI_THREAD_KEY_TYPE),
              "pthread_key_t must be a CMPI_THREAD_KEY_TYPE");

CMPI_THREAD_TYPE toHandle(pthread_t t) {
  CMPI_THREAD_TYPE h = nullptr;
  std::memcpy(&h, &t, sizeof t);
  return h;
}

pthread_t fromHandle(CMPI_THREAD_TYPE h) {
  pthread_t t{};
  std::memcpy(&t, &h, sizeof t);
  return t;
}

// "name" -> "libname.so", the platform's form of a library name.
char* resolveFileName(const char* filename) {
  if (filename == nullptr) return nullptr;
  const std::string resolved = "lib" + std::string(filename) + ".so";
  char* out = static_cast<char*>(std::malloc(resolved.size() + 1));
  if (out != nullptr) std::memcpy(out, resolved.c_str(), resolved.size() + 1);
  return out;
}

CMPI_THREAD_TYPE newThread(CMPI_THREAD_RETURN(CMPI_THREAD_CDECL* start)(void*), void* parm,
                           int detached) {
  if (start == nullptr) return nullptr;
  pthread_attr_t attr;
  pthread_attr_init(&attr);
  if (detached != 0) pthread_attr_setdetachstate(&attr, PTHREAD_CREATE_DETACHED);
  pthread_t t{};
  const int rc = pthread_create(&t, &attr, start, parm);
  pthread_attr_destroy(&attr);
  return rc == 0 ? toHandle(t) : nullptr;
}

int joinThread(CMPI_THREAD_TYPE thread, CMPI_THREAD_RETURN* retval) {
  return pthread_join(fromHandle(thread), retval);
}

int exitThread(CMPI_THREAD_RETURN returnCode) { pthread_exit(returnCode); }

int cancelThread(CMPI_THREAD_TYPE thread) { return pthread_cancel(fromHandle(thread)); }

int threadSleep(CMPIUint32 msec) {
  timespec ts{static_cast<time_t>(msec / 1000), static_cast<long>(msec % 1000) * 1000000L};
  while (nanosleep(&ts, &ts) != 0 && errno == EINTR) {
  }
  return 0;
}

// once: 0 = not run, 1 = running, 2 = done. The first caller runs init; the
// others wait until it is done.
int threadOnce(int* once, void (*init)(void)) {
  if (once == nullptr || init == nullptr) return EINVAL;
  int expected = 0;
  if (__atomic_compare_exchange_n(once, &expected, 1, false, __ATOMIC_ACQ_REL, __ATOMIC_ACQUIRE)) {
    init();
    __atomic_store_n(once, 2, __ATOMIC_RELEASE);
    return 0;
  }
  while (__atomic_load_n(once, __ATOMIC_ACQUIRE) != 2) sched_yield();
  return 0;
}

int createThreadKey(CMPI_THREAD_KEY_TYPE* key, void (*cleanup)(void*)) {
  if (key == nullptr) return EINVAL;
  pthread_key_t k{};
  const int rc = pthread_key_create(&k, cleanup);
  if (rc == 0) *key = k;
  return rc;
}

int destroyThreadKey(CMPI_THREAD_KEY_TYPE key) { return pthread_key_delete(key); }

void* getThreadSpecific(CMPI_THREAD_KEY_TYPE key) { return pthread_getspecific(key); }

int setThreadSpecific(CMPI_THREAD_KEY_TYPE key, void* value) {
  return pthread_setspecific(key, value);
}

// Recursive, as providers written for common object managers expect.
CMPI_MUTEX_TYPE newMutex(int) {
  auto m = std::make_unique<pthread_mutex_t>();
  pthread_mutexattr_t attr;
  pthread_mutexattr_init(&attr);
  pthread_mutexattr_settype(&attr, PTHREAD_MUTEX_RECURSIVE);
  const int rc = pthread_mutex_init(m.get(), &attr);
  pthread_mutexattr_destroy(&attr);
  return rc == 0 ? m.release() : nullptr;
}

void destroyMutex(CMPI_MUTEX_TYPE mutex) {
  if (mutex == nullptr) return;
  std::unique_ptr<pthread_mutex_t> m(static_cast<pthread_mutex_t*>(mutex));
  pthread_mutex_destroy(m.get());
}

void lockMutex(CMPI_MUTEX_TYPE mutex) {
  if (mutex != nullptr) pthread_mutex_lock(static_cast<pthread_mutex_t*>(mutex));
}

void unlockMutex(CMPI_MUTEX_TYPE mutex) {
  if (mutex != nullptr) pthread_mutex_unlock(static_cast<pthread_mutex_t*>(mutex));
}

CMPI_COND_TYPE newCondition(int) {
  auto c = std::make_unique<pthread_cond_t>();
  return pthread_cond_init(c.get(), nullptr) == 0 ? c.release() : nullptr;
}

void destroyCondition(CMPI_COND_TYPE cond) {
  if (cond == nullptr) return;
  std::unique_ptr<pthread_cond_t> c(static_cast<pthread_cond_t*>(cond));
  pthread_cond_destroy(c.get());
}

int condWait(CMPI_COND_TYPE cond, CMPI_MUTEX_TYPE mutex) {
  if (cond == nullptr || mutex == nullptr) return EINVAL;
  return pthread_cond_wait(static_cast<pthread_cond_t*>(cond),
                           static_cast<pthread_mutex_t*>(mutex));
}

// wait: the absolute time (CLOCK_REALTIME) to give up at.
int timedCondWait(CMPI_COND_TYPE cond, CMPI_MUTEX_TYPE mutex, struct timespec* wait) {
  if (cond == nullptr || mutex == nullptr || wait == nullptr) return EINVAL;
  return pthread_cond_timedwait(static_cast<pthread_cond_t*>(cond),
                                static_cast<pthread_mutex_t*>(mutex), wait);
}

int signalCondition(CMPI_COND_TYPE cond) {
  if (cond == nullptr) return EINVAL;
  return pthread_cond_signal(static_cast<pthread_cond_t*>(cond));
}

}  // namespace

void fillBrokerExtFT(CMPIBrokerExtFT& ft, const BrokerSettings& s) {
  ft.ftVersion = s.extFtVersion;
  ft.resolveFileName = resolveFileName;
  ft.newThread = newThread;
  ft.joinThread = joinThread;
  ft.exitThread = exitThread;
  ft.cancelThread = cancelThread;
  ft.threadSleep = threadSleep;
  ft.threadOnce = threadOnce;
  ft.createThreadKey = createThreadKey;
  ft.destroyThreadKey = destroyThreadKey;
  ft.getThreadSpecific = getThreadSpecific;
  ft.setThreadSpecific = setThreadSpecific;
  ft.newMutex = newMutex;
  ft.destroyMutex = destroyMutex;
  ft.lockMutex = lockMutex;
  ft.unlockMutex = unlockMutex;
  ft.newCondition = newCondition;
  ft.destroyCondition = destroyCondition;
  ft.condWait = condWait;
  ft.timedCondWait = timedCondWait;
  ft.signalCondition = signalCondition;
}

}  // namespace zeda::host::detail
