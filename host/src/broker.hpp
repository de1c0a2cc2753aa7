// The broker: the CMPIBroker handed to providers with its four function
// tables, the function tables of the encapsulated types, the object store and
// what providers logged. One per Host; the tables are per broker so that the
// versions can follow the BrokerSettings.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "core.hpp"
#include "request.hpp"
#include "zeda/host/host.hpp"

namespace zeda::host::detail {

struct Tables {
  CMPIContextFT context{};
  CMPIResultFT result{};
  CMPIStringFT string{};
  CMPIArrayFT array{};
  CMPIEnumerationFT enumeration{};
  CMPIInstanceFT instance{};
  CMPIObjectPathFT objectPath{};
  CMPIArgsFT args{};
  CMPIDateTimeFT dateTime{};
  CMPIErrorFT error{};
  CMPISelectExpFT selectExp{};
};

// Answers the broker's up-calls; the host implements it.
class Router {
 public:
  virtual ~Router() = default;
  // nullopt when no provider serves the request.
  virtual std::optional<Outcome> upcall(const Request& request, const CMPIContext* ctx) = 0;
};

// A message file "opened" by openMessageFile: the host has no message
// catalogues, so every look-up falls back to the default message.
struct MessageFile {
  std::string name;
};

class Broker {
 public:
  explicit Broker(BrokerSettings settings);
  Broker(const Broker&) = delete;
  Broker& operator=(const Broker&) = delete;

  // The Broker behind a CMPIBroker face, or null for a foreign/null one.
  static Broker* of(const CMPIBroker* mb);

  const CMPIBroker* face() const { return &face_; }
  // The store of the request this thread serves for this broker; outside a
  // request, the broker's own store.
  Store& store();
  // The broker's own store: objects made outside requests and every clone,
  // which outlives the request that made it.
  Store& ownStore() { return store_; }
  // release() of the function tables: the object is freed now and its face
  // answers CMPI_RC_ERR_INVALID_HANDLE from then on (see core.hpp).
  void release(EncObject& obj);
  const BrokerSettings& settings() const { return settings_; }
  // Whether setPropertyFilter keeps what its key list names (Host::setHonourKeyList).
  bool honourKeyList() const { return honourKeyList_.load(std::memory_order_relaxed); }
  void setHonourKeyList(bool honour) { honourKeyList_.store(honour, std::memory_order_relaxed); }
  Tables& tables() { return tables_; }

  void setRouter(Router* router) { router_ = router; }
  Router* router() const { return router_; }

  void log(const LogRecord& r, bool isTrace);
  std::vector<LogRecord> logs(bool traces) const;

  // mark() of the memory table: opens a store scope; releaseMark() closes it
  // and every scope opened after it. False for an unknown mark.
  CMPIGcStat* mark();
  bool releaseMark(const CMPIGcStat* gc);

  // Message file handles: owned here until closed or the broker goes.
  CMPIMsgFileHandle openMessageFile(std::string name);
  bool closeMessageFile(CMPIMsgFileHandle handle);
  bool isMessageFile(CMPIMsgFileHandle handle) const;

 private:
  BrokerSettings settings_;
  std::atomic<bool> honourKeyList_{false};
  CMPIBrokerFT bft_{};
  CMPIBrokerEncFT eft_{};
  CMPIBrokerExtFT xft_{};
  CMPIBrokerMemFT mft_{};
  CMPIBroker face_{};
  Tables tables_;
  Store store_;
  Router* router_ = nullptr;
  mutable std::mutex mutex_;
  std::vector<LogRecord> logs_;
  std::vector<LogRecord> traces_;
  std::vector<std::unique_ptr<MessageFile>> messageFiles_;
  struct Mark {
    std::uint64_t store;  // serial of the store the mark was taken in
    std::size_t depth;
  };
  std::vector<std::unique_ptr<Mark>> marks_;
};

// One request's objects: while alive, this thread's objects of the broker go
// to a store of their own, freed at the end. An up-call made inside a
// provider call shares the store of that call.
class RequestStore {
 public:
  explicit RequestStore(Broker& broker);
  ~RequestStore();
  RequestStore(const RequestStore&) = delete;
  RequestStore& operator=(const RequestStore&) = delete;

 private:
  std::unique_ptr<Store> own_;
  const Broker* previousBroker_ = nullptr;
  Store* previousStore_ = nullptr;
};

// Broker function tables, one file each.
void fillBrokerFT(CMPIBrokerFT& ft, const BrokerSettings& s);
void fillBrokerEncFT(CMPIBrokerEncFT& ft, const BrokerSettings& s);
void fillBrokerExtFT(CMPIBrokerExtFT& ft, const BrokerSettings& s);
void fillBrokerMemFT(CMPIBrokerMemFT& ft, const BrokerSettings& s);

// The CMPI name of an encapsulated object of this broker ("CMPIInstance" ...),
// or nullopt when the pointer is not one of its objects.
std::optional<std::string> typeNameOf(Broker& b, const void* object);
// Text form of an object of this broker (toString); nullopt when unknown.
std::optional<std::string> describe(Broker& b, const void* object);

}  // namespace zeda::host::detail
