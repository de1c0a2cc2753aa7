#include "NasTrace.h"

#include <sstream>

namespace zeda::test {

std::ostream& operator<<(std::ostream& os, const TraceCall& c) {
  return os << c.nas << '\t' << c.call << '\t' << c.arg;
}

ScopedTrace::ScopedTrace() : file_(dir_.file("trace.tsv")), env_("PELKA_NAS_TRACE", file_) {}

std::vector<std::string> ScopedTrace::lines() const { return ReadLines(file_); }

std::vector<TraceCall> ScopedTrace::calls() const {
  std::vector<TraceCall> calls;
  for (const std::string& line : lines()) {
    TraceCall call;
    std::istringstream in(line);
    std::getline(in, call.nas, '\t');
    std::getline(in, call.call, '\t');
    std::getline(in, call.arg);
    calls.push_back(call);
  }
  return calls;
}

std::vector<TraceCall> ScopedTrace::calls(const std::string& call) const {
  std::vector<TraceCall> selected;
  for (const TraceCall& c : calls()) {
    if (c.call == call) {
      selected.push_back(c);
    }
  }
  return selected;
}

std::vector<std::string> ScopedTrace::args(const std::string& call) const {
  std::vector<std::string> args;
  for (const TraceCall& c : calls(call)) {
    args.push_back(c.arg);
  }
  return args;
}

void ScopedTrace::clear() const { WriteFile(file_, ""); }

}  // namespace zeda::test
