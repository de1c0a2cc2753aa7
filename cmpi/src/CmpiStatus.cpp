// CmpiStatus and the status helpers shared by the whole binding.
#include "CmpiStatus.h"

#include "CmpiBroker.h"
#include "CmpiCall.h"

namespace cmpi_detail {

const char* charsOrNull(const CMPIString* s) noexcept {
  if (s == nullptr || s->ft == nullptr || s->ft->getCharPtr == nullptr) {
    return nullptr;
  }
  CMPIStatus rc{CMPI_RC_OK, nullptr};
  const char* chars = s->ft->getCharPtr(s, &rc);
  return rc.rc == CMPI_RC_OK ? chars : nullptr;
}

CMPIStatus makeCStatus(const CMPIBroker* broker, CMPIrc rc, const char* msg) noexcept {
  CMPIStatus status{rc, nullptr};
  if (msg == nullptr || broker == nullptr || broker->eft == nullptr ||
      broker->eft->newString == nullptr) {
    return status;
  }
  CMPIStatus made{CMPI_RC_OK, nullptr};
  CMPIString* text = broker->eft->newString(broker, msg, &made);
  if (made.rc == CMPI_RC_OK) {
    status.msg = text;
  }
  return status;
}

void check(const CMPIStatus& status) {
  if (status.rc != CMPI_RC_OK) {
    throw CmpiStatus(status);
  }
}

const CMPIBroker* requireCurrentBroker(const char* what) {
  const CMPIBroker* broker = CmpiBroker::current();
  if (broker == nullptr) {
    throw CmpiStatus(CMPI_RC_ERR_FAILED,
                     std::string("no broker for this thread: ") + what +
                         " can only be made during a call from the object manager");
  }
  return broker;
}

}  // namespace cmpi_detail

CmpiStatus::CmpiStatus(CMPIrc rc, const char* msg) : rc_(rc) {
  if (msg != nullptr) {
    msg_ = msg;
  }
}

CmpiStatus::CmpiStatus(const CMPIStatus& status) : rc_(status.rc) {
  if (const char* text = cmpi_detail::charsOrNull(status.msg)) {
    msg_ = text;
  }
}

CMPIStatus CmpiStatus::toCMPIStatus(const CMPIBroker* broker) const {
  return cmpi_detail::makeCStatus(broker, rc_, msg());
}
