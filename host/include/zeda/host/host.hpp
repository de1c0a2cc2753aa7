// The in-process CIM object manager: loads a CMPI provider module with
// dlopen, calls its factories like an object manager does, drives the MI
// function tables and collects what the providers return.
//
// Threading: a Host serves any number of threads at once, as an object
// manager does: each operation has its own objects, results and status; the
// broker functions are thread-safe; the factories of one provider are never
// called by two threads at once. Loading, unload() and the context settings
// are not to be called while operations run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <cmpidt.h>
#include <cmpift.h>

#include "zeda/host/instance.hpp"
#include "zeda/host/object_path.hpp"
#include "zeda/host/outcome.hpp"
#include "zeda/host/result_sink.hpp"
#include "zeda/host/value.hpp"

namespace zeda::host {

// nullopt → the provider receives a NULL property list (no filter); a vector
// → a NULL-terminated list of those names (an empty vector → an empty list).
using PropertyList = std::optional<std::vector<std::string>>;
// nullopt → NULL char* argument.
using OptString = std::optional<std::string>;

enum class MIKind { Instance, Association, Method, Indication };

// "<provider>_Create_InstanceMI", "..._AssociationMI", "..._MethodMI",
// "..._IndicationMI".
std::string factorySymbol(const std::string& provider, MIKind kind);

// dlopen failed; what() names the path and dlerror().
class LoadError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The module exports no factory of that name; what() names the symbol.
class FactoryMissing : public LoadError {
 public:
  using LoadError::LoadError;
};

// What the broker tells providers about itself. The defaults are those of a
// CMPI 2.0 object manager; sfcbLike() mimics sfcb, which reports broker
// version 0, an encapsulated-function table of version 1, no memory table and
// answers logMessage with CMPI_RC_ERR_NOT_SUPPORTED.
struct BrokerSettings {
  unsigned int brokerCapabilities = 0;
  int brokerVersion = 200;  // CMPIBrokerFT::brokerVersion
  std::string brokerName = "zeda-host";
  int encFtVersion = 200;  // CMPIBrokerEncFT::ftVersion
  int extFtVersion = 200;  // CMPIBrokerExtFT::ftVersion
  int memFtVersion = 200;  // CMPIBrokerMemFT::ftVersion
  bool withMemFT = true;   // false → CMPIBroker::mft is NULL
  int logMessageRc = 0;    // status code logMessage answers
  static BrokerSettings sfcbLike();
};

// One logMessage or trace call a provider made.
struct LogRecord {
  int level = 0;          // severity (logMessage) or trace level (trace)
  std::string component;  // message id (logMessage) or component (trace)
  std::string text;
};

// The answer of one factory call.
struct CreatedMI {
  MIKind kind = MIKind::Instance;
  void* mi = nullptr;  // the MI record, null on failure
  Status status;       // rc and message the factory left in its CMPIStatus
  bool ok() const { return mi != nullptr && status.code == 0; }
  CMPIInstanceMI* instanceMI() const;        // these throw TypeMismatch
  CMPIAssociationMI* associationMI() const;  // when the kind differs
  CMPIMethodMI* methodMI() const;
  CMPIIndicationMI* indicationMI() const;
};

class Host {
 public:
  // Loads the module with dlopen(path, RTLD_NOW | RTLD_GLOBAL); throws
  // LoadError when that fails.
  explicit Host(const std::string& modulePath, BrokerSettings settings = {});
  // unload() unless already done.
  ~Host();
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  const std::string& modulePath() const;
  const BrokerSettings& settings() const;

  // --- factories -------------------------------------------------------
  bool hasFactory(const std::string& provider, MIKind kind) const;
  // Every exported "*_Create_InstanceMI|AssociationMI|MethodMI|IndicationMI"
  // symbol of the module, sorted, read from its dynamic symbol table.
  std::vector<std::string> exportedFactories() const;
  // Calls the factory once more (like an object manager loading the
  // provider), with the broker, the host context and a fresh CMPIStatus.
  // An MI accepted (non-null, rc 0) is remembered: it serves later
  // operations of that provider and kind if none was there before, and gets
  // its cleanup call at unload (one per accepted factory call). Throws
  // FactoryMissing when the module does not export the factory.
  CreatedMI createMI(const std::string& provider, MIKind kind);

  // --- operations ------------------------------------------------------
  // Each drives the MI of that provider and kind, calling the factory first
  // when no MI is there yet (a refused factory yields an Outcome carrying the
  // factory's status, done false, no results). Throws FactoryMissing when
  // the module has no such factory. The context handed over carries
  // CMPIInitNameSpace = the namespace of the path and CMPIInvocationFlags.
  Outcome enumerateInstanceNames(const std::string& provider, const ObjectPath& classPath);
  Outcome enumerateInstances(const std::string& provider, const ObjectPath& classPath,
                             const PropertyList& properties = std::nullopt);
  Outcome getInstance(const std::string& provider, const ObjectPath& instancePath,
                      const PropertyList& properties = std::nullopt);
  Outcome createInstance(const std::string& provider, const ObjectPath& path,
                         const Instance& instance);
  Outcome modifyInstance(const std::string& provider, const ObjectPath& path,
                         const Instance& instance, const PropertyList& properties = std::nullopt);
  Outcome deleteInstance(const std::string& provider, const ObjectPath& path);
  Outcome execQuery(const std::string& provider, const ObjectPath& classPath,
                    const std::string& query, const std::string& language);

  Outcome associators(const std::string& provider, const ObjectPath& path,
                      const OptString& assocClass, const OptString& resultClass,
                      const OptString& role, const OptString& resultRole,
                      const PropertyList& properties = std::nullopt);
  Outcome associatorNames(const std::string& provider, const ObjectPath& path,
                          const OptString& assocClass, const OptString& resultClass,
                          const OptString& role, const OptString& resultRole);
  Outcome references(const std::string& provider, const ObjectPath& path,
                     const OptString& resultClass, const OptString& role,
                     const PropertyList& properties = std::nullopt);
  Outcome referenceNames(const std::string& provider, const ObjectPath& path,
                         const OptString& resultClass, const OptString& role);

  // Streaming forms: each result goes to sink as the provider returns it
  // (the Outcome carries status, done and errors, no results), so memory
  // does not grow with the number of results.
  Outcome enumerateInstanceNames(const std::string& provider, const ObjectPath& classPath,
                                 ResultSink& sink);
  Outcome enumerateInstances(const std::string& provider, const ObjectPath& classPath,
                             const PropertyList& properties, ResultSink& sink);
  Outcome getInstance(const std::string& provider, const ObjectPath& instancePath,
                      const PropertyList& properties, ResultSink& sink);
  Outcome associators(const std::string& provider, const ObjectPath& path,
                      const OptString& assocClass, const OptString& resultClass,
                      const OptString& role, const OptString& resultRole,
                      const PropertyList& properties, ResultSink& sink);
  Outcome associatorNames(const std::string& provider, const ObjectPath& path,
                          const OptString& assocClass, const OptString& resultClass,
                          const OptString& role, const OptString& resultRole, ResultSink& sink);
  Outcome references(const std::string& provider, const ObjectPath& path,
                     const OptString& resultClass, const OptString& role,
                     const PropertyList& properties, ResultSink& sink);
  Outcome referenceNames(const std::string& provider, const ObjectPath& path,
                         const OptString& resultClass, const OptString& role, ResultSink& sink);

  // Method MI: results hold the returnData values (the return value); the
  // output arguments land in Outcome::outArgs.
  Outcome invokeMethod(const std::string& provider, const ObjectPath& path,
                       const std::string& method, const std::vector<NamedValue>& in = {});

  // Indication MI. The filter handed over is a select expression made by the
  // host from query (language "WQL"); classPath is a path of className in
  // the path's namespace. authorizeFilter / mustPoll answer with status only
  // (mustPoll's "must poll" answer is the status code the provider returns).
  Outcome authorizeFilter(const std::string& provider, const std::string& query,
                          const std::string& className, const ObjectPath& classPath,
                          const std::string& owner);
  Outcome mustPoll(const std::string& provider, const std::string& query,
                   const std::string& className, const ObjectPath& classPath);
  Outcome activateFilter(const std::string& provider, const std::string& query,
                         const std::string& className, const ObjectPath& classPath,
                         bool firstActivation);
  Outcome deActivateFilter(const std::string& provider, const std::string& query,
                           const std::string& className, const ObjectPath& classPath,
                           bool lastActivation);
  Outcome enableIndications(const std::string& provider);
  Outcome disableIndications(const std::string& provider);

  // Calls cleanup(terminating = true) of every accepted MI, newest first,
  // then dlclose. Returns the cleanup statuses in call order. Operations
  // after unload throw LoadError.
  std::vector<Status> unload();
  bool loaded() const;

  // --- per-call context settings ---------------------------------------
  void setInvocationFlags(std::uint32_t flags);  // CMPIInvocationFlags, default 0
  // Extra entries added to every operation's context (e.g. CMPIPrincipal).
  void setContextEntry(const std::string& name, const Value& value);

  // --- the property filter ---------------------------------------------
  // CMPIInstanceFT::setPropertyFilter keeps the properties of its property
  // list and the keys of the instance's own object path, and ignores the key
  // list, deprecated in the CMPI standard (sfcb ignores it too). true makes
  // the filter also keep the properties the key list names, as object
  // managers of the first CMPI versions did: what a provider asks for then
  // shows. It applies to the filters set from then on, for every provider
  // of the module that took this host's broker; not while operations run.
  void setHonourKeyList(bool honour);

  // --- raw access for low-level tests ----------------------------------
  const CMPIBroker* broker() const;
  // The host's own context (namespace root/cimv2); factories receive it.
  const CMPIContext* context() const;
  // CMPI objects owned by the host: freed when the host is destroyed (or,
  // when made during a provider call, at the end of that call).
  CMPIObjectPath* makeObjectPath(const ObjectPath& path);
  CMPIInstance* makeInstance(const Instance& instance);
  CMPIContext* makeContext(const std::string& nameSpace);

  // Encapsulated objects currently alive that were made with clone() and
  // not yet released (a test for leaks in providers).
  std::size_t liveClones() const;
  // Encapsulated objects the broker holds outside requests (made outside a
  // request, and every live clone): a released one is freed at once.
  std::size_t liveObjects() const;
  // logMessage / trace calls seen so far, in order.
  std::vector<LogRecord> logMessages() const;
  std::vector<LogRecord> traces() const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

// Read CMPI objects into values through their own function tables (so they
// work for objects of any CMPI implementation). Throw std::runtime_error on a
// null handle or a failing table call.
Value readData(const CMPIData& data);
ObjectPath readObjectPath(const CMPIObjectPath* path);
Instance readInstance(const CMPIInstance* instance);

}  // namespace zeda::host
