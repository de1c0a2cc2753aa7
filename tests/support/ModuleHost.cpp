#include "ModuleHost.h"

#include <cstdlib>
#include <filesystem>
#include <memory>

#include "TempDir.h"

namespace fs = std::filesystem;

namespace zeda::test {
namespace {

bool EndsWith(const std::string& text, const std::string& tail) {
  return text.size() >= tail.size() &&
         text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
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
    const std::string path = root.file("program-data");
    fs::create_directory(path);
    return path;
  }();
  return dir;
}

std::string LogDir() { return ProgramDataDir() + "\\logs"; }

zeda::host::Host& ModuleHost() {
  static const std::unique_ptr<zeda::host::Host> host = [] {
    ::setenv("PELKA_PROGRAM_DATA", ProgramDataDir().c_str(), 1);
    return std::make_unique<zeda::host::Host>(ModulePath());
  }();
  return *host;
}

KeyListHonoured::KeyListHonoured() { ModuleHost().setHonourKeyList(true); }

KeyListHonoured::~KeyListHonoured() { ModuleHost().setHonourKeyList(false); }

std::vector<std::string> ErrorLogLines() {
  const std::string link = LogDir() + "/PELKA.ERROR";
  if (!fs::exists(link)) {
    return {};
  }
  return ReadLines(link);
}

std::size_t ErrorLogLineCount() { return ErrorLogLines().size(); }

bool HasErrorLogLine(int line, const std::string& text) {
  const std::string tail = "pelka_provider:" + std::to_string(line) + "] " + text;
  for (const std::string& logged : ErrorLogLines()) {
    if (logged.rfind('E', 0) == 0 && EndsWith(logged, tail)) {
      return true;
    }
  }
  return false;
}

bool ErrorLogEndsWith(const std::string& text) {
  for (const std::string& logged : ErrorLogLines()) {
    if (EndsWith(logged, text)) {
      return true;
    }
  }
  return false;
}

}  // namespace zeda::test
