// The real module loaded once per test process through the in-process object
// manager, and the module's log directory.
#ifndef ZEDA_TESTS_SUPPORT_MODULEHOST_H
#define ZEDA_TESTS_SUPPORT_MODULEHOST_H

#include <cstddef>
#include <string>
#include <vector>

#include "zeda/host/host.hpp"

namespace zeda::test {

// Path of libZEDA_DiskDriveLite.so of this build.
const char* ModulePath();

// The program-data directory the module was loaded with (a fresh temporary
// directory per test process) and the log directory the module forms from it.
const std::string& ProgramDataDir();
std::string LogDir();  // ProgramDataDir() + "\\logs"

// The process-wide object manager on the real module, loaded on first use
// (after PELKA_PROGRAM_DATA has been pointed at ProgramDataDir()).
zeda::host::Host& ModuleHost();

// While it lives, the object manager of ModuleHost() also keeps the
// properties the key list of setPropertyFilter names (as object managers of
// the first CMPI versions did): what the module asks the filter to keep
// shows, where the object manager otherwise ignores the key list.
class KeyListHonoured {
 public:
  KeyListHonoured();
  ~KeyListHonoured();
  KeyListHonoured(const KeyListHonoured&) = delete;
  KeyListHonoured& operator=(const KeyListHonoured&) = delete;
};

// The lines of the ERROR log glog writes in LogDir() (PELKA.ERROR), in order;
// empty when there is none yet.
std::vector<std::string> ErrorLogLines();
// Number of ERROR log lines written so far (to see that an operation logged
// nothing).
std::size_t ErrorLogLineCount();
// Whether the ERROR log holds an ERROR line from source line `line` of
// pelka_provider whose text is exactly `text`.
bool HasErrorLogLine(int line, const std::string& text);
// Whether the ERROR log holds a line ending in `text`.
bool ErrorLogEndsWith(const std::string& text);

}  // namespace zeda::test

#endif
