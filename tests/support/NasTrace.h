// The NAS call trace the utility library writes where PELKA_NAS_TRACE points.
#ifndef ZEDA_TESTS_SUPPORT_NASTRACE_H
#define ZEDA_TESTS_SUPPORT_NASTRACE_H

#include <ostream>
#include <string>
#include <vector>

#include "TempDir.h"

namespace zeda::test {

// One line of the NAS call trace: NAS name ("-" for library calls), call, argument.
struct TraceCall {
  std::string nas;
  std::string call;
  std::string arg;
  bool operator==(const TraceCall& o) const {
    return nas == o.nas && call == o.call && arg == o.arg;
  }
};
std::ostream& operator<<(std::ostream& os, const TraceCall& c);

inline TraceCall Call(const std::string& nas, const std::string& call,
                      const std::string& arg = "") {
  return TraceCall{nas, call, arg};
}

// Points PELKA_NAS_TRACE at a new file for its lifetime.
class ScopedTrace {
 public:
  ScopedTrace();
  std::vector<std::string> lines() const;
  std::vector<TraceCall> calls() const;
  // Only the calls of one kind, e.g. "GetDiskHealth".
  std::vector<TraceCall> calls(const std::string& call) const;
  // The argument of every call of one kind, in order.
  std::vector<std::string> args(const std::string& call) const;
  void clear() const;

 private:
  TempDir dir_;
  std::string file_;
  ScopedEnv env_;
};

}  // namespace zeda::test

#endif
