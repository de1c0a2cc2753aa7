// CMPIBrokerMemFT: mark() opens a scope of the object store, release()
// closes it (freeing what was made since); memory from cmpiMalloc & co
// belongs to the current scope unless freed before; free... release objects.
#include <cstring>

#include "objects.hpp"

namespace zeda::host::detail {

namespace {

Broker* brokerOf(const CMPIBroker* mb) { return Broker::of(mb); }

CMPIGcStat* mark(const CMPIBroker* mb, CMPIStatus* rc) {
  Broker* b = brokerOf(mb);
  if (b == nullptr) {
    setStatus(rc, CMPI_RC_ERR_INVALID_HANDLE);
    return nullptr;
  }
  setStatus(rc, CMPI_RC_OK);
  return b->mark();
}

CMPIStatus release(const CMPIBroker* mb, const CMPIGcStat* gc) {
  Broker* b = brokerOf(mb);
  if (b == nullptr) return status(CMPI_RC_ERR_INVALID_HANDLE);
  return status(b->releaseMark(gc) ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
}

void* cmpiMalloc(const CMPIBroker* mb, size_t size) {
  Broker* b = brokerOf(mb);
  return b ? b->store().allocate(size, false) : nullptr;
}

void* cmpiCalloc(const CMPIBroker* mb, size_t nElems, size_t sizeElem) {
  Broker* b = brokerOf(mb);
  if (b == nullptr || (sizeElem != 0 && nElems > static_cast<size_t>(-1) / sizeElem))
    return nullptr;
  return b->store().allocate(nElems * sizeElem, true);
}

void* cmpiRealloc(const CMPIBroker* mb, void* ptr, size_t size) {
  Broker* b = brokerOf(mb);
  return b ? b->store().reallocate(ptr, size) : nullptr;
}

char* cmpiStrDup(const CMPIBroker* mb, const char* str) {
  Broker* b = brokerOf(mb);
  if (b == nullptr || str == nullptr) return nullptr;
  const size_t n = std::strlen(str) + 1;
  auto* out = static_cast<char*>(b->store().allocate(n, false));
  if (out != nullptr) std::memcpy(out, str, n);
  return out;
}

void cmpiFree(const CMPIBroker* mb, void* ptr) {
  Broker* b = brokerOf(mb);
  if (b != nullptr) b->store().deallocate(ptr);
}

template <typename Obj, typename Face>
void freeObject(const CMPIBroker* mb, Face* face) {
  if (brokerOf(mb) == nullptr) return;
  releaseFace<Obj>(face);
}

void freeInstance(const CMPIBroker* mb, CMPIInstance* inst) { freeObject<InstanceObj>(mb, inst); }
void freeObjectPath(const CMPIBroker* mb, CMPIObjectPath* obj) {
  freeObject<ObjectPathObj>(mb, obj);
}
void freeArgs(const CMPIBroker* mb, CMPIArgs* args) { freeObject<ArgsObj>(mb, args); }
void freeString(const CMPIBroker* mb, CMPIString* str) { freeObject<StringObj>(mb, str); }
void freeArray(const CMPIBroker* mb, CMPIArray* array) { freeObject<ArrayObj>(mb, array); }
void freeDateTime(const CMPIBroker* mb, CMPIDateTime* date) { freeObject<DateTimeObj>(mb, date); }
void freeSelectExp(const CMPIBroker* mb, CMPISelectExp* se) { freeObject<SelectExpObj>(mb, se); }

}  // namespace

void fillBrokerMemFT(CMPIBrokerMemFT& ft, const BrokerSettings& s) {
  ft.ftVersion = s.memFtVersion;
  ft.mark = mark;
  ft.release = release;
  ft.cmpiMalloc = cmpiMalloc;
  ft.cmpiCalloc = cmpiCalloc;
  ft.cmpiRealloc = cmpiRealloc;
  ft.cmpiStrDup = cmpiStrDup;
  ft.cmpiFree = cmpiFree;
  ft.freeInstance = freeInstance;
  ft.freeObjectPath = freeObjectPath;
  ft.freeArgs = freeArgs;
  ft.freeString = freeString;
  ft.freeArray = freeArray;
  ft.freeDateTime = freeDateTime;
  ft.freeSelectExp = freeSelectExp;
}

}  // namespace zeda::host::detail
