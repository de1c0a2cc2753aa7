#include "ZedaCim.h"

#include <cstdio>
#include <cstdlib>

#include <sys/wait.h>

#include "ModuleHost.h"
#include "TempDir.h"

namespace zeda::test {
namespace {

std::string Quote(const std::string& s) {
  std::string out = "'";
  for (const char c : s) {
    if (c == '\'') {
      out += "'\\''";
    } else {
      out += c;
    }
  }
  return out + "'";
}

}  // namespace

const char* ZedaCimPath() { return ZEDA_CIM; }

CliRun RunZedaCim(const std::vector<std::string>& args) {
  // Output goes to files of a directory of this run: ctest runs test
  // processes in parallel.
  const TempDir dir;
  const std::string outFile = dir.file("out");
  const std::string errFile = dir.file("err");
  std::string command = Quote(ZedaCimPath());
  for (const std::string& a : args) {
    command += " " + Quote(a);
  }
  command += " >" + Quote(outFile) + " 2>" + Quote(errFile);
  CliRun run;
  const int raw = std::system(command.c_str());
  run.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  run.out = ReadFile(outFile);
  run.err = ReadFile(errFile);
  return run;
}

CliRun RunZedaCimOnModule(const std::vector<std::string>& args) {
  // The log directory is the program-data path followed by "\logs", a
  // sibling of it, so both live inside one temporary directory.
  const TempDir base;
  std::vector<std::string> all = {"--module", ModulePath(), "--program-data",
                                  base.file("program-data")};
  all.insert(all.end(), args.begin(), args.end());
  return RunZedaCim(all);
}

}  // namespace zeda::test
