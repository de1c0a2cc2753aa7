// The look-up functions of libPelkaUtility.
#include "inventory/Library.h"

#include "CallTrace.h"
#include "InventoryStore.h"

namespace zeda::pelka {

using platform::InventoryStore;
using platform::TraceCall;

const std::list<Nas>& GetNasList() {
  TraceCall("-", "GetNasList", "");
  return InventoryStore::Instance().Current().NasList();
}

const Nas& Nas::Get(const std::string& name) {
  TraceCall("-", "Nas::Get", name);
  return InventoryStore::Instance().Find(name);
}

zeda::orvi::Orvi& GetOrvi(const Nas& nas) {
  TraceCall(nas.name, "GetOrvi", "");
  return InventoryStore::Instance().OrviOf(nas);
}

namespace util {

const Nas& GetNas(const std::string& name) {
  TraceCall("-", "util::GetNas", name);
  return InventoryStore::Instance().Find(name);
}

int GetOperationalStatus(const zeda::orvi::DiskStatus& status) {
  // CIM OperationalStatus: 0 Unknown, 2 OK, 3 Degraded, 5 Predictive Failure,
  // 6 Error, 10 Stopped, 12 No Contact.
  switch (status) {
    case zeda::orvi::Ok:
      return 2;
    case zeda::orvi::Degraded:
      return 3;
    case zeda::orvi::PredictiveFailure:
      return 5;
    case zeda::orvi::Error:
      return 6;
    case zeda::orvi::Stopped:
      return 10;
    case zeda::orvi::NoContact:
      return 12;
    case zeda::orvi::Unknown:
      break;
  }
  return 0;  // Unknown, and any value outside the enumeration
}

}  // namespace util

}  // namespace zeda::pelka
