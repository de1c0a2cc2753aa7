// The broker object: assembles the function tables.
#include "broker.hpp"

#include <algorithm>

#include "objects.hpp"

namespace zeda::host::detail {

Broker::Broker(BrokerSettings settings) : settings_(std::move(settings)) {
  fillBrokerFT(bft_, settings_);
  fillBrokerEncFT(eft_, settings_);
  fillBrokerExtFT(xft_, settings_);
  fillBrokerMemFT(mft_, settings_);
  face_.hdl = this;
  face_.bft = &bft_;
  face_.eft = &eft_;
  face_.xft = &xft_;
  face_.mft = settings_.withMemFT ? &mft_ : nullptr;

  fillContextFT(tables_.context);
  fillResultFT(tables_.result);
  fillStringFT(tables_.string);
  fillArrayFT(tables_.array);
  fillEnumerationFT(tables_.enumeration);
  fillInstanceFT(tables_.instance);
  fillObjectPathFT(tables_.objectPath);
  fillArgsFT(tables_.args);
  fillDateTimeFT(tables_.dateTime);
  fillErrorFT(tables_.error);
  fillSelectExpFT(tables_.selectExp);
}

namespace {
// The request this thread serves: its broker and store.
thread_local const Broker* currentBroker = nullptr;
thread_local Store* currentStore = nullptr;
}  // namespace

Store& Broker::store() {
  return currentBroker == this && currentStore != nullptr ? *currentStore : store_;
}

void Broker::release(EncObject& obj) { obj.home().release(obj, store()); }

RequestStore::RequestStore(Broker& broker)
    : previousBroker_(currentBroker), previousStore_(currentStore) {
  if (currentBroker == &broker && currentStore != nullptr)
    return;  // an up-call: the caller's store
  own_ = std::make_unique<Store>();
  currentBroker = &broker;
  currentStore = own_.get();
}

RequestStore::~RequestStore() {
  currentBroker = previousBroker_;
  currentStore = previousStore_;
  // own_ goes now, with every object of the request.
}

Broker* Broker::of(const CMPIBroker* mb) {
  if (mb == nullptr || mb->hdl == nullptr) return nullptr;
  auto* b = static_cast<Broker*>(mb->hdl);
  return &b->face_ == mb ? b : nullptr;
}

void Broker::log(const LogRecord& r, bool isTrace) {
  std::lock_guard<std::mutex> lock(mutex_);
  (isTrace ? traces_ : logs_).push_back(r);
}

std::vector<LogRecord> Broker::logs(bool traces) const {
  std::lock_guard<std::mutex> lock(mutex_);
  return traces ? traces_ : logs_;
}

CMPIGcStat* Broker::mark() {
  Store& s = store();
  const std::size_t depth = s.push();
  std::lock_guard<std::mutex> lock(mutex_);
  marks_.push_back(std::make_unique<Mark>(Mark{s.serial(), depth}));
  return marks_.back().get();
}

bool Broker::releaseMark(const CMPIGcStat* gc) {
  std::size_t depth = 0;
  std::uint64_t serial = 0;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    const auto it =
        std::find_if(marks_.begin(), marks_.end(), [gc](const auto& m) { return m.get() == gc; });
    if (it == marks_.end()) return false;
    depth = (*it)->depth;
    serial = (*it)->store;
    marks_.erase(it);
  }
  // A call that ended meanwhile has closed the scope already (and a mark of
  // another request's store is not this call's to close).
  Store& s = store();
  if (s.serial() == serial && depth < s.depth()) s.popTo(depth);
  return true;
}

CMPIMsgFileHandle Broker::openMessageFile(std::string name) {
  std::lock_guard<std::mutex> lock(mutex_);
  messageFiles_.push_back(std::make_unique<MessageFile>(MessageFile{std::move(name)}));
  return messageFiles_.back().get();
}

bool Broker::closeMessageFile(CMPIMsgFileHandle handle) {
  std::lock_guard<std::mutex> lock(mutex_);
  const auto it = std::find_if(messageFiles_.begin(), messageFiles_.end(),
                               [handle](const auto& f) { return f.get() == handle; });
  if (it == messageFiles_.end()) return false;
  messageFiles_.erase(it);
  return true;
}

bool Broker::isMessageFile(CMPIMsgFileHandle handle) const {
  std::lock_guard<std::mutex> lock(mutex_);
  return std::any_of(messageFiles_.begin(), messageFiles_.end(),
                     [handle](const auto& f) { return f.get() == handle; });
}

}  // namespace zeda::host::detail
