// The 18 CMPI operations of PelkaProvider as data, so that a test can run the
// same check on each: how to install a scripted delegate in its slot, how to
// call it, where its slot is and which line its failure log line carries.
#ifndef ZEDA_TESTS_PELKAPROVIDER_OPERATIONS_H
#define ZEDA_TESTS_PELKAPROVIDER_OPERATIONS_H

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "TestDelegates.h"

namespace zeda::test {

// Arguments of one call; the binding values are null wrappers, which the
// framework passes on without looking at them.
struct CallArgs {
  CmpiContext ctx;
  CmpiResult rslt;
  CmpiObjectPath cop;
  CmpiInstance inst;
  CmpiSelectExp filter;
  CmpiArgs in;
  CmpiArgs out;
  const char* properties[2] = {"Name", nullptr};
  const char* query = "SELECT * FROM CIM_Foo";
  const char* language = "WQL";
  const char* indicationClass = "CIM_Indication";
  const char* owner = "owner";
};

struct Operation {
  std::string name;
  int line;  // line number of its failure log line
  std::function<void(TestProvider&, Script, Seen&)> install;
  std::function<CmpiStatus(TestProvider&, CallArgs&)> call;
  std::function<const MIFunction*(TestProvider&)> slot;
};

inline void PrintTo(const Operation& op, std::ostream* os) { *os << op.name; }

// All 18, in the order of the binding's interfaces.
const std::vector<Operation>& AllOperations();

}  // namespace zeda::test

#endif
