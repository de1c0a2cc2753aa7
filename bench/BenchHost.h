// The one in-process object manager every benchmark drives the module
// through, loaded on first use with a private program-data folder and no NAS
// call trace; and the sink the benchmarks hand results to.
#ifndef ZEDA_BENCH_BENCHHOST_H
#define ZEDA_BENCH_BENCHHOST_H

#include <unistd.h>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "zeda/host/all.hpp"

namespace zeda::bench {

inline zeda::host::Host& ModuleHost() {
  static const std::unique_ptr<zeda::host::Host> instance = [] {
    std::string dir = (std::filesystem::temp_directory_path() / "zeda-bench-XXXXXX").string();
    if (::mkdtemp(dir.data()) != nullptr) {
      setenv("PELKA_PROGRAM_DATA", dir.c_str(), 1);
    }
    unsetenv("PELKA_NAS_TRACE");
    return std::make_unique<zeda::host::Host>(ZEDA_MODULE_PATH);
  }();
  return *instance;
}

// Counts the results of one operation and drops them, as an object manager
// that streams each result to its client holds none: the benchmarks then
// measure the module and the broker calls, not a growing result list.
class CountingSink : public zeda::host::ResultSink {
 public:
  void instance(const zeda::host::Instance& /*i*/) override { ++count_; }
  void path(const zeda::host::ObjectPath& /*p*/) override { ++count_; }
  void value(const zeda::host::Value& /*v*/) override { ++count_; }
  std::size_t count() const { return count_; }

 private:
  std::size_t count_ = 0;
};

}  // namespace zeda::bench

#endif
