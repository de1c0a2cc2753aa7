#include "Fixtures.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <ostream>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace zeda::testing {

namespace {

std::string MakeTempDir() {
  std::string pattern = (fs::temp_directory_path() / "zeda-test-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) {
    throw std::runtime_error("cannot create a temporary directory from " + pattern);
  }
  return pattern;
}

std::vector<std::string> ReadLines(const std::string& file) {
  std::vector<std::string> lines;
  std::ifstream in(file);
  for (std::string line; std::getline(in, line);) {
    lines.push_back(line);
  }
  return lines;
}

void WriteFile(const std::string& file, const std::string& text) {
  std::ofstream out(file, std::ios::trunc);
  out << text;
  if (!out) {
    throw std::runtime_error("cannot write " + file);
  }
}

}  // namespace

const char* ModulePath() { return ZEDA_MODULE_PATH; }

const std::string& ProgramDataDir() {
  // Kept for the whole process: the module forms its log directory from it
  // once, when it is loaded. The log directory is the program-data path with
  // "\\logs" glued on, a sibling of it, so both live inside one temporary
  // directory that is removed at exit.
  static const TempDir root;
  static const std::string dir = [] {
    const std::string path = root.path() + "/program-data";
    fs::create_directory(path);
    return path;
  }();
  return dir;
}

std::string LogDir() { return ProgramDataDir() + "\\logs"; }

std::vector<std::string> ErrorLogLines() {
  const std::string link = LogDir() + "/PELKA.ERROR";
  if (!fs::exists(link)) {
    return {};
  }
  return ReadLines(link);
}

zeda::host::Host& ModuleHost() {
  static const std::unique_ptr<zeda::host::Host> host = [] {
    setenv("PELKA_PROGRAM_DATA", ProgramDataDir().c_str(), 1);
    return std::make_unique<zeda::host::Host>(ModulePath());
  }();
  return *host;
}

TempDir::TempDir() : path_(MakeTempDir()) {}

TempDir::~TempDir() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

ScopedEnv::ScopedEnv(const char* name, const std::string& value) : name_(name) {
  if (const char* old = std::getenv(name)) {
    old_ = old;
  }
  setenv(name, value.c_str(), 1);
}

ScopedEnv::~ScopedEnv() {
  if (old_) {
    setenv(name_.c_str(), old_->c_str(), 1);
  } else {
    unsetenv(name_.c_str());
  }
}

ScopedInventory::ScopedInventory(const std::string& json)
    : file_(dir_.path() + "/inventory.json"), env_("PELKA_INVENTORY", file_) {
  WriteFile(file_, json);
}

void ScopedInventory::rewrite(const std::string& json) const { WriteFile(file_, json); }

std::ostream& operator<<(std::ostream& os, const TraceCall& c) {
  return os << c.nas << '\t' << c.call << '\t' << c.arg;
}

ScopedTrace::ScopedTrace()
    : file_(dir_.path() + "/trace.tsv"), env_("PELKA_NAS_TRACE", file_) {}

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

void ScopedTrace::clear() const { WriteFile(file_, ""); }

zeda::host::ObjectPath Path(const std::string& wbemUri) {
  return zeda::host::parseObjectPath(wbemUri);
}

std::vector<std::string> PropertyNames(const zeda::host::Instance& instance) {
  return instance.names();
}

std::vector<std::string> PropertyTypes(const zeda::host::Instance& instance) {
  std::vector<std::string> types;
  for (const auto& p : instance.properties()) {
    types.push_back(p.value.typeName());
  }
  return types;
}

std::vector<std::string> KeyNames(const zeda::host::ObjectPath& path) { return path.keyNames(); }

}  // namespace zeda::testing
