#include "LogDirectory.h"

#include "inventory/Library.h"

namespace zeda::pelka {

namespace {

// Built during static initialisation, before any factory can run, and only
// read afterwards.
const std::string gLogDirectory = LogDirectoryOf(util::GetProgramDataPath());

}  // namespace

std::string LogDirectoryOf(const std::string& programDataPath) {
  return programDataPath + "\\logs";
}

const std::string& LogDirectory() { return gLogDirectory; }

}  // namespace zeda::pelka
