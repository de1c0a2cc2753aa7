// Shared fixtures of the end-to-end tests: the real module loaded once per
// test process through the in-process object manager, inventory files, the
// NAS call trace and the module's log directory.
#ifndef ZEDA_TESTS_FIXTURES_H
#define ZEDA_TESTS_FIXTURES_H

#include <optional>
#include <string>
#include <vector>

#include "zeda/host/all.hpp"

namespace zeda::testing {

// Path of libZEDA_DiskDriveLite.so of this build.
const char* ModulePath();

// The program-data directory the module was loaded with (a fresh temporary
// directory per test process) and the log directory the module forms from it.
const std::string& ProgramDataDir();
std::string LogDir();  // ProgramDataDir() + "\\logs"
// The lines of the ERROR log glog writes there (PELKA.ERROR), in order; empty
// when there is none yet.
std::vector<std::string> ErrorLogLines();

// The process-wide object manager on the real module, loaded on first use
// (after PELKA_PROGRAM_DATA has been pointed at ProgramDataDir()).
zeda::host::Host& ModuleHost();

// A temporary directory, removed with everything in it on destruction.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

// Sets an environment variable for its lifetime, restoring the old value.
class ScopedEnv {
 public:
  ScopedEnv(const char* name, const std::string& value);
  ~ScopedEnv();
  ScopedEnv(const ScopedEnv&) = delete;
  ScopedEnv& operator=(const ScopedEnv&) = delete;

 private:
  std::string name_;
  std::optional<std::string> old_;
};

// Writes `json` to a new file and points PELKA_INVENTORY at it.
class ScopedInventory {
 public:
  explicit ScopedInventory(const std::string& json);
  const std::string& path() const { return file_; }
  // Replaces the file's content (the inventory is live: the next call sees it).
  void rewrite(const std::string& json) const;

 private:
  TempDir dir_;
  std::string file_;
  ScopedEnv env_;
};

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

// Points PELKA_NAS_TRACE at a new file for its lifetime.
class ScopedTrace {
 public:
  ScopedTrace();
  std::vector<std::string> lines() const;
  std::vector<TraceCall> calls() const;
  // Only the calls of one kind, e.g. "GetDiskHealth".
  std::vector<TraceCall> calls(const std::string& call) const;
  void clear() const;

 private:
  TempDir dir_;
  std::string file_;
  ScopedEnv env_;
};

// Shorthands.
zeda::host::ObjectPath Path(const std::string& wbemUri);
std::vector<std::string> PropertyNames(const zeda::host::Instance& instance);
std::vector<std::string> PropertyTypes(const zeda::host::Instance& instance);
std::vector<std::string> KeyNames(const zeda::host::ObjectPath& path);

}  // namespace zeda::testing

#endif
