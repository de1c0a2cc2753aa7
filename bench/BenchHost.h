// The one in-process object manager every benchmark drives the module
// through, loaded on first use with a private program-data folder and no NAS
// call trace.
#ifndef ZEDA_BENCH_BENCHHOST_H
#define ZEDA_BENCH_BENCHHOST_H

#include <unistd.h>
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

}  // namespace zeda::bench

#endif
