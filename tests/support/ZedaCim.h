// zeda-cim of this build run as a program, its output captured.
#ifndef ZEDA_TESTS_SUPPORT_ZEDACIM_H
#define ZEDA_TESTS_SUPPORT_ZEDACIM_H

#include <string>
#include <vector>

namespace zeda::test {

struct CliRun {
  int status = -1;  // exit status; -1 when it did not exit normally
  std::string out;
  std::string err;
};

// Path of zeda-cim of this build.
const char* ZedaCimPath();

// Runs zeda-cim with `args`, each passed as one argument.
CliRun RunZedaCim(const std::vector<std::string>& args);

// Runs zeda-cim on the real module of this build with a program-data
// directory of its own (a fresh temporary one), then `args`.
CliRun RunZedaCimOnModule(const std::vector<std::string>& args);

}  // namespace zeda::test

#endif
