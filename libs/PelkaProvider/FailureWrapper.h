// The failure wrapper: runs one CMPI operation of a provider and turns any
// exception it throws into the status the object manager receives, writing
// one glog ERROR line attributed to the source "pelka_provider" and the
// operation's fixed line number. Nothing is logged when nothing is thrown.
#ifndef ZEDA_PELKA_FAILUREWRAPPER_H
#define ZEDA_PELKA_FAILUREWRAPPER_H

#include <string>

#include <cmpi/CmpiStatus.h>

#include "inventory/Library.h"

namespace zeda::pelka {

// The line number each operation's failure log line carries. These numbers
// are part of the log format operators search for; they are not the lines of
// any file of this tree.
namespace OperationLine {
constexpr int kEnumInstanceNames = 70;
constexpr int kEnumInstances = 77;
constexpr int kGetInstance = 84;
constexpr int kCreateInstance = 91;
constexpr int kSetInstance = 100;
constexpr int kDeleteInstance = 106;
constexpr int kExecQuery = 114;
constexpr int kAssociators = 129;
constexpr int kAssociatorNames = 141;
constexpr int kReferences = 151;
constexpr int kReferenceNames = 160;
constexpr int kInvokeMethod = 172;
constexpr int kAuthorizeFilter = 183;
constexpr int kMustPoll = 190;
constexpr int kActivateFilter = 199;
constexpr int kDeActivateFilter = 208;
constexpr int kEnableIndications = 212;
constexpr int kDisableIndications = 216;
}  // namespace OperationLine

// The source name every failure log line is attributed to.
inline constexpr const char kLogSource[] = "pelka_provider";

// Converts the exception in flight into a status and logs it. Must be called
// from inside a catch block. Conversions, first match wins:
//   ProviderException  -> its own status;     "<class>: <what> (RC=<code>)"
//   CmpiStatus         -> itself, unchanged;  "<class>: CmpiStatus.rc() = <code>"
//   std::exception     -> 200, what();        "<class>: <what>"
//   anything else      -> 200, "Unknown error"; "<class>: Unknown error"
CmpiStatus StatusOfCurrentException(const std::string& className, int line) noexcept;

// Runs `operation` (a callable returning CmpiStatus) and returns its status,
// or the converted status of whatever it throws. Everything the operation
// takes from the inventory stays valid until it has ended (InventoryHold).
template <class Operation>
CmpiStatus RunGuarded(const std::string& className, int line, Operation&& operation) noexcept {
  const InventoryHold hold;
  try {
    return operation();
  } catch (...) {
    return StatusOfCurrentException(className, line);
  }
}

}  // namespace zeda::pelka

#endif
